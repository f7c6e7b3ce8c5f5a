-- From cold and dark to parked, in a Cessna 172. The pilot is only human: he forgets the parking brake,
-- answers before he looks, and is interrupted. Watch what the first officer makes of it.
--
-- The flight plays the pilot and the air around the aeroplane, and checks all that it shows: what was
-- said, what was thrown, what was kept for next time.

-- ---- The aeroplane's datarefs ----

local AIRSPEED = "sim/cockpit2/gauges/indicators/airspeed_kts_pilot"
local ALTITUDE = "sim/cockpit2/gauges/indicators/altitude_ft_pilot"
local VERTICAL_SPEED = "sim/cockpit2/gauges/indicators/vvi_fpm_pilot"
local GROUND_SPEED = "sim/cockpit2/gauges/indicators/ground_speed_kt"
local HEIGHT_METRES = "sim/flightmodel/position/y_agl"
local ON_GROUND = "sim/flightmodel/failures/onground_any"
local RUNNING = "sim/flightmodel/engine/ENGN_running"
local RPM = "sim/cockpit2/engine/indicators/engine_speed_rpm"
local OIL_PRESSURE = "sim/cockpit2/engine/indicators/oil_pressure_psi"
local THROTTLE = "sim/cockpit2/engine/actuators/throttle_ratio_all"
local MIXTURE = "sim/cockpit2/engine/actuators/mixture_ratio_all"
local MAGNETOS = "sim/cockpit2/engine/actuators/ignition_key"
local FUEL_PUMP = "sim/cockpit2/engine/actuators/fuel_pump_on"
local FUEL_SELECTOR = "sim/cockpit2/fuel/fuel_tank_selector"
local FUEL_KG = "sim/cockpit2/fuel/fuel_quantity"
local BATTERY = "sim/cockpit2/electrical/battery_on"
local ALTERNATOR = "sim/cockpit2/electrical/generator_on"
local AVIONICS = "sim/cockpit2/switches/avionics_power_on"
local BEACON = "sim/cockpit2/switches/beacon_on"
local NAV_LIGHTS = "sim/cockpit2/switches/navigation_lights_on"
local STROBES = "sim/cockpit2/switches/strobe_lights_on"
local LANDING_LIGHT = "sim/cockpit2/switches/landing_lights_on"
local TAXI_LIGHT = "sim/cockpit2/switches/taxi_light_on"
local PARKING_BRAKE = "sim/cockpit2/controls/parking_brake_ratio"
local FLAPS = "sim/cockpit2/controls/flap_handle_request_ratio"
local SQUAWK = "sim/cockpit2/radios/actuators/transponder_code"
local TRANSPONDER = "sim/cockpit2/radios/actuators/transponder_mode"
local SELECTED_ALTITUDE = "sim/cockpit2/autopilot/altitude_dial_ft"
local ALTIMETER = "sim/cockpit/misc/barometer_setting"
local SEA_LEVEL_PRESSURE = "sim/weather/barometer_sealevel_inhg"
local STATION_PRESSURE = "sim/weather/barometer_current_inhg"
local STARTER = "sim/starters/engage_starter_1"
local TABLET = "kv/fo/_planshet"

local FIELD_FEET = 80 -- elevation of the aerodrome

-- ---- The air and the engine, a frame at a time ----

local ramps = {}   -- dataref -> {from, to, begin, finish}: values on their way
local heard = {}   -- all she has said, in order
local cursor = 0   -- how far the script has followed it
local quietAt = 0  -- when she has finished speaking, as the captain hears it
local crankedSince

local function move(dataref, to, seconds)
    ramps[dataref] = {from = sim.get(dataref), to = to, begin = sim.time(), finish = sim.time() + seconds}
end

