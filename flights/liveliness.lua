-- What is alive in her on top of positions: a hand goes where the switch is, a glance to what she names and to
-- the captain, a breath, and a mouth that says the words. The channels know nothing of it.
local check = require "lib.check"

local plugin = sim.dir("plugin")
local ARM, TURN = "l_arm1_x", "head_y" -- what tells where her left hand is, and where she looks

local function in_position(name, axis)
    local channel, letter = axis:match("^(.+)_(.)$")
    for _, group in ipairs {"reach", "look", "work", "rest"} do
        local text = check.read(("%scustom/positions-w/%s/%s.txt"):format(plugin, group, name)) or ""
        for line in text:gmatch("[^\r\n]+") do
            local found, x, y, z = line:match("^%d+,([^,]+),([^,]+),([^,]+),([^,]+)")
            if found == channel then return tonumber(({x = x, y = y, z = z})[letter]) end
        end
    end
    error(name .. " has no " .. axis)
end
local function shown(axis) return sim.get("kv/fo/shown/" .. axis) end
local function on_top(axis) return shown(axis) - sim.get("kv/fo/" .. axis) end

-- The aircraft's own table comes first; what is wrong in it costs a line.
check.write(plugin .. "systems/_places.txt", "\xEF\xBB\xBF# Ours\r\nbeacon = reach_gear\r\nwing lights = none\r\n"
    .. "no position here\r\n = reach_gear\r\nwipers = reach_roof\r\n")
local function script(phrase, ...) return {phrase, ..., "7,,2.5"} end
check.systems {CREW = "sys=CREW\n" .. check.device("dev=SCRIPTS",
    {"lights", "4,sim/lights/landing_lights_on", "7,,2"},
    {"flaps", "1,Flaps one.", "4,sim/flight_controls/flaps_down", "7,,2"},
    {"beacon", "8,sim/cockpit2/switches/beacon_on,1", "7,,2"},
    {"wing", "4,sim/lights/wing_lights_on", "7,,2"},
    {"posed", "2,reach_yoke,1", "4,sim/lights/landing_lights_on", "7,,2"},
    {"captain", "2,tablet_hold,1", "1,Did you set anything?", "7,,2"},
    {"rest", "2,rest_lap,1", "7,,1"},
    {"talk", "1,Aaa; aaaaaa aaaaaa."}, {"still", "7,,8"})}
sim.start()
sim.said()
local log = check.log()
for line, reason in pairs {[4] = "neither a comment nor words = position", [5] = 'no words before "="',
                           [6] = 'there is no position "reach_roof"'} do
    check.equal(check.count(log, ("systems/_places.txt line %d: %s"):format(line, reason)), 1, reason)
end
sim.run(4.9)
for _, axis in ipairs {ARM, TURN, "body_top_x"} do check.equal(on_top(axis), 0, axis .. " in the first 5 s") end

-- ---- Hands ----

-- The arm's angle on the way; the channel stays where it was.
local function arm_goes(phrase, seconds, position)
    sim.hear(phrase)
    sim.run(seconds)
    check.near(sim.get("kv/fo/" .. ARM), 0, 15, phrase .. " leaves the channel at rest")
    if position then
        check.near(shown(ARM), in_position(position, ARM), 8, phrase .. " reaches for " .. position)
    else
        check.near(on_top(ARM), 0, 1, phrase .. " moves no hand")
    end
end
local function hands_back()
    check.wait(5, function() return math.abs(on_top(ARM)) < 1 end, "the hand goes back")
    sim.run(3)
end
arm_goes("lights", 0.85, "reach_overhead")
hands_back()
-- It sets out while she speaks, and is there when the lever moves.
sim.hear("flaps")
check.wait(4, function() return sim.fired("sim/flight_controls/flaps_down").begun == 1 end, "the flaps")
check.near(shown(ARM), in_position("reach_flaps", ARM), 8, "at the lever in time")
hands_back()
arm_goes("beacon", 0.85, "reach_gear")
hands_back()
arm_goes("wing", 0.85, nil)
sim.run(3)

-- ---- Where a script has put them they stay ----

-- She takes a rest position of her own accord when she likes, but no other within three seconds.
local function just_rested()
    local before
    check.wait(60, function()
        before = sim.get("kv/fo/" .. ARM)
        sim.frames(1)
        return math.abs(sim.get("kv/fo/" .. ARM) - before) > 0.1
    end, "a rest position")
end

just_rested()
sim.hear("posed")
for _ = 1, 150 do
    sim.frames(1)
    check.near(on_top(ARM), 0, 1, "hands on the yoke")
end
check.near(shown(ARM), in_position("reach_yoke", ARM), 1, "hands on the yoke")
just_rested()
sim.hear("captain")
sim.run(0.5)
check.near(on_top(TURN), 0, 1e-3, "nothing during the move")
sim.run(1.5)
local look = in_position("look_captain", "body_mid_y") + in_position("look_captain", "body_top_y")
check.near(shown(TURN), in_position("look_captain", TURN) + look, 8, "she looks at the captain whom she asks")
check.near(on_top(ARM), 0, 1, "and keeps the tablet")
check.equal(sim.get("kv/fo/" .. TURN), in_position("tablet_hold", TURN), "the channel does not turn")
sim.run(5)
check.near(on_top(TURN), 0, 0.1, "and back to it")
sim.hear("rest")
sim.run(3)

-- ---- Mouth and breath ----

-- Shut at the comma and at the end; the face goes on as ever.
sim.hear("talk")
local began, shut, said = sim.time(), nil, {}
for _ = 1, 240 do
    sim.frames(1)
    local mouth, now = sim.get("kv/fo/_mouth"), sim.time() - began
    said[mouth] = true
    if mouth == 1 and said[2] and not shut then shut = now end
    if shut and now < shut + 0.2 then check.equal(mouth, 1, "shut at the comma") end
end
check.that(shut and shut > 0.2 and shut < 0.6, "the comma comes after three letters")
check.that(said[2] and not said[4], "an a is open, not round")
check.equal(sim.get("kv/fo/_mouth"), 0, "silent again")

local least, most = 9, -9
sim.hear("still")
for _ = 1, 7 * 60 do
    sim.frames(1)
    local breath = on_top("body_top_x")
    least, most = math.min(least, breath), math.max(most, breath)
end
check.near(least, 0, 0.05, "breathed out")
check.near(most, 1.3, 0.1, "breathed in")
sim.pause(true)
local held = shown("body_top_x")
sim.frames(60)
check.equal(shown("body_top_x"), held, "a pause holds her breath")
sim.pause(false)

-- ---- Without ----

sim.choose("Look/Breathes, glances, reaches")
sim.run(3)
sim.hear("lights")
for _ = 1, 120 do
    sim.frames(1)
    for _, axis in ipairs {ARM, TURN, "body_top_x"} do check.near(on_top(axis), 0, 0.03, axis) end
    check.equal(sim.get("kv/fo/_mouth"), 0, "the lips are the face's")
end
sim.restart()
check.that(check.read(plugin .. "data/settings_mac.txt"):find("lively=0", 1, true), "it is kept")
