-- From the first start of a new aircraft to taking the figure out of it again, in every type: what is asked,
-- when she works, and which bytes each step leaves in the aircraft.
--
-- With a folder as the first argument, pictures of the four dialogs go there.
local check = require "lib.check"

local folder, plugin = sim.dir("aircraft"), sim.dir("plugin")
os.remove(folder .. "Cessna_172SP.acf")
check.folder(plugin .. "data/obj/original")
for _, name in ipairs {"kvfennic.obj", "kvfennic.png", "kvfennic_nml.png", "seats.obj", "original/kvfennic.obj",
                       "original/kvfennic.png"} do
    check.write(plugin .. "data/obj/" .. name, "I\n800\nOBJ\n\n# shipped " .. name .. "\n")
end
local function shipped(name) return check.read(plugin .. "data/obj/" .. name) end

-- ---- The types ----

local function acf(description, objects)
    return "I\n1200 Version\nACF\n\nPROPERTIES_BEGIN\nP acf/_descrip " .. description .. "\n" .. (objects or "")
        .. "PROPERTIES_END\n"
end

local OBJECTS = "objects/"
local function own(name) return "A\n800\nOBJ\n# the aircraft's " .. name .. "\n\n# more\n" end
local figure = {[OBJECTS .. "kvfennic.obj"] = shipped("kvfennic.obj"), [OBJECTS .. "kvfennic.png"] = shipped("kvfennic.png"),
                [OBJECTS .. "kvfennic_nml.png"] = shipped("kvfennic_nml.png")}

-- One table over another, as a new one; false removes.
local function with(files, changes)
    local result = {}
    for name, bytes in pairs(files) do result[name] = bytes end
    for name, bytes in pairs(changes) do result[name] = bytes or nil end
    return result
end

local airbus = {[OBJECTS .. "kvfennic.obj"] = own("figure"), [OBJECTS .. "seats.obj"] = own("seats"),
                [OBJECTS .. "seats_Std.obj"] = own("other seats")}
local boeing = {[OBJECTS .. "kvfennic.obj"] = shipped("original/kvfennic.obj"),
                [OBJECTS .. "kvfennic.png"] = shipped("original/kvfennic.png")}
local function backups(files)
    local result = {}
    for name, bytes in pairs(files) do result[name .. ".backup"] = bytes end
    return result
end
local seats = {[OBJECTS .. "seats.obj"] = shipped("seats.obj"), [OBJECTS .. "seats_Std.obj"] = shipped("seats.obj")}
local airbusSetUp = with(with(figure, seats), backups(airbus))
local boeingOut = {[OBJECTS .. "kvfennic.obj"] = boeing[OBJECTS .. "kvfennic.obj"],
                   [OBJECTS .. "kvfennic.png"] = boeing[OBJECTS .. "kvfennic.png"]}

local A767 = "767-300ER_xp11.acf"
local attached = check.read(plugin .. "data/obj/acf.txt"):gsub("_obja/0/", "_obja/2/")
local acf767 = acf("Boeing 767 300ER", "P _obja/1/_v10_att_file_stl seats.obj\nP _obja/count 2\n")
local acf767SetUp = acf("Boeing 767 300ER",
    "P _obja/1/_v10_att_file_stl seats.obj\n" .. attached .. "P _obja/count 3\n"):gsub("\n", "\r\n")

-- first: what the aircraft has beside its .acf; setUp, out: what the setup changes, and taking it out again;
-- update: what an update of the aircraft puts there.
local updated = {[OBJECTS .. "kvfennic.obj"] = own("figure") .. "# new\n"}
local types = {
    {type = 172, file = "Cessna_172SP.acf", description = "Cessna 172 SP Skyhawk - 180HP", first = {}, setUp = {}, out = {}},
    {type = 319, file = "a319.acf", description = "A319 with high fidelity system modelling",
     first = airbus, setUp = airbusSetUp, update = updated, out = airbus},
    {type = 321, file = "a321.acf", description = "A321 with high fidelity system modelling",
     first = airbus, setUp = airbusSetUp, update = updated, out = airbus},
    {type = 737, file = "b738_4k.acf", description = "Boeing 737-800X",
     first = boeing, setUp = figure, update = updated, out = boeingOut},
    {type = 739, file = "737_80NG.acf", description = "Boeing 737-900ER",
     first = boeing, setUp = figure, update = updated, out = boeingOut},
    {type = 767, file = A767, description = "Boeing 767 300ER", acf = acf767, first = {},
     setUp = with(figure, {[A767] = acf767SetUp, [A767 .. ".backup"] = acf767}), update = {[A767] = acf767},
     out = {[A767] = acf767}},
}

-- ---- What a pilot sees ----

