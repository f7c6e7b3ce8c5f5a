-- What the first officer shows on the screen: what she said, what she waits for, what can be called; and how
-- the list is unfolded, dragged, hidden, and fitted to a small screen.
local check = require "lib.check"
local overlay = require "lib.overlay"

check.systems {CREW = "sys=CREW\n"
    .. check.device("dev=TALK", {"count", "0,One", "0,Two", "0,Three", "0,Four"})
    .. check.device("devstack=QUESTION", {"ask me", "0,Ready?"}, {"yes|in a minute", "0,And now?", "7,,1"},
                    {"any", "0,Thank you"})
    .. check.device("dev=PROCEDURES", {false, "9,count", "9,ask me"})
    .. check.device("dev=CHECKLISTS", {false, "9,taxi"})}

local function check_picture(expected, what)
    check.equal(overlay.picture(), expected:gsub("|", "\n"), what)
    if expected ~= "" then overlay.check_window() end
end
local function say(phrase)
    check.hear(phrase, 3)
end

sim.start()
check.list(sim.screen_text(), {}, "before the first frame")
sim.run(3.5)

-- ---- What she says and waits for ----

local GROUPS = "CHECKLISTS (1)|PROCEDURES (2)|EXPECTED ANSWERS:|"
check_picture(GROUPS .. "  ...|FENNIC ANNOUNCES:||||(MOVABLE)|", "at rest")
check.list({overlay.place()}, {1920 / 2 - 50, 10}, "in the middle")
say("count")
check_picture(GROUPS .. "  ...|FENNIC ANNOUNCES:|  Four|  Three|  Two|(MOVABLE)|", "the newest on top, three at most")
say("ask me")
check_picture(GROUPS .. "  in a minute|  yes|FENNIC ANNOUNCES:|  Ready?|  Four|  Three|(MOVABLE)|", "answers")
local answers = {heading = overlay.colour("EXPECTED ANSWERS:"), answer = overlay.colour("yes"),
                 spoken = overlay.colour("Ready?"), group = overlay.colour("PROCEDURES (2)")}
check.equal(answers.group, answers.heading, "all headings in one colour")
check.that(answers.heading ~= answers.answer and answers.answer ~= answers.spoken
           and answers.spoken ~= answers.heading, "headings, answers and what she said look different")

-- The highlighted answer pulses, and it alone.
sim.tap("kv/fennic/select")
sim.run(0.6)
local pulse = {}
for i = 1, 150 do
    sim.frames(1)
    check.equal(overlay.colour("in a minute"), answers.answer, "the other answer")
    pulse[i] = {wave = sim.get("sim/graphics/animation/sin_wave_2"), blue = overlay.line("yes").b}
