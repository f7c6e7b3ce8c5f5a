-- An airliner from cold and dark to secured: each procedure and each checklist of the shared set, and what she
-- refuses, warns of and gives up. The call-outs of take-off and landing are flown in airliner_callouts.lua.
local check = require "lib.check"
local airliner = require "lib.airliner"
local ref, move, fly = airliner.ref, airliner.move, airliner.fly
local ask, hears, read, converse = airliner.ask, airliner.hears, airliner.read, airliner.converse
local silence, is, are, fired, set = airliner.silence, airliner.is, airliner.are, airliner.fired, airliner.set

local HIS_BARO = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_pilot"
local HER_BARO = "sim/cockpit2/gauges/actuators/barometer_setting_in_hg_copilot"

airliner.park()
sim.set(HIS_BARO, 30.02)
fly(0.1)
is(HER_BARO, 30.02)

-- ---- At the gate ----

ask("start the engines", "There is no bleed air, Sir. The APU or ground air first.")
ask("line up", "Not all engines are running, Sir.")
ask("runway vacated", "No engine is running, Sir.")
ask("gear down", "We are on the ground, Sir.")
converse("cockpit preparation", "Cockpit preparation complete.")
are {apu = 1, apu_bleed = 1}
converse("cockpit preparation checklist", "Cockpit preparation checklist complete.")
sim.set(ref.door, 1, 0)
ask("before start procedure", "A door is open, Sir. I wait for it.")
sim.set(ref.door, 0, 0)
converse("ready for start", "Before start checklist, Sir?")
-- She looks at the switches herself, and waits until they are right or the captain overrules her.
sim.set(ref.parking_brake, 0)
sim.set(ref.door, 1, 0)
read("yes", {{"Cockpit preparation?", "completed"}, {"Signs?", "on"}, {"Fuel quantity?", "checked"},
             {"Altimeters?", "set"}, {"Take-off speeds?", "set"}, {"Windows and doors?", "closed"},
             {"A door is open, Sir.", "continue"}, {"Beacon?", "on"}, {"Parking brake?", "set"}},
     "The parking brake is off, Sir.")
sim.set(ref.parking_brake, 1)
ask("set", "Before start checklist complete.")
sim.set(ref.door, 0, 0)

-- ---- Starts ----

airliner.has_light = false
converse("start the engines", "I stop the start, Sir.")
for i = 1, 4 do fired("sim/starters/engage_starter_" .. i, i == airliner.engines and 1 or 0) end
is(ref.fuel_levers, 0, airliner.engines - 1)
airliner.has_light = true
fly(5)
ask("ground air connected", "Ground air on.")
ask("engine start", "Starting engine")
local starter = "sim/starters/engage_starter_" .. airliner.engines
check.wait(10, function() fly(0.1) return sim.fired(starter).begun == 2 end, "starter held")
fly(1)
ask("abort", "All Commands and Checklists Aborted!")
fly(1)
fired(starter, 2)
fly(15)
converse("engine start", "All engines running.")
for i = 0, 3 do is(ref.running, i < airliner.engines and 1 or 0, i) end
ask("start the engines", "They are running already, Sir.")
ask("secure the aircraft", "The engines are still running, Sir.")
converse("after start procedure", "After start checklist, Sir?")
is(ref.apu, 0)
check.that(sim.get(ref.flaps) > 0.2, "flaps set for take-off")
converse("yes", "After start checklist complete.")
sim.set(ref.parking_brake, 0)
converse("flaps up", "Flaps up.")
converse("flaps one", "Flaps one.")
converse("taxi checklist", "Taxi checklist complete.")
converse("before take off checklist", "Before take-off checklist complete.")
ask("gear up", "We are on the ground, Sir.")
check.equal(check.count(airliner.said(), "Speed checks."), 0, "speeds checked on the ground")
converse("line up", "Ready, Sir.")
is("sim/cockpit2/radios/actuators/transponder_mode", 7)

-- ---- Aloft ----

