-- Prints the phrases of an aircraft, as its context.txt holds them: `fennic-sim --quiet --aircraft NAME context.lua`.
local plugin, aircraft = sim.dir("plugin"), sim.dir("aircraft")

local function read(path)
    local file = io.open(path, "rb")
    local text = file and file:read("a")
    if file then file:close() end
    return text
end

local function write(path, text)
    local file = assert(io.open(path, "wb"))
    file:write(text)
    file:close()
end

-- Set up, which airliners ask for before she comes aboard.
for _, name in ipairs {"settings_win.txt", "settings_mac.txt"} do
    local text = read(plugin .. "data/" .. name)
    if text then write(plugin .. "data/" .. name, (text:gsub("installation=%d", "installation=2"))) end
end
local figure = read(plugin .. "data/obj/kvfennic.obj")
if figure then write(aircraft .. "objects/kvfennic.obj", figure) end
local plane = read(aircraft .. "767-300ER_xp11.acf")
if plane then
    write(aircraft .. "767-300ER_xp11.acf", plane .. "P _obja/1/_v10_att_file_stl kvfennic.obj\n")
end

sim.start()
sim.run(10)
for line in io.lines(plugin .. "data/context.txt") do
    line = line:gsub("\r", "")
    if line ~= "any" then print(line) end
end
