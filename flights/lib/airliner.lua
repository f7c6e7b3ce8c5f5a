-- An airliner's engines, auxiliary power, gear and spoilers, and a captain who answers what the first officer
-- waits for: what the flights in airliners share.
local check = require "lib.check"
local overlay = require "lib.overlay"

local airliner = require "lib.crew" -- to which it adds what is the airliner's

local ref = airliner.ref
for name, dataref in pairs {
    airspeed = "sim/cockpit2/gauges/indicators/airspeed_kts_copilot",
    altitude = "sim/cockpit2/gauges/indicators/altitude_ft_copilot",
    vertical_speed = "sim/cockpit2/gauges/indicators/vvi_fpm_copilot",
    height = "sim/cockpit2/gauges/indicators/radio_altimeter_height_ft_copilot",
    n1 = "sim/cockpit2/engine/indicators/N1_percent",
    n2 = "sim/cockpit2/engine/indicators/N2_percent",
    fuel_levers = "sim/cockpit2/engine/actuators/mixture_ratio",
    reverser = "sim/flightmodel2/engines/thrust_reverser_deploy_ratio[0]",
    apu_switch = "sim/cockpit2/electrical/APU_starter_switch",
    apu = "sim/cockpit2/electrical/APU_running",
    apu_bleed = "sim/cockpit2/bleedair/actuators/apu_bleed",
    ground_bleed = "sim/cockpit2/bleedair/actuators/gpu_bleed",
    door = "sim/cockpit2/switches/door_open_ratio",
} do ref[name] = dataref end

local LOADED = {TL319 = 60000, TL321 = 78000, O737X = 65000, ["737_Level_Up"] = 65000, FF767 = 140000,
                ["KV340-500"] = 280000} -- kg

airliner.name = sim.dir("aircraft"):match("([^/]+)/$")
airliner.engines = airliner.name == "KV340-500" and 4 or 2
airliner.has_apu, airliner.has_light = true, true -- the auxiliary power unit starts; engines light up
airliner.field_feet = 400

-- The figure set up, where the plug-in asks for that.
local function setUp()
    check.settings {installation = "2"}
    local figure = check.read(sim.dir("plugin") .. "data/obj/kvfennic.obj")
    if figure then check.write(sim.dir("aircraft") .. "objects/kvfennic.obj", figure) end
    local file = sim.dir("aircraft") .. "767-300ER_xp11.acf"
    local text = check.read(file)
    if text then check.write(file, text .. "P _obja/1/_v10_att_file_stl kvfennic.obj\n") end
end

-- Cold and dark at the gate, and she is aboard.
function airliner.park()
    setUp()
    sim.set(ref.weight, LOADED[airliner.name])
    sim.set(ref.fuel, LOADED[airliner.name] / 5)
    sim.set(ref.altitude, airliner.field_feet)
    sim.set(ref.parking_brake, 1)
    sim.start()
    airliner.fly(4)
end

-- ---- The machinery, a frame at a time ----

local function toward(dataref, wanted, rate, seconds, index)
    local value = sim.get(dataref, index)
    local step = rate * seconds
    sim.set(dataref, value + math.max(-step, math.min(step, wanted - value)), index)
end

local lastTime, apuSince = 0, nil

local function runEngine(i, seconds)
    local starter = sim.fired("sim/starters/engage_starter_" .. i + 1)
    local isCranked = starter.begun > starter.ended and sim.get(ref.apu_bleed) + sim.get(ref.ground_bleed) > 0
    local isFuelled = sim.get(ref.fuel_levers, i) > 0.5
    if isCranked and isFuelled and sim.get(ref.n2, i) > 18 and airliner.has_light then sim.set(ref.running, 1, i) end
    if not isFuelled then sim.set(ref.running, 0, i) end
    local runs = sim.get(ref.running, i) == 1
    toward(ref.n2, runs and 60 or isCranked and 25 or 0, 6, seconds, i)
    toward(ref.n1, runs and 22 + 70 * sim.get(ref.throttle) or 0, 20, seconds, i)
end

function airliner.step_world(now)
    local seconds = now - lastTime
    lastTime = now
    if sim.get(ref.apu_switch) == 2 and airliner.has_apu then
        apuSince = apuSince or now
        if now - apuSince > 5 then sim.set(ref.apu, 1) end
    else
        apuSince = nil
    end
    if sim.get(ref.apu_switch) == 0 then sim.set(ref.apu, 0) end
    for i = 0, airliner.engines - 1 do runEngine(i, seconds) end
    for i = 0, 2 do toward(ref.gear, sim.get(ref.gear_lever), 0.3, seconds, i) end
    local onGround = sim.get(ref.on_ground) == 1
    if onGround and sim.get(ref.speed_brakes) < -0.4 and sim.get(ref.airspeed) > 60
        and sim.get(ref.throttle) < 0.1 and airliner.has_flown then sim.set(ref.speed_brakes, 1) end
    if not onGround then airliner.has_flown = true end
    local height = sim.get(ref.altitude) - airliner.field_feet
    sim.set(ref.height, height)
    sim.set(ref.height_pilot, height)
    sim.set(ref.ground_speed, sim.get(ref.airspeed))
end

-- ---- The captain ----

-- The uppermost answer on the screen, which a step of a checklist waits for when one does: what she merely
-- proposes to call next stands below. Not "continue", which overrules her. nil when there is none.
local function expected()
    local answer = overlay.picture():gsub("  continue\n", ""):match("EXPECTED ANSWERS:\n  ([^\n]+)\n")
    return answer ~= "..." and answer or nil
end

-- Calls for something and answers each of her questions with what she expects, until she has said the last
-- text.
function airliner.converse(call, last)
    local answered = #airliner.said()
    airliner.captain(call)
    local latest, heard = sim.time() + 240, answered
    while true do
        for i = heard + 1, #airliner.said() do
            if airliner.said()[i]:find(last, 1, true) then return airliner.hears(last) end
        end
        heard = #airliner.said()
        check.that(sim.time() < latest, ('"%s" never came to "%s"; she last said "%s"'):format(call, last,
                                        tostring(airliner.said()[heard])))
        airliner.fly(0.5)
        local question = airliner.said()[heard]
        if heard > answered and heard == #airliner.said() and question:find("?$") then
            local answer = question:find("briefing") and "that was all" or expected()
            if answer then
                answered = heard
                airliner.captain(answer)
            end
        end
    end
end

return airliner
