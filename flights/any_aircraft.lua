-- The systems for aircraft that have none of their own, from the folder that is named behind the flight: in a
-- Cessna, a twin, a jet and a glider, from the ground to the ground. What an aircraft does not have is neither
-- offered nor called, and refused when it is asked for.
local check = require "lib.check"
local crew = require "lib.crew"
local overlay = require "lib.overlay"
local go, fly, captain, ask, hears = crew.go, crew.fly, crew.captain, crew.ask, crew.hears
local is, are, set = crew.is, crew.are, crew.set

local systems = assert(arg[1], "name the folder of the systems files behind the flight")

local ref = crew.ref
for name, dataref in pairs {
    fuel_flow = "sim/cockpit2/engine/indicators/fuel_flow_kg_sec",
    gear_unsafe = "sim/cockpit2/annunciators/gear_unsafe",
    stall = "sim/cockpit2/annunciators/stall_warning",
    servos = "sim/cockpit2/autopilot/servos_on",
    flight_director = "sim/cockpit2/autopilot/flight_director_mode",
    selected_airspeed = "sim/cockpit2/autopilot/airspeed_dial_kts",
    decision_altitude = "sim/cockpit2/gauges/actuators/baro_altimeter_bug_ft_pilot",
    pitot_heat = "sim/cockpit2/ice/ice_pitot_heat_on_pilot",
    engines = "sim/aircraft/engine/acf_num_engines",
    engine_type = "sim/aircraft/prop/acf_en_type",
    retractable = "sim/aircraft/gear/acf_gear_retract",
    gear_limit = "sim/aircraft/overflow/acf_Vle",
    notches = "sim/aircraft/controls/acf_flap_detents",
    degrees = "sim/aircraft/controls/acf_flap_dn",
    has_speed_brakes = "sim/aircraft/parts/acf_sbrkEQ",
    batteries = "sim/aircraft/electrical/num_batteries",
    generators = "sim/aircraft/electrical/num_generators",
    stall_clean = "sim/aircraft/view/acf_Vs",
    flaps_limit = "sim/aircraft/view/acf_Vfe",
    never_exceed = "sim/aircraft/view/acf_Vne",
} do ref[name] = dataref end

local UNLISTED = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0} -- no degrees of the flaps' notches
local FIELD = 1200      -- feet
local standing = 0      -- the middle of the aircraft above the ground, on its wheels, metres
local legTime = 8       -- seconds from up to down
local lastTime = 0
local hasAutopilot = true
crew.at_once.throttle = true

function crew.step_world(now)
    local seconds = now - lastTime
    lastTime = now
    set {height_metres = (sim.get(ref.altitude) - FIELD) * 0.3048 + standing, ground_speed = sim.get(ref.airspeed)}
    local leg, lever = sim.get(ref.gear, 1), sim.get(ref.gear_lever)
    sim.set(ref.gear, math.max(0, math.min(1, leg + (lever == 1 and seconds or -seconds) / legTime)), 1)
    sim.set(ref.gear_unsafe, leg > 0 and leg < 1 and 1 or 0)
    sim.set(ref.servos, hasAutopilot and sim.get(ref.flight_director) == 2 and 1 or 0)
end

local function above(feet) return FIELD + feet end

-- All that the list on the screen offers, its groups opened one by one.
local function offered()
    local phrases = {}
    for _, heading in ipairs(overlay.lines("%(%d+%)$")) do
        overlay.click(heading)
        for _, text in ipairs(overlay.lines("^%l")) do phrases[text] = true end
    end
    return phrases
end

-- An aircraft that stands on the ground, cold, with all that is not named as it was.
local function board(aircraft)
    if sim.exists("kv/to_speech") then sim.stop() end
    for name, value in pairs(aircraft) do
        if name == "standing" then standing = value else sim.set(ref[name], value) end
    end
    for name, value in pairs {altitude = FIELD, airspeed = 0, vertical_speed = 0, throttle = 0, on_ground = 1,
                              flaps = 0, gear_lever = 1, selected_altitude = 5000} do
        sim.set(ref[name], value)
    end
    for i = 0, 3 do sim.set(ref.running, 0, i) end
    sim.start()
    fly(6)
