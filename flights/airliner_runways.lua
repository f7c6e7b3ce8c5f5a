-- A 737, which knows its runways, leaves by 36 Center and comes back to it: what she calls of them on the way,
-- and that she stops a take-off from another runway.
local check = require "lib.check"
local airliner = require "lib.airliner"
local ref, move, fly = airliner.ref, airliner.move, airliner.fly
local captain, ask, hears, silence = airliner.captain, airliner.ask, airliner.hears, airliner.silence
local set = airliner.set

local FMS, PFD, POSITION = "laminar/B738/fms/", "laminar/B738/pfd/", "sim/flightmodel/position/"
local HEADING = "sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot"
local THRESHOLD = {47.4, 8.5}
local METRES_A_DEGREE, METRES_A_DEGREE_EAST = 111180, 75500 -- at this latitude

-- So many metres along the runway from its threshold and to the right of it.
local function place(along, right, heading)
    sim.set(POSITION .. "latitude", THRESHOLD[1] + along / METRES_A_DEGREE)
    sim.set(POSITION .. "longitude", THRESHOLD[2] + right / METRES_A_DEGREE_EAST)
    sim.set(HEADING, heading)
    sim.set(ref.height_pilot, sim.get(ref.altitude) - airliner.field_feet)
    fly(0.2)
end
local function taxi(knots)
    sim.set(ref.airspeed, knots)
end

sim.world(THRESHOLD[1], THRESHOLD[2])
for _, runway in ipairs {"ref", "des"} do
    sim.publish(FMS .. runway .. "_runway_start_lat", "float", 0)
    sim.publish(FMS .. runway .. "_runway_start_lon", "float", 0)
    sim.publish(FMS .. runway .. "_runway_crs", "float", 0)
end
sim.publish(PFD .. "ils_runway0", "string", "36C")
sim.publish(PFD .. "ils_runway", "string", "36C")
place(-50, 700, 180)
airliner.park()
check.equal(sim.get("kv/fnc/lu_mode"), airliner.name == "737_Level_Up" and 738 or nil, "variant")
for i = 0, 1 do
    sim.set(ref.fuel_levers, 1, i)
    sim.set(ref.running, 1, i)
end
set {parking_brake = 0, flaps = 0.375}
fly(12)
ask("which runway", "No runway in sight yet, Sir.")
for _, runway in ipairs {"ref", "des"} do
    sim.set(FMS .. runway .. "_runway_start_lat", THRESHOLD[1])
    sim.set(FMS .. runway .. "_runway_start_lon", THRESHOLD[2])
    sim.set(FMS .. runway .. "_runway_crs", 360)
end
fly(0.5)
captain("which runway")
check.equal(hears("Runway"), "Runway 3 6 Center, 701 metres to the threshold, 180 degrees to turn.", "where we are")

-- ---- Departure ----

-- From the taxiway.
move(ref.throttle, 0.9, 1)
taxi(30)
hears("Stop! This is not runway 3 6 Center. 180 degrees off.")
move(ref.throttle, 0, 1)
taxi(15)
silence(3)
place(-20, 290, 270)
hears("Approaching runway 3 6 Center.")
place(0, 20, 300)
silence(2)
place(10, 0, 357)
hears("Runway 3 6 Center, heading checked.")
silence(2)
move(ref.throttle, 0.95, 1)
fly(2)
move(ref.airspeed, 160, 12)
for _, call in ipairs {"Thrust set.", "80 knots.", "V one.", "Rotate."} do hears(call) end
set {on_ground = 0, vertical_speed = 1500}
move(ref.altitude, 2200 + airliner.field_feet, 4)
hears("Positive climb.")
fly(4)
place(-20000, 0, 360)

-- ---- Arrival ----

-- Flies to a height and so many metres before the threshold.
local function approach(metres, right, height)
    sim.set(ref.vertical_speed, -800)
    move(ref.altitude, height + airliner.field_feet, 0.1)
    place(-metres, right, 360)
end
sim.set(ref.airspeed, 140)
approach(16000, 0, 1990)
silence(2)
approach(14000, 0, 1900)
hears("Runway 3 6 Center ahead, 8 miles.")
captain("which runway")
check.equal(hears("Runway"), "Runway 3 6 Center, 8 miles, 0 degrees off.", "where we are")
approach(7300, 0, 1400)
hears("Four miles.")
approach(5000, 550, 1100)
hears("6 degrees off the centre line.")
silence(3)

move(ref.altitude, airliner.field_feet, 0.5)
place(300, 0, 360)
fly(1)
set {on_ground = 1, vertical_speed = 0}
move(ref.throttle, 0, 1)
fly(2)
move(ref.airspeed, 20, 4)
hears("Taxi speed.")
place(1500, 60, 90)
silence(2)
place(1500, 110, 90)
hears("Clear of runway 3 6 Center.")
check.equal(check.count(airliner.said(), "runway 3 6 Center."), 3, "calls of the runway")
check.no_problems()
