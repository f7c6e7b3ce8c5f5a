-- The Cessna's checklists, procedures and call-outs that the demo leaves out, and what goes wrong in them:
-- a start without spark or oil, a rejected take-off, a go-around, offers that nobody takes up.
local check = require "lib.check"
local skyhawk = require "lib.skyhawk"
local ref, move, fly = skyhawk.ref, skyhawk.move, skyhawk.fly
local captain, ask, hears, answers = skyhawk.captain, skyhawk.ask, skyhawk.hears, skyhawk.answers
local silence, is, are, fired = skyhawk.silence, skyhawk.is, skyhawk.are, skyhawk.fired
local set, read = skyhawk.set, skyhawk.read

local LOW_VACUUM = "sim/cockpit2/annunciators/low_vacuum"
local COMMENTS, PILOTS_JOBS, OFFER = "kv/fennic/comments", "kv/fennic/realmode", "kv/fennic/offer"

skyhawk.park()
sim.start()
fly(1)

-- ---- On the ground ----

ask("fuel state", "25 gallons left, 24 right.")
sim.set(ref.fuel_kg, 9, 0)
sim.set(ref.fuel_kg, 9, 1)
ask("prepare the cockpit", "Only 6 gallons. We need the bowser, Sir.")
silence(2)
is(ref.battery, 0, 0)
sim.set(ref.fuel_kg, 69, 0)
sim.set(ref.fuel_kg, 66, 1)
read("preflight checklist", {{"Documents?", "on board"}, {"Control lock?", "removed"},
    {"Fuel and oil?", "quantity checked"}, {"And the walk around?", "all in order"}},
    "Preflight checklist complete.")

-- An offer that is not taken up lapses; "yes" then means nothing.
ask("prepare the cockpit", "Ready. Before start checklist, Sir?")
is(OFFER, 1)
silence(26)
is(OFFER, 0)
captain("yes")
silence(3)

-- Nor does what was accepted while it ran begin once it is broken off.
ask("before start checklist", "Seats and belts?")
ask("prepare the cockpit", "Ready. Before start checklist, Sir?")
captain("yes")
ask("abort", "All Commands and Checklists Aborted!")
silence(3)
is(OFFER, 0)

-- ---- Starts that fail ----

local function crank()
    captain("start the engine")
    answers("Primed. Propeller area?", "clear")
    hears("Clear prop!")
end

skyhawk.has_spark = false
crank()
fly(4)
fired(skyhawk.starter, 1, 0)
ask("abort", "All Commands and Checklists Aborted!")
fired(skyhawk.starter, 1)
crank()
hears("No start. We let the starter cool, Sir.")
fired(skyhawk.starter, 2)
is(ref.mixture, 0)

skyhawk.has_spark, skyhawk.has_oil = true, false
crank()
hears("She fires.")
fired(skyhawk.starter, 3)
fly(25)
hears("No oil pressure! Engine off.")
fly(3)
is(ref.running, 0, 0)

skyhawk.has_oil = true
sim.set(PILOTS_JOBS, 1)
ask("engine start", "Your start, Sir. I watch the gauges.")
sim.set(PILOTS_JOBS, 0)
crank()
hears("She fires.")
read(nil, {{"After start checklist, Sir?", "go ahead"}, {"Oil pressure?", "green"}, {"Alternator?", "on"},
    {"Avionics?", "on"}, {"Flaps?", "zero"}}, "After start checklist complete.")
ask("start the engine", "It is running already, Sir.")
ask("secure the aircraft", "The engine is still running, Sir.")

-- ---- Run-up ----

local function runUp()
    read("run up checklist", {{"Parking brake?", "set"}, {"Fuel selector?", "on both"}},
        "Throttle eighteen hundred, Sir.")
    silence(2)
    move(ref.throttle, 0.64, 1)
end

sim.set(LOW_VACUUM, 1)
runUp()
hears("Vacuum is low. I stop here, we stay on the ground.")
move(ref.throttle, 0.1, 1)
sim.set(LOW_VACUUM, 0)
fly(6)
is(ref.tablet, 0)
runUp()
hears("Eighteen hundred.")
sim.set(ref.magnetos, 2, 0)
answers("Magnetos?", "within limits")
hears("The key is not on both, Sir.")
sim.set(ref.magnetos, 3, 0)
captain("checked")
read(nil, {{"Suction, ammeter, engine gauges?", "green"}}, "Throttle idle, Sir.")
move(ref.throttle, 0, 1)
answers("Run-up complete. Before take-off checklist, Sir?", "yes")
hears("Flight controls?")
captain("abort")

-- ---- Take-off, rejected and flown ----

