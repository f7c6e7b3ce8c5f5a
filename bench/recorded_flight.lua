-- Records a take-off for the benchmarks: recorded_flight.lua FOLDER FILE, with the folder of the flights. The
-- file's first line names the datarefs that the aircraft's systems read. Behind it is a line for each frame:
-- number, from 0, and value of those that are another than in the frame before.
package.path = arg[1] .. "/?.lua;" .. package.path
local check = require "lib.check"
local airliner = require "lib.airliner"

local names, values, lines = {}, {}, {}

local function findInputs()
    local folder = sim.dir("plugin") .. "systems/"
    for name in check.read(folder .. "_systems.txt"):gmatch("[^\r\n]+") do
        for line in (check.read(folder .. name .. ".txt") or ""):gmatch("out=([^\r\n]*)") do
            local input = line:match("^" .. ("[^,]*,"):rep(6) .. "([^,]+),exist,")
            if input and not input:find("^kv/fo/") then names[#names + 1] = input end
        end
    end
    lines[1] = table.concat(names, " ")
end

local function record()
    local changes = {}
    for i, name in ipairs(names) do
        local dataref, index = name:match("^([^%[]+)%[?(%d*)")
        local value = sim.get(dataref, tonumber(index))
        if value ~= values[i] then changes[#changes + 1] = ("%d %.9g"):format(i - 1, value) end
        values[i] = value
    end
    lines[#lines + 1] = table.concat(changes, " ")
end

airliner.park()
for i = 0, airliner.engines - 1 do
    sim.set(airliner.ref.fuel_levers, 1, i)
    sim.set(airliner.ref.running, 1, i)
end
airliner.set {parking_brake = 0, minimum = 200, selected_altitude = 5000, flaps = 0.3}
airliner.fly(12)
findInputs()
local moveWorld = airliner.step_world
airliner.step_world = function(now)
    moveWorld(now)
    record()
end
local field = airliner.field_feet
airliner.go {
    {5, {throttle = 0.95, airspeed = 30}},
    {20, {airspeed = 145}, "V one.", "Rotate."},
    {1, {on_ground = 0, vertical_speed = 1800, airspeed = 160}},
    {3, {altitude = field + 120}, "Positive climb."},
    {1, {gear_lever = 0}},
    {30, {altitude = field + 1400, airspeed = 180}},
}
check.write(arg[2], table.concat(lines, "\n") .. "\n")
