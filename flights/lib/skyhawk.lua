-- The air around a Cessna 172, its engine, and a captain who talks to the first officer: what the flights
-- in that aircraft share. They step the simulator through this module only, so that it hears all she says.
local check = require "lib.check"

local skyhawk = {}

skyhawk.ref = {
    airspeed = "sim/cockpit2/gauges/indicators/airspeed_kts_pilot",
    altitude = "sim/cockpit2/gauges/indicators/altitude_ft_pilot",
    vertical_speed = "sim/cockpit2/gauges/indicators/vvi_fpm_pilot",
    ground_speed = "sim/cockpit2/gauges/indicators/ground_speed_kt",
    height_metres = "sim/flightmodel/position/y_agl",
    on_ground = "sim/flightmodel/failures/onground_any",
    running = "sim/flightmodel/engine/ENGN_running",
    rpm = "sim/cockpit2/engine/indicators/engine_speed_rpm",
    oil_pressure = "sim/cockpit2/engine/indicators/oil_pressure_psi",
    throttle = "sim/cockpit2/engine/actuators/throttle_ratio_all",
    mixture = "sim/cockpit2/engine/actuators/mixture_ratio_all",
    magnetos = "sim/cockpit2/engine/actuators/ignition_key",
    fuel_pump = "sim/cockpit2/engine/actuators/fuel_pump_on",
    fuel_selector = "sim/cockpit2/fuel/fuel_tank_selector",
    fuel_kg = "sim/cockpit2/fuel/fuel_quantity",
    battery = "sim/cockpit2/electrical/battery_on",
    alternator = "sim/cockpit2/electrical/generator_on",
    avionics = "sim/cockpit2/switches/avionics_power_on",
    beacon = "sim/cockpit2/switches/beacon_on",
    nav_lights = "sim/cockpit2/switches/navigation_lights_on",
    strobes = "sim/cockpit2/switches/strobe_lights_on",
    landing_light = "sim/cockpit2/switches/landing_lights_on",
    taxi_light = "sim/cockpit2/switches/taxi_light_on",
    parking_brake = "sim/cockpit2/controls/parking_brake_ratio",
    flaps = "sim/cockpit2/controls/flap_handle_request_ratio",
    squawk = "sim/cockpit2/radios/actuators/transponder_code",
    transponder = "sim/cockpit2/radios/actuators/transponder_mode",
    selected_altitude = "sim/cockpit2/autopilot/altitude_dial_ft",
    altimeter = "sim/cockpit/misc/barometer_setting",
    sea_level_pressure = "sim/weather/barometer_sealevel_inhg",
    station_pressure = "sim/weather/barometer_current_inhg",
    tablet = "kv/fo/_planshet",
}
local ref = skyhawk.ref

skyhawk.field_feet = 80 -- elevation of the aerodrome

local ramps = {}  -- dataref -> {from, to, begin, finish}: values on their way
local said = {}   -- all she has said, in order
local cursor = 0  -- how far the flight has followed it
local quietAt = 0 -- when she will have finished speaking
local crankedSince
local lastTime = 0

-- ---- The air and the engine, a frame at a time ----

-- Cold and dark, with 49 gallons, on a day with an altimeter setting of 30.02.
function skyhawk.park()
    sim.set(ref.on_ground, 1)
    sim.set(ref.altitude, skyhawk.field_feet)
    sim.set(ref.fuel_kg, 69, 0)
    sim.set(ref.fuel_kg, 66, 1)
    sim.set(ref.squawk, 4521)
    sim.set(ref.transponder, 1)
    sim.set(ref.sea_level_pressure, 30.02)
    sim.set(ref.station_pressure, 30.02)
end

-- Takes a dataref to a value, evenly, while time passes.
function skyhawk.move(dataref, to, seconds)
    ramps[dataref] = {from = sim.get(dataref), to = to, begin = sim.time(), finish = sim.time() + seconds}
end

