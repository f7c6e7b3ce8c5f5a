-- From cold and dark to parked, in a Cessna 172. The pilot is only human: he forgets the parking brake,
-- answers before he looks, and is interrupted. Watch what the first officer makes of it.
--
-- The flight plays the pilot and the air around the aeroplane, and checks all that it shows: what was
-- said, what was thrown, what was kept for next time.

local check = require "lib.check"
local skyhawk = require "lib.skyhawk"
local ref, move, fly = skyhawk.ref, skyhawk.move, skyhawk.fly
local captain, hears, answers, silence = skyhawk.captain, skyhawk.hears, skyhawk.answers, skyhawk.silence
local ask, read, is, are, fired = skyhawk.ask, skyhawk.read, skyhawk.is, skyhawk.are, skyhawk.fired
local set = skyhawk.set

-- Pictures of the screen go into the folder that the first argument names, if one is named.
local function picture(name)
    if arg[1] then sim.screenshot(arg[1] .. name .. ".png") end
end

-- ---- On the apron ----

skyhawk.park()
set {fuel_selector = 1, parking_brake = 0, altimeter = 29.92}
if arg[1] then
    sim.screen(720, 400)
    sim.show("front")
end

sim.note("A cold and dark Cessna 172. The captain climbs in; the first officer sits on the right already.")
sim.start()
skyhawk.is_aloud = sim.exists("fennic_speech/process")
sim.set("kv/fennic/comments", 1) -- she tells what she does
fly(1)
if arg[1] then -- the list moves aside, and she takes her sunglasses off
    sim.mouse_down(360, 20)
    sim.mouse_drag(405, 20)
    sim.frames(2)
    sim.mouse_up(405, 20)
    sim.set("kv/fo/_glass", 0)
end
ask("prepare the cockpit", "Good day, Captain. Nora here, for flight number 1.", "Master on.", "Fuel, 49 gallons.")
hears("Pitot heat and lights work.", "Before start checklist, Sir?")
is(ref.battery, 0, 0)

sim.note("The captain is in a hurry.")
ask("start the engine", "The parking brake is off. No start like this, Sir.")
fired(skyhawk.starter, 0)
sim.tap("sim/flight_controls/park_brake_set")
captain("yes")

hears("Seats and belts?")
captain("checked")
sim.note("That is not what the list says. She keeps waiting.")
silence(1.5)
picture("checklist")
captain("adjusted and locked")
is(ref.tablet, 1)
read(nil, {{"Brakes?", "set"}, {"Circuit breakers?", "in"}, {"Avionics?", "off"}, {"Fuel selector?", "both"}},
     "I do not see it on both, Sir.")
sim.tap("sim/fuel/fuel_selector_all")
ask("both", "Before start checklist complete.")

-- ---- Starting up ----

ask("start the engine", "Throttle", "Primed. Propeller area?")
are {tablet = 0, fuel_pump = 0}
ask("clear", "Clear prop!")
check.that(sim.get("kv/fo/l_arm1_x") > 20, "her left arm is not at the throttle")
hears("She fires.")
fired(skyhawk.starter, 1)
hears("in the green.", "After start checklist, Sir?")
are {mixture = 1, magnetos = 3, alternator = 1, avionics = 1, beacon = 1}

-- ---- To the runway ----

sim.tap("sim/flight_controls/park_brake_release")
sim.tap("sim/lights/taxi_lights_on")
move(ref.ground_speed, 8, 2)
ask("taxi checklist", "Brakes?")
sim.note("The tower calls; the checklist has to go.")
ask("abort", "All Commands and Checklists Aborted!")
is(ref.tablet, 0)
captain("taxi checklist")
read(nil, {{"Brakes?", "checked"}, {"Flight instruments?", "checked"}, {"Altimeter?", "set"}},
     "I have another pressure, Sir. You set 2 9 9 2")
sim.set(ref.altimeter, 30.02)
ask("set", "Cross-checked, 3 0 0 2", "Taxi checklist complete.")
move(ref.ground_speed, 0, 1)

sim.note("The run-up is done. They wait at the holding point.")
ask("flaps ten", "Flaps ten.")
is(ref.flaps, 1 / 3)
read("before take off checklist", {{"Flight controls?", "free and correct"}, {"Flaps?", "ten"}, {"Trim?", "set"},
     {"Mixture?", "rich"}, {"Doors and windows?", "closed and locked"}}, "Your briefing, Sir.")
sim.note("They have flown this before. The captain presses the button and says nothing.")
silence(4)
sim.press("kv/fennic/rec")
fly(0.3)
sim.release("kv/fennic/rec")
hears("Before take-off checklist complete.")

-- ---- Take-off ----