local function moveValues(now)
    for dataref, ramp in pairs(ramps) do
        local part = math.min((now - ramp.begin) / (ramp.finish - ramp.begin), 1)
        sim.set(dataref, part < 1 and ramp.from + (ramp.to - ramp.from) * part or ramp.to)
        if part == 1 then ramps[dataref] = nil end
    end
    sim.set(HEIGHT_METRES, (sim.get(ALTITUDE) - FIELD_FEET) * 0.3048)
end

-- An engine that fires after two seconds on the starter and stops without fuel.
local function runEngine(now)
    local starter = sim.fired(STARTER)
    if starter.begun == starter.ended then crankedSince = nil
    else crankedSince = crankedSince or now end
    local running = sim.get(RUNNING, 0) == 1
    if running and sim.get(MIXTURE) < 0.05 and sim.get(RPM, 0) > 600 and not crankedSince then running = false end
    if crankedSince and now - crankedSince > 2 then running = true end
    sim.set(RUNNING, running and 1 or 0, 0)
    local rpm = running and 780 + 1600 * sim.get(THROTTLE) or crankedSince and 120 or 0
    sim.set(RPM, sim.get(RPM, 0) + (rpm - sim.get(RPM, 0)) * 0.03, 0)
    local oil = running and 62 or 0
    sim.set(OIL_PRESSURE, sim.get(OIL_PRESSURE, 0) + (oil - sim.get(OIL_PRESSURE, 0)) * 0.01, 0)
end

