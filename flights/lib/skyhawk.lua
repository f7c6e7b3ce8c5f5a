-- The air around a Cessna 172 and its engine: what the flights in that aircraft share.
local skyhawk = require "lib.crew" -- to which it adds what is the Cessna's

local ref = skyhawk.ref
for name, dataref in pairs {
    rpm = "sim/cockpit2/engine/indicators/engine_speed_rpm",
    oil_pressure = "sim/cockpit2/engine/indicators/oil_pressure_psi",
    mixture = "sim/cockpit2/engine/actuators/mixture_ratio_all",
    magnetos = "sim/cockpit2/engine/actuators/ignition_key",
    fuel_pump = "sim/cockpit2/engine/actuators/fuel_pump_on",
    fuel_selector = "sim/cockpit2/fuel/fuel_tank_selector",
    fuel_kg = "sim/cockpit2/fuel/fuel_quantity",
    alternator = "sim/cockpit2/electrical/generator_on",
    avionics = "sim/cockpit2/switches/avionics_power_on",
    beacon = "sim/cockpit2/switches/beacon_on",
    nav_lights = "sim/cockpit2/switches/navigation_lights_on",
    strobes = "sim/cockpit2/switches/strobe_lights_on",
    taxi_light = "sim/cockpit2/switches/taxi_light_on",
    squawk = "sim/cockpit2/radios/actuators/transponder_code",
    altimeter = "sim/cockpit/misc/barometer_setting",
    sea_level_pressure = "sim/weather/barometer_sealevel_inhg",
    station_pressure = "sim/weather/barometer_current_inhg",
    tablet = "kv/fo/_planshet",
} do ref[name] = dataref end

skyhawk.field_feet = 80 -- elevation of the aerodrome

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

function skyhawk.step_world(now)
    sim.set(ref.height_metres, (sim.get(ref.altitude) - skyhawk.field_feet) * 0.3048)
    runEngine(now)
end

return skyhawk