ask("cleared for take off", "Right side clear.", "Squawk 4 5 2 1", "Rotate at 55")
are {landing_lights = 1, strobes = 1, transponder = 3}
fly(2)

move(ref.throttle, 1, 2)
fly(1.5)
move(ref.airspeed, 72, 13)
hears("Power set, gauges green.", "Airspeed alive.")
if arg[1] then sim.show("cockpit") end
picture("take_off")
check.near(sim.get(ref.airspeed), 41.5, 1.5, "airspeed alive")
hears("Rotate.")
check.near(sim.get(ref.airspeed), 56.5, 1.5, "rotate")
fly(1)
sim.set(ref.on_ground, 0)
move(ref.vertical_speed, 700, 2)
move(ref.altitude, skyhawk.field_feet + 60, 4)
hears("Positive rate.")
fly(2)
move(ref.altitude, skyhawk.field_feet + 1010, 9)
ask("flaps up", "Flaps up.")
is(ref.flaps, 0)
hears("One thousand. Climb checklist, Sir?")
ask("no", "Standing by, Sir.")

-- ---- Cruise ----

sim.note("Two thousand feet, on the way to two thousand five hundred.")
set {selected_altitude = 2500, altitude = 2000}
move(ref.altitude, 2500, 10)
move(ref.airspeed, 100, 10)
hears("300 to go.", "Level at 2500.")
move(ref.vertical_speed, 0, 1)
set {throttle = 0.75, mixture = 0.7}
captain("how are you")
local mood = hears("")
check.that(mood:find("Never better") or mood:find("Warm, dry") or mood:find("Ready when you are"), mood)

-- ---- Down again ----

sim.note("Half an hour later. The aerodrome is in sight.")
sim.set(ref.fuel_kg, 58, 0)
sim.set(ref.fuel_kg, 55, 1)
set {selected_altitude = 1100, throttle = 0.4, vertical_speed = -500}
fly(0.5)
sim.set(ref.altitude, 1450)
move(ref.altitude, 1100, 9)
move(ref.airspeed, 95, 5)
hears("250 to go.", "Level at 1100.")
move(ref.vertical_speed, 0, 1)
read("before landing checklist", {{"Belts?", "fastened"}, {"Fuel selector?", "both"}, {"Mixture?", "rich"}},
     "I see it leaned, Sir.")
sim.set(ref.mixture, 1)
read("rich", {{"Landing light?", "on"}, {"Autopilot?", "off"}},
     "Before landing checklist complete. Sixty-five on final.")
ask("flaps twenty", "Negative, Sir. 95 knots, the limit is 85.")
is(ref.flaps, 0)

sim.note("Final.")
move(ref.airspeed, 80, 2)
fly(2)
set {altitude = skyhawk.field_feet + 600, vertical_speed = -450}
move(ref.airspeed, 65, 4)
ask("flaps full", "Flaps full.")
is(ref.flaps, 1)
move(ref.altitude, skyhawk.field_feet, 12)
hears("Five hundred, stable, speed 65.")
fly(8)
move(ref.throttle, 0, 1)
fly(2)
set {on_ground = 1, vertical_speed = 0}
move(ref.airspeed, 15, 6)
hears("Forty knots.")

-- ---- Home ----

fly(2)
ask("clean up", "All clean. After landing checklist, Sir?")
are {flaps = 0, strobes = 0, landing_lights = 0, taxi_light = 1, transponder = 1}

sim.note("Back on the apron.")
move(ref.airspeed, 0, 1)
sim.set(ref.ground_speed, 4)
ask("shut down", "We are still rolling, Sir.")
is(ref.mixture, 1)
move(ref.ground_speed, 0, 1)
fly(1)
ask("shut down", "Mixture, idle cut-off.", "All quiet. Shutdown checklist, Sir?")
are {magnetos = 0, battery = 0, nav_lights = 0, parking_brake = 1}
read("yes", {{"Parking brake?", "set"}, {"Mixture?", "cut off"}, {"Magnetos?", "off"}, {"Master?", "off"}},
     "Shutdown checklist complete.")
ask("secure the aircraft", "Chocks in place. Securing checklist, Sir?")
is(ref.fuel_selector, 1)
read("yes", {{"Control lock?", "installed"}, {"Fuel selector?", "left"}, {"Chocks?", "in place"},
     {"Any words for the logbook?", "a fine day and a soft landing"}},
     "Securing checklist complete. That was flight 1. Thank you for flying with Nora.")
fly(2)
is(ref.tablet, 0)

-- She remembers the flight next time.
sim.stop()
local saved = check.read(sim.dir("plugin") .. "systems/_save.txt")
check.that(saved:find("CREW.LOGBOOK.FLIGHTS=1.000000\r\n", 1, true), saved)