sim.set(ref.on_ground, 0)
move(ref.airspeed, 150, 1)
sim.set(ref.vertical_speed, 1500)
move(ref.altitude, airliner.field_feet + 1000, 2)
fly(2)
converse("gear up", "Gear up.")
ask("flaps up", "Too slow, Sir.")
move(ref.airspeed, 240, 1)
move(ref.altitude, airliner.field_feet + 2000, 5)
hears("Acceleration altitude.")
converse("flaps zero", "After take-off checklist, Sir?")
converse("yes", "After take-off checklist complete.")
ask("transition altitude five thousand", "Transition altitude five thousand.")
move(ref.altitude, 10200, 12)
hears("Transition altitude. Set standard.", "Ten thousand.")
converse("go ahead", "Climb checklist complete.")
is(HER_BARO, 29.92)
sim.set(ref.selected_altitude, 34000)
move(ref.altitude, 33950, 10)
hears("One thousand to go.")
fly(10)
sim.set(ref.vertical_speed, 0)
hears("Level.")
converse("cruise checklist", "Cruise checklist complete.")
sim.set(ref.running, 0, 1)
sim.set(ref.fuel_levers, 0, 1)
hears("Engine failure!")
sim.set(ref.running, 1, 1)
sim.set(ref.fuel_levers, 1, 1)
ask("descent preparation", "No minimums are set yet, Sir.", "Descent checklist, Sir?")
ask("no", "Standing by, Sir.")
sim.set(ref.minimum, 200)
ask("descent preparation", "Minimums 200.", "Descent checklist, Sir?")
converse("yes", "Descent checklist complete.")
set {selected_altitude = 3000, vertical_speed = -1500}
move(ref.altitude, 9000, 12)
hears("Ten thousand.")
move(ref.altitude, 5900, 4)
hears("Transition level. Set Q N H.")
is(HER_BARO, 30.02)
ask("altimeter check", "Cross-checked, 2 9 9 2")
move(ref.altitude, 4900, 2)
hears("Approach checklist, Sir?")
is("sim/cockpit2/switches/landing_lights_on", 1)
converse("yes", "Approach checklist complete.")

-- Each notch of the lever, and no further than its speed allows.
local notches = {}
for line in io.lines(sim.dir("plugin") .. "systems/_systems.txt") do
    local family = line:match("^FLAPS [%w]+")
    if family then
        for phrase in check.read(sim.dir("plugin") .. "systems/" .. family .. ".txt"):gmatch("instring=([^\r\n]+)") do
            if notches[#notches] ~= phrase then notches[#notches + 1] = phrase end
        end
    end
end
check.that(#notches >= 4, "notches of the flap lever")
move(ref.airspeed, 255, 1)
fly(1)
ask(notches[1], "Speed, Sir. The limit is 2")
local flaps = sim.get(ref.flaps)
move(ref.airspeed, 150, 1)
fly(1)
for i, notch in ipairs(notches) do
    converse(notch, notch:sub(7):gsub("twenty ", "twenty-") .. ".")
    check.that(sim.get(ref.flaps) > flaps, notch)
    flaps = sim.get(ref.flaps)
end
is(ref.flaps, 1)
ask("landing checklist", "Landing gear?")
ask("down", "I do not see three green, Sir.")
airliner.captain("abort")
converse("gear down", "Three green.")
converse("landing checklist", "Landing checklist complete.")
move(ref.altitude, airliner.field_feet + 2000, 5)
hears("Radio altimeter alive.")
silence(2)

-- ---- Parked again ----

check.equal(check.count(airliner.said(), "Landing checklist, Sir?"), 0, "offers of what was read already")
set {altitude = airliner.field_feet, on_ground = 1, vertical_speed = 0}
move(ref.airspeed, 60, 2)
fly(3)
ask("runway vacated", "We are doing 60, Sir. Slower first.")
move(ref.airspeed, 10, 2)
fly(3)
converse("clear of the runway", "After landing checklist, Sir?")
is(ref.flaps, 0)
converse("yes", "After landing checklist complete.")
ask("shut down", "We are still moving, Sir.")
sim.set(ref.airspeed, 0)
ask("shut down", "The parking brake first, Sir.")
sim.set(ref.parking_brake, 1)
converse("shut down the engines", "Parking checklist, Sir?")
for i = 0, 3 do is(ref.running, 0, i) end
converse("go ahead", "Parking checklist complete.")
converse("secure the aircraft", "Securing checklist, Sir?")
converse("yes", "Securing checklist complete.")
is(ref.battery, 0, 0)

-- An offer that is not taken up lapses. Without auxiliary power she says so and goes on.
airliner.has_apu = false
converse("prepare the cockpit", "The APU does not start. We keep the ground power, Sir.")
hears("Cockpit preparation complete.")

-- ---- Questions ----

for question, answer in pairs {["fuel state"] = "tonnes on board.", ["take off speeds"] = "V one 1",
    ["landing speed"] = "V ref 1", ["what are we squawking"] = "We squawk 1 2 0 0", ["how are you"] = ""} do
    ask(question, answer)
end
silence(3)
check.equal(check.count(airliner.said(), "UNKNOWN"), 0, "links that lead nowhere")
check.no_problems()
