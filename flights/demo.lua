-- From cold and dark to parked, in a Cessna 172. The pilot is only human: he forgets the parking brake,
-- answers before he looks, and is interrupted. Watch what the first officer makes of it.
--
-- The flight plays the pilot and the air around the aeroplane, and checks all that it shows: what was
-- said, what was thrown, what was kept for next time.

local check = require "lib.check"
local skyhawk = require "lib.skyhawk"
local ref, move, fly = skyhawk.ref, skyhawk.move, skyhawk.fly
local captain, hears, answers, silence = skyhawk.captain, skyhawk.hears, skyhawk.answers, skyhawk.silence
local is, fired = skyhawk.is, skyhawk.fired

-- Pictures of the screen go into the folder that the first argument names, if one is named, and those of a
-- film of the checklist, ten for a second, into its folder "film".
local function picture(name)
    if arg[1] then sim.screenshot(arg[1] .. name .. ".png") end
end
local filmed = 0
local function film()
    filmed = filmed + 1
    if filmed % 6 == 0 then picture(("film/%03d"):format(filmed // 6)) end
end

-- ---- On the apron ----

skyhawk.park()
sim.set(ref.fuel_selector, 1)
sim.set(ref.parking_brake, 0)
sim.set(ref.altimeter, 29.92)
if arg[1] then
    sim.screen(720, 400)
    sim.show("front")
end

sim.note("A cold and dark Cessna 172. The captain climbs in; the first officer sits on the right already.")
sim.start()
sim.set("kv/fennic/comments", 1) -- she tells what she does
fly(1)
if arg[1] then -- the list moves aside, and she takes her sunglasses off
    sim.mouse_down(360, 20)
    sim.mouse_drag(405, 20)
    sim.frames(2)
    sim.mouse_up(405, 20)
    sim.set("kv/fo/_glass", 0)
end
captain("prepare the cockpit")
hears("Good day, Captain. Nora here, for flight number 1.")
hears("Master on.")
hears("Fuel, 49 gallons.")
hears("Pitot heat and lights work.")
hears("Before start checklist, Sir?")
is(ref.battery, 0, 0)

sim.note("The captain is in a hurry.")
captain("start the engine")
hears("The parking brake is off. No start like this, Sir.")
fired(skyhawk.starter, 0)
sim.tap("sim/flight_controls/park_brake_set")
captain("yes")

hears("Seats and belts?")
skyhawk.watch = arg[1] and film
captain("checked")
sim.note("That is not what the list says. She keeps waiting.")
silence(1.5)
picture("checklist")
captain("adjusted and locked")
is(ref.tablet, 1)
answers("Brakes?", "set")
skyhawk.watch = nil
answers("Circuit breakers?", "in")
answers("Avionics?", "off")
answers("Fuel selector?", "both")
hears("I do not see it on both, Sir.")
sim.tap("sim/fuel/fuel_selector_all")
captain("both")
hears("Before start checklist complete.")

-- ---- Starting up ----

skyhawk.watch = arg[1] and film
captain("start the engine")
hears("Throttle")
skyhawk.watch = nil
hears("Primed. Propeller area?")
is(ref.tablet, 0)
is(ref.fuel_pump, 0, 0)
captain("clear")
hears("Clear prop!")
check.that(sim.get("kv/fo/l_arm1_x") > 20, "her left arm is not at the throttle")
hears("She fires.")
fired(skyhawk.starter, 1)
hears("in the green.")
hears("After start checklist, Sir?")
is(ref.mixture, 1)
is(ref.magnetos, 3, 0)
is(ref.alternator, 1, 0)
is(ref.avionics, 1)
is(ref.beacon, 1)

-- ---- To the runway ----

sim.tap("sim/flight_controls/park_brake_release")
sim.tap("sim/lights/taxi_lights_on")
move(ref.ground_speed, 8, 2)
captain("taxi checklist")
hears("Brakes?")
sim.note("The tower calls; the checklist has to go.")
captain("abort")
hears("All Commands and Checklists Aborted!")
is(ref.tablet, 0)
captain("taxi checklist")
answers("Brakes?", "checked")
answers("Flight instruments?", "checked")
answers("Altimeter?", "set")
hears("I have another pressure, Sir. You set 2 9 9 2")
sim.set(ref.altimeter, 30.02)
captain("set")
hears("Cross-checked, 3 0 0 2")
hears("Taxi checklist complete.")
move(ref.ground_speed, 0, 1)

sim.note("The run-up is done. They wait at the holding point.")
captain("flaps ten")
hears("Flaps ten.")
is(ref.flaps, 1 / 3)
captain("before take off checklist")
answers("Flight controls?", "free and correct")
answers("Flaps?", "ten")
answers("Trim?", "set")
answers("Mixture?", "rich")
answers("Doors and windows?", "closed and locked")
hears("Your briefing, Sir.")
sim.note("They have flown this before. The captain presses the button and says nothing.")
silence(4)
sim.press("kv/fennic/rec")
fly(0.3)
sim.release("kv/fennic/rec")
hears("Before take-off checklist complete.")

-- ---- Take-off ----

captain("cleared for take off")
hears("Right side clear.")
hears("Squawk 4 5 2 1")
hears("Rotate at 55")
is(ref.landing_light, 1)
is(ref.strobes, 1)
is(ref.transponder, 3)
fly(2)

move(ref.throttle, 1, 2)
fly(1.5)
move(ref.airspeed, 72, 13)
hears("Power set, gauges green.")
hears("Airspeed alive.")
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
captain("flaps up")
hears("Flaps up.")
is(ref.flaps, 0)
hears("One thousand. Climb checklist, Sir?")
captain("no")
hears("Standing by, Sir.")

-- ---- Cruise ----

sim.note("Two thousand feet, on the way to two thousand five hundred.")
sim.set(ref.selected_altitude, 2500)
sim.set(ref.altitude, 2000)
move(ref.altitude, 2500, 10)
move(ref.airspeed, 100, 10)
hears("300 to go.")
hears("Level at 2500.")
move(ref.vertical_speed, 0, 1)
sim.set(ref.throttle, 0.75)
sim.set(ref.mixture, 0.7)
captain("how are you")
local mood = hears("")
check.that(mood:find("Never better") or mood:find("Warm, dry") or mood:find("Ready when you are"), mood)

-- ---- Down again ----

sim.note("Half an hour later. The aerodrome is in sight.")
sim.set(ref.fuel_kg, 58, 0)
sim.set(ref.fuel_kg, 55, 1)
sim.set(ref.selected_altitude, 1100)
sim.set(ref.throttle, 0.4)
sim.set(ref.vertical_speed, -500)
fly(0.5)
sim.set(ref.altitude, 1450)
move(ref.altitude, 1100, 9)
move(ref.airspeed, 95, 5)
hears("250 to go.")
hears("Level at 1100.")
move(ref.vertical_speed, 0, 1)
captain("before landing checklist")
answers("Belts?", "fastened")
answers("Fuel selector?", "both")
answers("Mixture?", "rich")
hears("I see it leaned, Sir.")
sim.set(ref.mixture, 1)
captain("rich")
answers("Landing light?", "on")
answers("Autopilot?", "off")
hears("Before landing checklist complete. Sixty-five on final.")
captain("flaps twenty")
hears("Negative, Sir. 95 knots, the limit is 85.")
is(ref.flaps, 0)

sim.note("Final.")
move(ref.airspeed, 80, 2)
fly(2)
sim.set(ref.altitude, skyhawk.field_feet + 600)
sim.set(ref.vertical_speed, -450)
move(ref.airspeed, 65, 4)
captain("flaps full")
hears("Flaps full.")
is(ref.flaps, 1)
move(ref.altitude, skyhawk.field_feet, 12)
hears("Five hundred, stable, speed 65.")
fly(8)
move(ref.throttle, 0, 1)
fly(2)
sim.set(ref.on_ground, 1)
sim.set(ref.vertical_speed, 0)
move(ref.airspeed, 15, 6)
hears("Forty knots.")

-- ---- Home ----

fly(2)
captain("clean up")
hears("All clean. After landing checklist, Sir?")
is(ref.flaps, 0)
is(ref.strobes, 0)
is(ref.landing_light, 0)
is(ref.taxi_light, 1)
is(ref.transponder, 1)

sim.note("Back on the apron.")
move(ref.airspeed, 0, 1)
sim.set(ref.ground_speed, 4)
captain("shut down")
hears("We are still rolling, Sir.")
is(ref.mixture, 1)
move(ref.ground_speed, 0, 1)
fly(1)
captain("shut down")
hears("Mixture, idle cut-off.")
hears("All quiet. Shutdown checklist, Sir?")
is(ref.magnetos, 0, 0)
is(ref.battery, 0, 0)
is(ref.nav_lights, 0)
is(ref.parking_brake, 1)
captain("yes")
answers("Parking brake?", "set")
answers("Mixture?", "cut off")
answers("Magnetos?", "off")
answers("Master?", "off")
hears("Shutdown checklist complete.")
captain("secure the aircraft")
hears("Chocks in place. Securing checklist, Sir?")
is(ref.fuel_selector, 1)
captain("yes")
answers("Control lock?", "installed")
answers("Fuel selector?", "left")
answers("Chocks?", "in place")
answers("Any words for the logbook?", "a fine day and a soft landing")
hears("Securing checklist complete. That was flight 1. Thank you for flying with Nora.")
fly(2)
is(ref.tablet, 0)

-- She remembers the flight next time.
sim.stop()
local saved = check.read(sim.dir("plugin") .. "systems/_save.txt")
check.that(saved:find("CREW.LOGBOOK.FLIGHTS=1.000000\r\n", 1, true), saved)