end
table.sort(pulse, function(a, b) return a.wave < b.wave end)
for i = 2, #pulse do check.that(pulse[i].blue >= pulse[i - 1].blue, "the pulse follows the simulator's wave") end
check.that(pulse[#pulse].blue - pulse[1].blue > 0.5, "the pulse can be seen")

say("yes")
check_picture(GROUPS .. "  ... any|FENNIC ANNOUNCES:|  And now?|  Ready?|  Four|(MOVABLE)|", "any answer")
say("whatever")

-- ---- Unfolding ----

local REST = "EXPECTED ANSWERS:|  ...|FENNIC ANNOUNCES:|  Thank you|  And now?|  Ready?|(MOVABLE)|"
overlay.click("PROCEDURES (2)")
check_picture("CHECKLISTS (1)|PROCEDURES (2)|  count|  ask me|" .. REST, "unfolded")
sim.run(9.8)
check.that(overlay.line("count"), "ten seconds are not over")
local plain = overlay.colour("ask me")
overlay.click("count")
check.that(overlay.colour("count") ~= plain and overlay.colour("ask me") == plain, "the called item is highlighted")
local REST_COUNTED = REST:gsub("Thank.*Ready%?", "Four|  Three|  Two")
sim.run(9.8)
check.that(overlay.line("count"), "each click starts the ten seconds again")
sim.run(0.4)
check.that(not overlay.line("count"), "folded by itself")
overlay.click("PROCEDURES (2)")
overlay.click("CHECKLISTS (1)")
check_picture("CHECKLISTS (1)|  taxi|PROCEDURES (2)|" .. REST_COUNTED, "one group at a time")
overlay.click("CHECKLISTS (1)")
check_picture("CHECKLISTS (1)|PROCEDURES (2)|" .. REST_COUNTED, "folded by a second click")
overlay.click("CHECKLISTS (1)")
sim.new_flight()
sim.run(10.1)
check.that(not overlay.line("taxi"), "folded in a new flight")

-- ---- Where a click counts ----

-- From 2 pixels below a line to 17 above; a line is looked for from below.
local title = overlay.line("CHECKLISTS (1)").y
local x = overlay.place()
for dy, counts in pairs {[-3] = false, [-2] = false, [3] = true, [17] = true, [18] = false} do
    sim.click(x, title + dy)
    sim.frames(1)
    check.equal(overlay.line("taxi") ~= nil, counts, dy .. " above the title's base")
    if counts then overlay.click("CHECKLISTS (1)") end
    if overlay.line("count") then overlay.click("PROCEDURES (2)") end
end
for dx, counts in pairs {[-51] = false, [-49] = true, [199] = true, [201] = false} do
    sim.click(x + dx, title + 5)
    sim.frames(1)
    check.equal(overlay.line("taxi") ~= nil, counts, dx .. " from the list's place")
    if counts then overlay.click("CHECKLISTS (1)") end
end

-- ---- Dragging ----

-- The list follows the mouse while the button is held, also when its height changes; beyond an edge it waits
-- for the mouse to come back. It does not come to 0, which outside a drag stands for the middle.
local function drag(from, ...)
    sim.mouse_down(from[1], from[2])
    sim.frames(2)
    local x, y = overlay.place()
    for _, to in ipairs {...} do
        for step = 1, 20 do
            sim.mouse_drag(from[1] + (to[1] - from[1]) * step // 20, from[2] + (to[2] - from[2]) * step // 20)
            sim.frames(1)
        end
        x, y = x + to[1] - from[1], y + to[2] - from[2]
        from = to
        local atX, atY = math.max(35, math.min(x, 1920 - 10)), math.max(10, math.min(y, 1080 - 100))
        check.list({overlay.place()}, {atX, atY}, "dragged to " .. to[1] .. ", " .. to[2])
    end
    sim.mouse_up(from[1], from[2])
    sim.frames(1)
end
drag({900, 15}, {500, 415})
overlay.check_window()
sim.click(x, title + 5)
sim.frames(1)
check.that(not overlay.line("taxi"), "a click where it was")
overlay.click("CHECKLISTS (1)")
check.that(overlay.line("taxi"), "a click where it is")
overlay.click("CHECKLISTS (1)")
drag({500, 415}, {-500, 415}, {3000, -200}, {500, 2000}, {500 - x + 400, 415}, {500, 415})
check.list({overlay.place()}, {x - 400, 410}, "there and back")
drag({500, 415 + 15 * 6}, {520, 600}, {500, 415 + 15 * 6}) -- by a title, which unfolds
drag({500, 415}, {500, 1079})
check.list({overlay.place()}, {x - 400, 1080 - 100}, "the upper edge")
overlay.check_window(2)
drag({500, 1000}, {500 - x + 400, 1000})
check.list({overlay.place()}, {35, 980}, "0 is no place")
drag({60, 1000}, {-100, 1000})
check.list({overlay.place()}, {35, 980}, "the left edge")
overlay.check_window(2)

-- ---- Screens ----

for _, screen in ipairs {{640, 400, 35, 300, 2}, {1, 1, -9, -99, 2}, {1920, 1080, 35, 10, 0}} do
    sim.screen(screen[1], screen[2])
    sim.frames(2)
    check.list({overlay.place()}, {screen[3], screen[4]}, "a screen of " .. screen[1])
    overlay.check_window(screen[5])
end

-- ---- Hidden ----

local function check_hidden(what)
    check_picture("", what)
    check.equal(#sim.windows(), 0, what .. ", no window")
end
local shown = overlay.picture()
sim.tap("kv/fennic/widget")
sim.frames(1)
check_hidden("hidden by the command")
sim.tap("kv/fennic/widget")
sim.frames(1)
check_picture(shown, "shown again")
sim.publish("kv/fennic_kill", "int", 0)
check.restart(4)
check_picture(GROUPS .. "  ...|FENNIC ANNOUNCES:||||(MOVABLE)|", "a new start")
sim.set("kv/fennic_kill", 1)
sim.frames(1)
check_hidden("switched off")
sim.set("kv/fennic_kill", 0)
sim.frames(1)
check_picture(GROUPS .. "  ...|FENNIC ANNOUNCES:||||(MOVABLE)|", "switched on")