end

sim.set(ref.fuel, 120)
local own, files = sim.dir("plugin") .. "systems/", {}
for name in check.read(own .. "_systems.txt"):gmatch("[^\r\n]+") do os.remove(own .. name .. ".txt") end
for name in check.read(systems .. "/_systems.txt"):gmatch("[^\r\n]+") do
    files[#files + 1] = name
    check.write(own .. name .. ".txt", check.read(systems .. "/" .. name .. ".txt"))
end
check.systems({}, files)

-- What is among the phrases, and what is not.
local function offers(wanted, unwanted)
    local phrases = offered()
    for _, phrase in ipairs(wanted) do check.that(phrases[phrase], phrase .. " is not offered") end
    for _, phrase in ipairs(unwanted) do check.that(not phrases[phrase], phrase .. " is offered") end
end

-- ---- The Cessna: an engine, fixed gear, flaps by degrees ----

board {notches = 3, degrees = {0, 10, 20, 30}, batteries = 1, generators = 1}
offers({"set the take off speeds", "one notch of flaps", "landing lights on", "pitot heat on", "transponder on"},
       {"gear up", "gear down", "speed brakes out", "flaps up", "autopilot on"})
captain("tell me about the aircraft")
for _, answer in ipairs {"One engine.", "The gear is fixed.", "3 notches of flaps."} do hears(answer) end
ask("gear up", "The gear is fixed, Sir.")
ask("speed brakes out", "We have no speed brakes, Sir.")
ask("altimeter check", "Cross-checked, 2 9 9 2")
ask("landing lights on", "Landing lights on.")
ask("pitot heat on", "Pitot heat on.")
ask("transponder on", "Squawking 1 2 0 0")
are {landing_lights = 1, pitot_heat = 1, transponder = 3}
sim.set(ref.running, 1, 0)
ask("set the take off speeds", "Rotation speed?")
ask("five five", "Rotate at 55.")
ask("flaps twenty", "Flaps 20.")
is(ref.flaps, 2 / 3)
ask("flaps up one notch", "Flaps 10.")
ask("flaps fifteen", "No such setting, Sir.")
go {
    {2, {throttle = 1}}, -- on the brakes
    {8, {airspeed = 48}, "Power set.", "Airspeed alive."},
    {4, {airspeed = 60}, "Rotate."},
    {1, {on_ground = 0, vertical_speed = 700}},
    {5, {airspeed = 75, altitude = above(80)}, "Positive rate."},
}
ask("flaps up", "Flaps up.")
sim.set(ref.selected_altitude, 3000)
go {{20, {altitude = 2950, airspeed = 90}, "300 to go."}, {2, {altitude = 3000, vertical_speed = 0}}}
hasAutopilot = false
ask("autopilot on", "The autopilot does not engage, Sir.")
offers({}, {"autopilot on", "autopilot off"})
hasAutopilot = true
ask("autopilot on", "Autopilot on.")
ask("heading mode", "Heading mode.")
ask("heading mode", "Already on, Sir.")
offers({"autopilot off", "nav mode"}, {"autopilot on", "heading mode", "gear up"})
go {{4, {airspeed = 130}}}
ask("flaps ten", "Negative, Sir. 130 knots, the limit is about 108.")
go {{4, {airspeed = 90, throttle = 0.3}}}
ask("flaps full", "Negative, Sir. 90 knots, the limit is about 85.")
ask("autopilot off", "Autopilot off.")
go {{6, {airspeed = 70}}}
ask("flaps full", "Flaps full.")
ask("what is our altitude", "3000 feet on 2 9 9 2")
go {
    {20, {vertical_speed = -600, altitude = above(600), airspeed = 65}},
    {10, {altitude = above(300)}, "Five hundred, speed 65."},
    {12, {altitude = above(0), throttle = 0}},
    {3, {on_ground = 1, vertical_speed = 0, airspeed = 52}},
    {3, {throttle = 1}}, -- touch and go
    {5, {on_ground = 0, vertical_speed = 500, altitude = above(40)}, "Positive rate."},
    {12, {vertical_speed = -300, altitude = above(0), throttle = 0}},
    {1, {on_ground = 1, vertical_speed = 0}},
    {10, {airspeed = 0}},
}
crew.heard_all()
check.no_problems()

-- ---- The twin: retractable gear, flaps by notches, an engine that fails ----

board {engines = 2, retractable = 1, gear_limit = 140, notches = 2, degrees = UNLISTED, weight = 2100, standing = 1,
       stall_clean = 70, flaps_limit = 110, never_exceed = 200}
sim.set(ref.running, 1, 0)
ask("gear up", "We are on the ground, Sir.")
go {{1, {throttle = 1}}, {3, {airspeed = 20}, "Stop, Sir! An engine is not running."}, {1, {airspeed = 0, throttle = 0}}}
sim.set(ref.running, 1, 1)
fly(8)
go {
    {8, {throttle = 1, airspeed = 60}, "Power set.", "Airspeed alive."},
}
sim.set(ref.running, 0, 1)
go {
    {1, {}, "Engine failure! Number 2."},
    {2, {throttle = 0, airspeed = 40}, "Stopping."},
    {3, {airspeed = 0}},
}
sim.set(ref.running, 1, 1)
go {
    {8, {throttle = 1, airspeed = 85}, "Power set.", "Airspeed alive."},
    {1, {on_ground = 0, vertical_speed = 900}},
    {5, {altitude = above(100)}, "Positive rate."},
}
offers({"gear up", "one notch of flaps"}, {"gear down"})
ask("gear up", "Gear up.")
sim.set(ref.running, 0, 1)
hears("Engine failure! Number 2.")
sim.set(ref.running, 1, 1)
go {{10, {altitude = above(2500), airspeed = 170}}, {2, {vertical_speed = 0}}}
ask("gear down", "Too fast for the gear, Sir. 140 at most.")
go {{20, {altitude = above(600), airspeed = 100, vertical_speed = -700, throttle = 0.3}},
    {3, {altitude = above(490)}, "Five hundred. Gear, Sir!"}}
ask("gear down", "Gear down.")
ask("flaps two", "Flaps full.")
hears("Down and locked.")
go {{12, {altitude = above(0), throttle = 0}}, {1, {on_ground = 1, vertical_speed = 0}}, {10, {airspeed = 0}}}
crew.heard_all()

-- ---- The jet: all that a crew of two calls ----

board {engine_type = {5}, gear_limit = 270, notches = 8, degrees = {0, 1, 2, 5, 10, 15, 25, 30, 40}, weight = 60000,
       standing = 3, has_speed_brakes = 1, stall_clean = 140, flaps_limit = 170, never_exceed = 340, fuel = 6000,
       minimum = 200}
for i = 0, 1 do sim.set(ref.running, 1, i) end
sim.set(ref.selected_airspeed, 142)
ask("set the take off speeds", "V one?")
ask("one three zero", "Rotate?")
ask("one three five", "V two?")
ask("as selected", "V one 130, rotate 135, V two 142.")
go {{1, {throttle = 0.9}}, {3, {airspeed = 30}, "Flaps are up, Sir!"}, {1, {throttle = 0}, "Stopping."}, {3, {airspeed = 0}}}
ask("flaps five", "Flaps 5.")
is(ref.flaps, 3 / 8)
sim.set(ref.selected_altitude, 12000)
go {
    {15, {throttle = 0.9, airspeed = 105}, "Thrust set.", "80 knots."},
    {8, {airspeed = 137}, "V one.", "Rotate."},
    {1, {on_ground = 0, vertical_speed = 2000}},
    {4, {altitude = above(200), airspeed = 150}, "Positive rate.", "V two."},
}
ask("gear up", "Gear up.")
go {{20, {altitude = 4000, airspeed = 210}}}
ask("flaps up", "Flaps up.")
go {{30, {altitude = 10400}, "Ten thousand."}, {15, {altitude = 11500}, "One thousand to go."},
    {5, {altitude = 12000, vertical_speed = 0, throttle = 0.3}}}
ask("speed brakes out", "Speed brakes out.")
sim.set(ref.selected_altitude, 3000)
go {{30, {altitude = 9800, vertical_speed = -2000}, "Ten thousand."}}
ask("speed brakes in", "Speed brakes in.")
go {{30, {altitude = 3800, airspeed = 170}, "One thousand to go."}, {3, {vertical_speed = 0, altitude = 3000}}}
ask("gear down", "Gear down.")
hears("Down and locked.")
ask("flaps thirty", "Flaps 30.")
for i = 0, 1 do sim.set(ref.fuel_flow, 0.7, i) end
sim.set(ref.fuel, 2000)
hears("Fuel for 23 minutes, Sir.")
go {
    {20, {altitude = above(1100), vertical_speed = -750, airspeed = 140}},
    {10, {altitude = above(940)}, "One thousand."},
    {30, {altitude = above(440)}, "Five hundred, speed 140."},
    {15, {altitude = above(280)}, "Approaching minimums."},
    {9, {altitude = above(180)}, "Minimums."},
    {8, {altitude = above(80)}, "One hundred."},
    {7, {altitude = above(0), throttle = 0}, "Fifty.", "Thirty.", "Twenty.", "Ten."},
    {1, {on_ground = 1, vertical_speed = 0}},
    {15, {airspeed = 50}, "80 knots.", "60 knots."},
    {8, {airspeed = 10}},
}
crew.heard_all()
check.no_problems()

-- ---- The glider: nothing ----

board {engines = 0, engine_type = {0}, retractable = 0, gear_limit = 0, notches = 0, degrees = UNLISTED, weight = 400,
       standing = 0.5, has_speed_brakes = 0, batteries = 0, generators = 0, stall_clean = 36, flaps_limit = 0,
       never_exceed = 130, fuel = 0, minimum = 0}
local NOTHING = {
    {"gear down", "The gear is fixed, Sir."}, {"flaps up", "We have no flaps, Sir."},
    {"speed brakes out", "We have no speed brakes, Sir."}, {"landing lights on", "We have no lights, Sir."},
    {"pitot heat on", "We have no pitot heat, Sir."}, {"transponder on", "We have no transponder, Sir."},
    {"autopilot on", "We have no autopilot, Sir."}, {"heading mode", "We have no autopilot, Sir."},
    {"fuel state", "We have no engine, Sir."}, {"set the take off speeds", "We have no engine, Sir."},
}
for _, question in ipairs(NOTHING) do ask(question[1], question[2]) end
local function offers_questions()
    for phrase in pairs(offered()) do
        check.that(phrase:find("^what is") or phrase:find("altimeter") or phrase:find("tell me")
            or phrase == "say again" or phrase == "stand by", phrase .. " is offered")
    end
end
offers_questions()
go {{6, {airspeed = 45}, "Airspeed alive."}, {1, {on_ground = 0, vertical_speed = 400}}, {60, {altitude = above(2500)}},
    {5, {vertical_speed = -150}}}
offers_questions()
go {{60, {altitude = above(700), vertical_speed = -250}}, {20, {altitude = above(300)}, "Five hundred."},
    {15, {altitude = above(0)}}, {1, {on_ground = 1, vertical_speed = 0}}, {8, {airspeed = 0}}}
crew.heard_all()
check.no_problems()