local function step()
    moveValues(sim.time())
    runEngine(sim.time())
    sim.frames(1)
    for _, text in ipairs(sim.said()) do
        heard[#heard + 1] = text
        quietAt = math.max(quietAt, sim.time()) + 1 + #text / 10
    end
end

local function fly(seconds)
    local finish = sim.time() + seconds
    while sim.time() < finish do step() end
end

-- ---- The conversation ----

-- She says something that contains the text, within 15 seconds.
local function hears(text)
    local latest = sim.time() + 15
    while true do
        while cursor < #heard do
            cursor = cursor + 1
            if heard[cursor]:find(text, 1, true) then return heard[cursor] end
        end
        assert(sim.time() < latest, 'she never said "' .. text .. '", but last: ' .. tostring(heard[#heard]))
        step()
    end
end

-- The captain lets her finish, thinks, and speaks.
local function captain(text)
    while sim.time() < quietAt do step() end
    fly(0.3)
    sim.hear(text)
end

local function answers(challenge, answer)
    hears(challenge)
    captain(answer)
end

-- She has nothing to say to that.
local function silence(seconds)
    local before = #heard
    fly(seconds)
    assert(#heard == before, "she said: " .. tostring(heard[#heard]))
end

local function is(dataref, wanted, index)
    local value = sim.get(dataref, index)
    assert(math.abs(value - wanted) < 0.01, dataref .. " is " .. tostring(value) .. ", not " .. wanted)
end

local function once(command)
    local fired = sim.fired(command)
    assert(fired.begun == 1 and fired.ended == 1, command .. " was begun " .. fired.begun .. " times and ended "
        .. fired.ended .. " times")
end

-- ---- On the apron ----

sim.set(ON_GROUND, 1)
sim.set(ALTITUDE, FIELD_FEET)
sim.set(FUEL_KG, 69, 0)
sim.set(FUEL_KG, 66, 1)
sim.set(FUEL_SELECTOR, 1)
sim.set(PARKING_BRAKE, 0)
sim.set(SQUAWK, 4521)
sim.set(TRANSPONDER, 1)
sim.set(SEA_LEVEL_PRESSURE, 30.02)
sim.set(STATION_PRESSURE, 30.02)
sim.set(ALTIMETER, 29.92)

sim.note("A cold and dark Cessna 172. The captain climbs in; the first officer sits on the right already.")
sim.start()
sim.set("kv/fennic/comments", 1) -- she tells what she does
fly(1)
captain("prepare the cockpit")
hears("Good day, Captain. Nora here, for flight number 1.")
hears("Master on.")
hears("Fuel, 49 gallons.")
hears("Pitot heat and lights work.")
hears("Before start checklist, Sir?")
is(BATTERY, 0, 0)

sim.note("The captain is in a hurry.")
captain("start the engine")
hears("The parking brake is off. No start like this, Sir.")
assert(sim.fired(STARTER).begun == 0)
sim.tap("sim/flight_controls/park_brake_set")
captain("yes")

answers("Seats and belts?", "checked")
sim.note("That is not what the list says. She keeps waiting.")
silence(1.5)
captain("adjusted and locked")
is(TABLET, 1)
answers("Brakes?", "set")
answers("Circuit breakers?", "in")
answers("Avionics?", "off")
answers("Fuel selector?", "both")
hears("I do not see it on both, Sir.")
sim.tap("sim/fuel/fuel_selector_all")
captain("both")
hears("Before start checklist complete.")

-- ---- Starting up ----

captain("start the engine")
hears("Primed. Propeller area?")
is(TABLET, 0)
is(FUEL_PUMP, 0, 0)
captain("clear")
hears("Clear prop!")
assert(sim.get("kv/fo/l_arm1_x") > 40, "her left arm is not at the throttle")
hears("She fires.")
once(STARTER)
hears("in the green.")
hears("After start checklist, Sir?")
is(MIXTURE, 1)
is(MAGNETOS, 3, 0)
is(ALTERNATOR, 1, 0)
is(AVIONICS, 1)
is(BEACON, 1)

-- ---- To the runway ----

sim.tap("sim/flight_controls/park_brake_release")
sim.tap("sim/lights/taxi_lights_on")
move(GROUND_SPEED, 8, 2)
captain("taxi checklist")
hears("Brakes?")
sim.note("The tower calls; the checklist has to go.")
captain("abort")
hears("All Commands and Checklists Aborted!")
is(TABLET, 0)
captain("taxi checklist")
answers("Brakes?", "checked")
answers("Flight instruments?", "checked")
answers("Altimeter?", "set")
hears("I have another pressure, Sir. You set 2 9 9 2")
sim.set(ALTIMETER, 30.02)
captain("set")
hears("Cross-checked, 3 0 0 2")
hears("Taxi checklist complete.")
move(GROUND_SPEED, 0, 1)

sim.note("The run-up is done. They wait at the holding point.")
captain("flaps ten")
hears("Flaps ten.")
is(FLAPS, 1 / 3)
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
is(LANDING_LIGHT, 1)
is(STROBES, 1)
is(TRANSPONDER, 3)
fly(2)

move(THROTTLE, 1, 2)
fly(1.5)
move(AIRSPEED, 72, 13)
hears("Power set, gauges green.")
hears("Airspeed alive.")
assert(sim.get(AIRSPEED) >= 40 and sim.get(AIRSPEED) < 43, "airspeed alive at " .. sim.get(AIRSPEED))
hears("Rotate.")
assert(sim.get(AIRSPEED) >= 55 and sim.get(AIRSPEED) < 58, "rotate at " .. sim.get(AIRSPEED))
fly(1)
sim.set(ON_GROUND, 0)
move(VERTICAL_SPEED, 700, 2)
move(ALTITUDE, FIELD_FEET + 60, 4)
hears("Positive rate.")
fly(2)
move(ALTITUDE, FIELD_FEET + 1010, 9)
captain("flaps up")
hears("Flaps up.")
is(FLAPS, 0)
hears("One thousand. Climb checklist, Sir?")
captain("no")
hears("Standing by, Sir.")

-- ---- Cruise ----

sim.note("Two thousand feet, on the way to two thousand five hundred.")
sim.set(SELECTED_ALTITUDE, 2500)
sim.set(ALTITUDE, 2000)
move(ALTITUDE, 2500, 10)
move(AIRSPEED, 100, 10)
hears("300 to go.")
hears("Level at 2500.")
move(VERTICAL_SPEED, 0, 1)
sim.set(THROTTLE, 0.75)
sim.set(MIXTURE, 0.7)
captain("how are you")
fly(1)
local mood = heard[#heard]
assert(mood:find("Never better") or mood:find("Warm, dry") or mood:find("Ready when you are"), mood)

-- ---- Down again ----

sim.note("Half an hour later. The aerodrome is in sight.")
sim.set(FUEL_KG, 58, 0)
sim.set(FUEL_KG, 55, 1)
sim.set(SELECTED_ALTITUDE, 1100)
sim.set(THROTTLE, 0.4)
sim.set(VERTICAL_SPEED, -500)
fly(0.5)
sim.set(ALTITUDE, 1450)
move(ALTITUDE, 1100, 9)
move(AIRSPEED, 95, 5)
hears("250 to go.")
hears("Level at 1100.")
move(VERTICAL_SPEED, 0, 1)
captain("before landing checklist")
answers("Belts?", "fastened")
answers("Fuel selector?", "both")
answers("Mixture?", "rich")
hears("I see it leaned, Sir.")
sim.set(MIXTURE, 1)
captain("rich")
answers("Landing light?", "on")
answers("Autopilot?", "off")
hears("Before landing checklist complete. Sixty-five on final.")
captain("flaps twenty")
hears("Negative, Sir. 95 knots, the limit is 85.")
is(FLAPS, 0)

sim.note("Final.")
move(AIRSPEED, 80, 2)
fly(2)
sim.set(ALTITUDE, FIELD_FEET + 600)
sim.set(VERTICAL_SPEED, -450)
move(AIRSPEED, 65, 4)
captain("flaps full")
hears("Flaps full.")
is(FLAPS, 1)
move(ALTITUDE, FIELD_FEET, 12)
hears("Five hundred, stable, speed 65.")
fly(8)
move(THROTTLE, 0, 1)
fly(2)
sim.set(ON_GROUND, 1)
sim.set(VERTICAL_SPEED, 0)
move(AIRSPEED, 15, 6)
hears("Forty knots.")

-- ---- Home ----

fly(2)
captain("clean up")
hears("All clean. After landing checklist, Sir?")
is(FLAPS, 0)
is(STROBES, 0)
is(LANDING_LIGHT, 0)
is(TAXI_LIGHT, 1)
is(TRANSPONDER, 1)

sim.note("Back on the apron.")
move(AIRSPEED, 0, 1)
sim.set(GROUND_SPEED, 4)
captain("shut down")
hears("We are still rolling, Sir.")
is(MIXTURE, 1)
move(GROUND_SPEED, 0, 1)
fly(1)
captain("shut down")
hears("Mixture, idle cut-off.")
hears("All quiet. Shutdown checklist, Sir?")
is(MAGNETOS, 0, 0)
is(BATTERY, 0, 0)
is(NAV_LIGHTS, 0)
is(PARKING_BRAKE, 1)
captain("yes")
answers("Parking brake?", "set")
answers("Mixture?", "cut off")
answers("Magnetos?", "off")
answers("Master?", "off")
hears("Shutdown checklist complete.")
captain("secure the aircraft")
hears("Chocks in place. Securing checklist, Sir?")
is(FUEL_SELECTOR, 1)
captain("yes")
answers("Control lock?", "installed")
answers("Fuel selector?", "left")
answers("Chocks?", "in place")
answers("Any words for the logbook?", "a fine day and a soft landing")
hears("Securing checklist complete. That was flight 1. Thank you for flying with Nora.")
fly(2)
is(TABLET, 0)

-- She remembers the flight next time.
sim.stop()
local saved = assert(io.open(sim.dir("plugin") .. "systems/_save.txt", "rb")):read("a")
assert(saved:find("CREW.LOGBOOK.FLIGHTS=1.000000\r\n", 1, true), saved)