local function roll()
    sim.set(ref.altitude, skyhawk.field_feet)
    move(ref.throttle, 1, 1)
    fly(1)
    move(ref.airspeed, 70, 10)
end

skyhawk.has_oil = false
fly(3)
roll()
hears("Oil pressure! Stop, Sir!")
skyhawk.has_oil = true
sim.set(ref.throttle, 0)
move(ref.airspeed, 0, 2)
fly(3)

roll()
hears("Power set, gauges green.", "Airspeed alive.")
sim.set(ref.throttle, 0)
move(ref.airspeed, 0, 4)
hears("Stopping.")
silence(5)

ask("call outs off", "Call-outs off, Sir.")
roll()
silence(8)
move(ref.airspeed, 0, 1)
sim.set(ref.throttle, 0)
fly(1.5)
captain("call outs on")
roll()
hears("Rotate.")
sim.set(ref.on_ground, 0)
move(ref.vertical_speed, 700, 1)
move(ref.altitude, skyhawk.field_feet + 900, 6)
hears("Positive rate.")
move(ref.airspeed, 50, 1)
hears("Airspeed!")
silence(2)
move(ref.airspeed, 76, 1)
fly(2)
move(ref.altitude, skyhawk.field_feet + 1100, 3)
read(nil, {{"One thousand. Climb checklist, Sir?", "yes"}, {"Flaps?", "up"}, {"Power?", "full"},
    {"Mixture?", "rich"}}, "Climb checklist complete.")

-- ---- Aloft ----

read("cruise checklist", {{"Power?", "set"}, {"Mixture?", "leaned"}}, "Altimeter?")
sim.set(ref.altimeter, 30.02)
ask("checked", "Cruise checklist complete. 49 gallons on board.")
ask("altimeter check", "Cross-checked, 3 0 0 2")
sim.set(ref.altitude, 3470)
ask("what is our altitude", "3470 feet on 3 0 0 2")
ask("what are we squawking", "We squawk 4 5 2 1")
read("descent checklist", {{"Weather?", "copied"}, {"Altimeter?", "set"}, {"Mixture?", "full rich"}},
    "Descent checklist complete.")
sim.set(ref.fuel_kg, 8, 0)
sim.set(ref.fuel_kg, 10, 1)
hears("Fuel is low, Sir. 6 gallons.")
skyhawk.has_oil = false
hears("Oil pressure!")
skyhawk.has_oil = true
move(ref.airspeed, 105, 1)
ask("flaps ten", "Flaps ten.")
move(ref.airspeed, 114, 1)
hears("Flap speed, Sir. One hundred and ten at most.")
silence(3)

-- ---- An approach that is none, and one that is ----

local function final(airspeed, flaps)
    move(ref.altitude, skyhawk.field_feet + 900, 0.2)
    move(ref.airspeed, airspeed, 1)
    sim.set(ref.vertical_speed, -500)
    fly(2)
    if flaps then
        ask(flaps, "Flaps")
    end
    move(ref.altitude, skyhawk.field_feet + 100, 8)
end

final(84, nil)
hears("Five hundred, not stable. Go around, Sir?")
ask("go around", "Going around, full power, flaps twenty.")
are {throttle = 1, flaps = 2 / 3}
move(ref.vertical_speed, 600, 2)
hears("Positive rate.", "Flaps ten.")
move(ref.altitude, skyhawk.field_feet + 500, 2)
hears("Flaps up. Climb at 74, Sir.")
is(ref.flaps, 0)
final(66, "flaps full")
hears("Five hundred, stable, speed 66.")
move(ref.throttle, 0, 1)
move(ref.altitude, skyhawk.field_feet, 4)
fly(4)
set {vertical_speed = 0, on_ground = 1}
ask("runway vacated", "Brakes first, Sir. We are doing 66.")
move(ref.airspeed, 0, 4)
hears("Forty knots.")
captain("runway vacated")
read(nil, {{"All clean. After landing checklist, Sir?", "yes"}, {"Flaps?", "up"}, {"Lights?", "set"},
    {"Transponder?", "standby"}}, "After landing checklist complete.")
ask("go around", "We are on the ground, Sir.")

-- She kept to herself what she did, since nobody asked to hear it.
is(COMMENTS, 0)
check.equal(check.count(skyhawk.said(), "#"), 0, "texts with a mark")
check.equal(check.count(skyhawk.said(), "Master on."), 0, "announcements")
check.no_problems()

-- ---- The next flight ----

ask("call outs off", "Call-outs off, Sir.")
sim.restart()
sim.set(ref.fuel_kg, 60, 0)
fly(1)
ask("prepare the cockpit", "flight number 2.", "Ready. Before start checklist, Sir?")
roll()
silence(8)