local function moveValues(now)
    for dataref, ramp in pairs(ramps) do
        local part = (now - ramp.begin) / (ramp.finish - ramp.begin)
        sim.set(dataref, part < 1 and ramp.from + (ramp.to - ramp.from) * part or ramp.to)
        if part >= 1 then ramps[dataref] = nil end
    end
    sim.set(ref.height_metres, (sim.get(ref.altitude) - skyhawk.field_feet) * 0.3048)
end

-- Fires after two seconds on the starter, and stops without fuel.
local function runEngine(now)
    local seconds = now - lastTime
    lastTime = now
    local starter = sim.fired(skyhawk.starter)
    if starter.begun == starter.ended then crankedSince = nil
    else crankedSince = crankedSince or now end
    local running = sim.get(ref.running, 0) == 1
    local fired = sim.get(ref.rpm, 0) > 600 -- until then it lives on what was primed
    if running and fired and not crankedSince and sim.get(ref.mixture) < 0.05 then running = false end
    if crankedSince and now - crankedSince > 2 and skyhawk.has_spark then running = true end
    sim.set(ref.running, running and 1 or 0, 0)
    local rpm = running and 780 + 1600 * sim.get(ref.throttle) or crankedSince and 120 or 0
    sim.set(ref.rpm, sim.get(ref.rpm, 0) + (rpm - sim.get(ref.rpm, 0)) * math.min(seconds * 1.8, 1), 0)
    local oil = running and skyhawk.has_oil and 62 or 0
    local pressure = sim.get(ref.oil_pressure, 0)
    sim.set(ref.oil_pressure, pressure + (oil - pressure) * math.min(seconds * 0.6, 1), 0)
end

skyhawk.starter = "sim/starters/engage_starter_1"
skyhawk.has_spark = true
skyhawk.has_oil = true

skyhawk.watch = nil -- a function that is called after each frame

function skyhawk.step()
    moveValues(sim.time())
    runEngine(sim.time())
    sim.frames(1)
    if skyhawk.watch then skyhawk.watch() end
    for _, text in ipairs(sim.said()) do
        said[#said + 1] = text
        quietAt = math.max(quietAt, sim.time()) + 1 + #text / 10
    end
end

function skyhawk.fly(seconds)
    local finish = sim.time() + seconds
    while sim.time() < finish do skyhawk.step() end
end

-- ---- The conversation ----

-- Waits until she says something that contains the text, at most 40 s. Gives all she said there.
function skyhawk.hears(text)
    local latest = sim.time() + 40
    while true do
        while cursor < #said do
            cursor = cursor + 1
            if said[cursor]:find(text, 1, true) then return said[cursor] end
        end
        check.that(sim.time() < latest, 'she never said "' .. text .. '", but last: ' .. tostring(said[#said]))
        skyhawk.step()
    end
end

-- The captain lets her finish, thinks, and speaks.
function skyhawk.captain(text)
    while sim.time() < quietAt do skyhawk.step() end
    skyhawk.fly(0.3)
    sim.hear(text)
end

function skyhawk.answers(challenge, answer)
    skyhawk.hears(challenge)
    skyhawk.captain(answer)
end

-- She finishes, and says nothing more for so long.
function skyhawk.silence(seconds)
    while sim.time() < quietAt do skyhawk.step() end
    local before = #said
    skyhawk.fly(seconds)
    check.that(#said == before, "she said: " .. tostring(said[#said]))
end

-- ---- Checks ----

function skyhawk.is(dataref, wanted, index)
    check.near(sim.get(dataref, index), wanted, 0.01, dataref)
end

-- A command was begun so many times, and ended as often unless said otherwise.
function skyhawk.fired(command, begun, ended)
    check.equal(sim.fired(command).begun, begun, command .. " begun")
    check.equal(sim.fired(command).ended, ended or begun, command .. " ended")
end

function skyhawk.said()
    return said
end

return skyhawk
