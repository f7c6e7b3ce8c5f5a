-- The figure in the right-hand seat: poses, idle motion, eyes, blinking, lips.
local check = require "lib.check"

local FRAME = 1 / 60 + 1e-3 -- and what single precision loses
local plugin = sim.dir("plugin")
local poses = plugin .. "custom/positions-m/"

-- The channels, in the order of the definition file.
local channels = {}
for line in check.read(plugin .. "data/obj/fennic.txt"):gmatch("[^\r\n]+") do
    channels[#channels + 1] = line:match("^%d+,([^,]+)")
end
check.equal(#channels, 47, "channels")
check.equal(channels[47], "xyz", "the figure's offset comes last")

local function axes(channel)
    local name = "kv/fo/" .. channel
    return sim.get(name .. "_x"), sim.get(name .. "_y"), sim.get(name .. "_z")
end

-- Poses of our own, with and without the offset, two of them to rest in, one full of mistakes.
assert(os.rename(poses, plugin .. "custom/shipped"))
check.folder(poses .. "resting")
check.folder(poses .. "other")
local function pose(file, value, count)
    local lines = {}
    for i = 1, count do lines[i] = ("%d,%s,%s,\r\n"):format(i - 1, channels[i], value(i)) end
    check.write(poses .. file .. ".txt", table.concat(lines))
end
pose("full", function(i) return ("%g,%g,%g"):format(i, -i / 4, 100 - i) end, 47)
pose("other/legs", function(i) return i > 40 and "7,8,9" or "1,1,1" end, 45)
pose("resting/rest_high", function() return "2,2,2" end, 46)
pose("resting/rest_low", function() return "-3,-3,-3" end, 46)
check.write(poses .. "mistakes.txt", "47,none,1,1,1,\n-1,none,1,1,1,\nx,none,1,1,1,\n0,body_mid,1,1\n"
    .. "1,body_top,1,one,1,\n99999999999,none,1,1,1,\n46,xyz,,,\n2,neck,5,6,7")

local function strikes(phrase, action)
    return {phrase, action, "7,,1", "0,Done"} -- she keeps still while something is left to do
end
check.systems {CREW = "sys=CREW\n"
    .. check.device("dev=SCRIPTS", strikes("pose smooth", "2,full,1"), strikes("pose legs", "2,legs,1"),
                    strikes("pose at once", "2,full,0"), strikes("pose mistakes", "2,mistakes,1"),
                    {"talk", "1," .. ("a"):rep(100)})
    .. check.device("devstack=WAITING", {"wait", "0,Waiting"}, {"go", "0,Going"})}
check.settings {gender = "m"}

sim.start()
check.list({axes("head")}, {0, 0, 0}, "made upright")

-- Runs a script up to the moment when its pose must be reached.
local function strike(phrase, seconds)
    check.forget()
    check.hear(phrase, seconds)
    check.list(sim.said(), {}, "the pose lasts")
end
local function let_go()
    check.wait(2, function() return #sim.said() > 0 end, "the script's end")
    sim.run(0.6) -- for which she speaks
end

-- ---- Poses ----

-- A smooth move: on its way after half the time, there after 0.8 s, to the digit.
strike("pose smooth", 0.4)
local x = sim.get("kv/fo/l_leg1_x")
check.that(x > 10 and x < 31, "half way, at " .. x)
sim.run(0.5)
for i, name in ipairs(channels) do check.list({axes(name)}, {i, -i / 4, 100 - i}, name) end
let_go()

-- A pose without the offset brings it home, and leaves the channels that it does not name.
strike("pose legs", 0.95)
check.list({axes("xyz")}, {0, 0, 0}, "offset")
check.list({axes(channels[46])}, {46, -11.5, 54}, "a channel that is not named")
check.list({axes(channels[45])}, {7, 8, 9}, "a leg")
check.list({axes("head")}, {1, 1, 1}, "the head")
let_go()

-- At once: the frame after the action.
strike("pose at once", 0)
sim.frames(1)
for i, name in ipairs(channels) do check.list({axes(name)}, {i, -i / 4, 100 - i}, name) end
let_go()

-- Mistakes in a file cost their lines only.
strike("pose mistakes", 0.95)
check.list({axes("neck")}, {5, 6, 7}, "the good line")
local log = check.log()
for _, fault in ipairs {"line 1: no channel 47", "line 2: no channel -1", 'line 3: channel index "x" is no number',
                        "line 4: fewer than 5 fields", 'line 5: y "one" is no number', "line 6: ", "line 7: "} do
    check.equal(check.count(log, "mistakes.txt " .. fault), 1, fault)
end
let_go()

-- ---- Idle motion ----

sim.new_flight()
sim.frames(2)
local before = {}
for i, name in ipairs(channels) do before[i] = {axes(name)} end
local eyes = sim.get("kv/fo/_eyes_x")
sim.run(4.9)
for i, name in ipairs(channels) do check.list({axes(name)}, before[i], name .. " in the first 5 s") end
check.equal(sim.get("kv/fo/_eyes_x"), eyes, "eyes in the first 5 s")

-- Then a rest pose every 3 to 12 s; in between a little life, the more so in the head. The eyes make good
-- for the head's turning, and wander.
local leg = "kv/fo/" .. channels[41] .. "_x"
local high, low, arrived, changed, arrivals = 0, 0, nil, nil, 0
local function rest_arrives()
    local value = sim.get(leg)
    return (value == 2 or value == -3) and value
end
sim.run(2)
local lookX, lookY
local furthest = {0, 0, 0} -- the head
for frame = 1, 180 * 60 do
    local was = rest_arrives()
    sim.frames(1)
    local now = rest_arrives()
    if now and not was then
        arrivals = arrivals + 1
        if now == 2 then high = high + 1 else low = low + 1 end
        if arrived then
            local interval = sim.time() - arrived
            check.that(interval > 3 - FRAME and interval < 12 + 3 * FRAME, "a rest pose after " .. interval .. " s")
        end
        arrived = sim.time()
    end
    for i = 1, frame % 10 == 0 and 46 or 0 do
        if i ~= 4 then
            for _, value in ipairs {axes(channels[i])} do
                check.that(value > -3.7 and value < 2.7, channels[i] .. " at " .. value)
            end
        end
    end
    local headX, headY, headZ = axes("head")
    for axis, value in ipairs {headX, headY, headZ} do furthest[axis] = math.max(furthest[axis], math.abs(value)) end
    check.list({axes("xyz")}, {0, 0, 0}, "the offset stays")
    local eyesX, eyesY = sim.get("kv/fo/_eyes_x") + headX / 3, sim.get("kv/fo/_eyes_y") + headY / 4
    check.near(eyesX, 2.45, 2.4501, "eyes x")
    check.near(eyesY, 2.45, 2.4501, "eyes y")
    if lookX and math.abs(eyesX - lookX) + math.abs(eyesY - lookY) > 0.01 then
        if changed then
            check.that(sim.time() - changed > 0.2 - FRAME, "the eyes wander too fast")
        end
        changed = sim.time()
    end
    check.that(sim.time() - (changed or sim.time()) < 6, "the eyes wander too seldom")
    lookX, lookY = eyesX, eyesY
end
check.that(high > 3 and low > 3, "both rest poses come up: " .. high .. " and " .. low)
check.equal(high + low, arrivals, "arrivals")
for axis, limit in ipairs {12, 25, 5} do
    check.near(furthest[axis], 0.85 * limit, 0.15 * limit + 0.2, "how far she turns the head, axis " .. axis)
end

-- While a sequence waits she takes no other pose: what was rising keeps rising.
check.hear("wait", 1)
local last = math.abs(sim.get(leg))
for _ = 1, 60 * 60 do
    sim.frames(1)
    local now = math.abs(sim.get(leg))
    check.that(now >= last, "no rest while a sequence runs")
    last = now
end
check.hear("go", 13)
check.that(math.abs(sim.get(leg)) <= 3.6, "rest again")

-- ---- Face ----

-- Eyes open (0) for 1 to 5 s, closed (3) for 0.1 s, and no word.
local face, since, blinks = sim.get("kv/fo/_face"), nil, 0
for _ = 1, 120 * 60 do
    sim.frames(1)
    local now = sim.get("kv/fo/_face")
    check.that(now == 0 or now == 3, "a closed mouth")
    if now ~= face then
        local lasted = since and sim.time() - since
        if lasted and face == 3 then check.near(lasted, 0.1, 2 * FRAME, "a blink") end
        if lasted and face == 0 then check.near(lasted, 3, 2 + 2 * FRAME, "between two blinks") end
        if face == 3 then blinks = blinks + 1 end
        face, since = now, sim.time()
    end
end
check.that(blinks >= 24 and blinks <= 110, "blinks: " .. blinks)

-- Speaking: the mouth opens and closes every 0.05 to 0.5 s for 0.1 s a letter and one second, 11 s here.
local function lips()
    local now = sim.get("kv/fo/_face")
    check.that(now >= 0 and now <= 3, "face " .. now)
    return now == 1 or now == 2
end
sim.hear("talk")
local began = sim.time()
local open, moved, phases, closedAt = lips(), nil, 0, nil
for _ = 1, 13 * 60 do
    sim.frames(1)
    local now = lips()
    if now ~= open then
        local lasted = moved and sim.time() - moved
        if lasted and lasted < 11 then
            local isCut = sim.time() - began > 11 - 2 * FRAME -- by the end of the sentence
            check.that((isCut or lasted > 0.05 - FRAME) and lasted < 0.5 + 2 * FRAME, "lips for " .. lasted .. " s")
        end
        moved, open, phases = sim.time(), now, phases + 1
        if not now then closedAt = sim.time() end
    end
end
check.that(phases > 11 / 0.55 and phases < 11 / 0.05, "phases of the lips: " .. phases)
check.that(not open and closedAt - began < 11 + FRAME, "silent after the last word")
check.that(closedAt - began > 10, "speaking to the last word")

-- The server says when it has finished earlier; that is no recognition.
sim.hear("talk")
sim.log()
for _ = 1, 3 do
    check.wait(1, lips, "lips open")
    check.wait(1, function() return not lips() end, "lips close")
end
check.wait(1, lips, "lips open")
sim.reply("stop>")
sim.frames(2)
for _ = 1, 5 * 60 do
    check.that(not lips(), "the mouth stays closed")
    sim.frames(1)
end
check.equal(check.count(check.log(), "Just Get Recognition"), 0, "no recognition")
check.list({lips(), sim.get("kv/fr_speech")}, {false, ""}, "read and emptied")
sim.run(8)

-- A pause freezes her, in the middle of a word.
sim.hear("talk")
check.wait(2, lips, "lips open")
sim.pause(true)
sim.frames(1)
before = {}
for i, name in ipairs(channels) do before[i] = {axes(name)} end
local still = {sim.get("kv/fo/_face"), sim.get("kv/fo/_eyes_x"), sim.get("kv/fo/_eyes_y")}
for _ = 1, 5 * 60 do
    sim.frames(1)
    check.list({sim.get("kv/fo/_face"), sim.get("kv/fo/_eyes_x"), sim.get("kv/fo/_eyes_y")}, still, "frozen")
end
for i, name in ipairs(channels) do check.list({axes(name)}, before[i], name .. " frozen") end
sim.pause(false)

-- Hidden by the aircraft, she has no face.
sim.set("kv/fo/_show", 0)
sim.frames(1)
check.equal(sim.get("kv/fo/_face"), -1, "hidden")
sim.run(3)
check.equal(sim.get("kv/fo/_face"), -1, "hidden")
sim.set("kv/fo/_show", 1)
sim.frames(1)
check.that(sim.get("kv/fo/_face") >= 0, "shown again")