-- The texts of the dialog on the screen, its buttons in brackets; nil when there is none.
local function dialog()
    local texts, frame = {}, nil
    for _, widget in ipairs(sim.widgets()) do
        if widget.visible and widget.class == "main_window" then
            check.that(not frame, "two dialogs")
            frame = widget
        elseif widget.visible then
            texts[#texts + 1] = widget.class == "button" and "[" .. widget.caption .. "]" or widget.caption
        end
    end
    if not frame then return nil end
    check.list({frame.left, frame.bottom, frame.right, frame.top}, {860, 465, 1060, 615}, "the dialog's place")
    return table.concat(texts, "|")
end

local QUESTION = "    Fennic plugin ready for|               for setup.|[Setup]|[Later]"
local SET_UP = "    Fennic plugin was set up|       Please reload aircraft|[OK]"
local UNINSTALL = "    Do you want to uninstall|       Fennic plugin now?|[Yes]|[No]"
local GONE = "    Plugin was deactivated|     Please reload aircraft.|[OK]"
local names = {[QUESTION] = "setup_question", [SET_UP] = "set_up", [UNINSTALL] = "uninstall_question", [GONE] = "deactivated"}

local function sees(expected, what)
    sim.frames(1)
    check.equal(dialog(), expected, what)
    if expected and arg[1] then sim.screenshot(arg[1] .. names[expected] .. ".png") end
end

-- Whether she answers, and the state in the settings file, which is written at once.
local function is(works, state, what)
    sim.sent()
    sim.run(1)
    sim.hear("abort")
    check.equal(#check.messages() > 0, works, what .. ": works")
    check.equal(check.read(plugin .. "data/settings_mac.txt"):match("installation=(%-?%d+)"), tostring(state),
                what .. ": state")
end

-- Every file of the aircraft but the plug-in's, byte for byte.
local function holds(expected, what)
    local count = 0
    local list = io.popen("cd '" .. folder .. "' && find . -name plugins -prune -o -type f -print")
    for path in list:lines() do
        local name = path:sub(3)
        check.equal(check.read(folder .. name), expected[name], what .. ": " .. name)
        count = count + 1
    end
    list:close()
    for _ in pairs(expected) do count = count - 1 end
    check.equal(count, 0, what .. ": files missing")
end

local function put(files)
    os.execute("cd '" .. folder .. "' && find . -name plugins -prune -o -type f -exec rm {} +")
    for name, bytes in pairs(files) do check.write(folder .. name, bytes) end
end

-- ---- The life of an installation ----

local function live(aircraft)
    local function name(what) return aircraft.type .. ", " .. what end
    local first = with(aircraft.first, {[aircraft.file] = aircraft.acf or acf(aircraft.description, "P _obja/count 0\n")})
    local setUp, out = with(first, aircraft.setUp), with(with(first, aircraft.setUp), aircraft.out)
    put(first)
    check.settings {installation = "0"}

    sim.start()
    sees(QUESTION, name "a new aircraft")
    is(false, 0, name "a new aircraft")
    sim.push("Later")
    sees(nil, name "later")
    is(false, 1, name "later")
    sim.restart()
    sees(nil, name "started after later")
    is(false, 1, name "started after later")
    holds(first, name "later")

    sim.choose("Fennic/Setup Fennic")
    sees(SET_UP, name "set up")
    is(false, 2, name "set up")
    sim.push("OK")
    sees(nil, name "read that it is set up")
    holds(setUp, name "set up")
    check.equal(check.count(check.log(), "was not complete"), 0, name "no file failed")
    sim.restart()
    sees(nil, name "reloaded")
    is(true, 2, name "reloaded")

    if aircraft.update then
        sim.stop()
        put(with(setUp, aircraft.update))
        sim.start()
        sees(QUESTION, name "an update of the aircraft")
        is(false, 2, name "an update of the aircraft")
        sim.push("Setup")
        sees(SET_UP, name "set up again")
        is(false, 2, name "set up again")
        sim.push("OK")
        holds(setUp, name "set up again")
        sim.restart()
        is(true, 2, name "reloaded again")
    end

    sim.choose("Fennic/UnInstall Fennic")
    sees(UNINSTALL, name "out?")
    sim.push("No")
    sees(nil, name "not out")
    is(true, 2, name "not out")
    holds(setUp, name "not out")
    sim.choose("Fennic/UnInstall Fennic")
    sim.push("Yes")
    sees(GONE, name "out")
    is(true, -1, name "out") -- until the aircraft is loaded again
    sim.push("OK")
    sees(nil, name "read that it is out")
    holds(out, name "out")
    sim.restart()
    sees(nil, name "gone")
    is(false, -1, name "gone")
    check.that(pcall(sim.choose, "Fennic/Setup Fennic"), name "the menu offers the setup again")
    sim.stop()
end

for _, aircraft in ipairs(types) do live(aircraft) end

-- The aircraft that carries the figure itself is never asked about.
put {["a340.acf"] = acf("KV340-500")}
check.settings {installation = "0"}
sim.start()
sees(nil, "345")
sim.run(1)
for _, item in ipairs {"Setup Fennic", "UnInstall Fennic"} do check.that(not pcall(sim.choose, item), "345: " .. item) end
is(true, 0, "345")
sim.stop()

-- A setup that fails says which files, and what is not copied stays.
put(with(airbus, {["a319.acf"] = acf(types[2].description)}))
os.remove(folder .. "objects/kvfennic.obj")
check.folder(folder .. "objects/kvfennic.obj.backup")
check.write(folder .. "objects/kvfennic.obj", own("figure"))
check.settings {installation = "0"}
sim.start()
sim.log()
sim.push("Setup")
local log = check.log()
check.equal(check.count(log, "No backup, so this file is not replaced: " .. folder .. "objects/kvfennic.obj"), 1, "log")
check.equal(check.count(log, "Setup was not complete - the lines above say which files failed"), 1, "log")
check.equal(check.read(folder .. "objects/kvfennic.obj"), own("figure"), "not replaced")
