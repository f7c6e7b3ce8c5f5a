-- Posing the figure by hand: the panel of the position creator, what is saved from it, and what is loaded again.
local check = require "lib.check"
local creator = require "lib.position_creator"
local window, axes, at, click, press_button = creator.window, creator.axes, creator.at, creator.click, creator.press
local SIDE, PAD_X, PAD_Y = creator.side, creator.pad_x, creator.pad_y

local plugin = sim.dir("plugin")
local channels = {}
for line in check.read(plugin .. "data/obj/fennic.txt"):gmatch("[^\r\n]+") do
    channels[#channels + 1] = line:match("^%d+,([^,]+)")
end
local function pose()
    local values = {}
    for _, channel in ipairs(channels) do
        for _, value in ipairs {axes(channel)} do values[#values + 1] = value end
    end
    return values
end
local function check_pose(expected, what)
    for i, value in ipairs(pose()) do
        check.near(value, expected[i], math.abs(expected[i]) * 1e-5, what .. ", value " .. i)
    end
end
local function place()
    local w = window()
    return {w.left, w.bottom, w.right, w.top}
end

-- Chooses a channel, drags it by so many boxels to the right and up, turns the wheel, and lets it go.
local function drag(button, right, up, clicks)
    press_button(button)
    click(PAD_X, PAD_Y)
    local x, y = at(PAD_X, PAD_Y)
    sim.mouse(x + right, y + up)
    sim.frames(1)
    if clicks ~= 0 then sim.wheel(x + right, y + up, clicks) end
    sim.frames(1)
    click(PAD_X + 100, PAD_Y - 100)
end

-- ---- Opening ----

sim.screen(1920, 1700)
sim.start()
sim.run(6)
local before = pose()
sim.run(5)
local after = pose()
local moved = 0
for i = 1, #before do moved = moved + (before[i] ~= after[i] and 1 or 0) end
check.that(moved > 0, "she moves by herself")
sim.choose("Editor")
check.list(place(), {50, 50, 50 + SIDE, 50 + SIDE}, "where it opens")
sim.run(1) -- for a move that is under way
before = pose()
sim.run(15)
check.list(pose(), before, "she holds still for who poses her")
local windows = #sim.windows()
sim.choose("Editor")
check.equal(#sim.windows(), windows, "opened once")

-- ---- Dragging ----

click(PAD_X, PAD_Y)
sim.mouse(at(PAD_X - 50, PAD_Y))
sim.frames(2)
check.list(pose(), before, "nothing is chosen")
local shown = {}
for _, text in ipairs(sim.screen_text()) do shown[text.text] = text end
check.list({shown["206"].x, shown["206"].y}, {50 + 206 + 5, 50 + SIDE - PAD_Y + 5}, "the cursor's place in the panel")

-- Left raises z, down raises x, the wheel y; by one, or by a hundredth for the whole figure.
local BUTTONS = {
    {"head", 187, 20}, {"body_mid", 187, 80}, {"l_f11", 91, 174}, {"l_f21", 79, 106}, {"l_f33", 57, 54},
    {"l_f53", 10, 89}, {"r_f53", 366, 89}, {"r_f12", 272, 145}, {"l_arm1", 216, 83}, {"r_arm3", 155, 140},
    {"l_leg2", 204, 207}, {"r_leg3", 170, 245}, {"xyz", 187, 130},
}
for i, button in ipairs(BUTTONS) do
    local name, k = button[1], button[1] == "xyz" and 0.01 or 1
    local x, y, z = axes(name)
    local right, up, clicks = -10 - i, 5 * i - 20, i - 6
    drag({button[2], button[3]}, right, up, clicks)
    local newX, newY, newZ = axes(name)
    check.near(newX, x - up * k, 1e-4, name .. " x")
    check.near(newY, y + clicks * k, 1e-4, name .. " y")
    check.near(newZ, z - right * k, 1e-4, name .. " z")
end
check.list(place(), {50, 50, 50 + SIDE, 50 + SIDE}, "the wheel turned for the channels only")
local posed = pose()
sim.mouse(at(10, 500))
sim.frames(2)
check.list(pose(), posed, "let go")

-- A second channel can be chosen during a drag without changing what is dragged; a click beside the pad ends it.
press_button {187, 35}
click(PAD_X, PAD_Y)
press_button {187, 20}
local neckX = axes("neck")
click(500, 20)
sim.mouse(at(PAD_X, PAD_Y))
sim.frames(1)
check.equal(axes("neck"), neckX, "no drag")
check.near(neckX, posed[7] - (PAD_Y - 16), 1e-4, "the neck followed the mouse to the head's button")
posed = pose()

-- ---- The name ----

local function keys(key, count)
    for _ = 1, count do sim.key(key) end
end
local function save(name)
    os.remove(plugin .. "custom/positions-w/" .. name .. ".txt")
    sim.choose("Save Position")
    local saved = check.read(plugin .. "custom/positions-w/" .. name .. ".txt")
    check.that(saved, "saved as " .. name)
    check.equal(select(2, saved:gsub("\r\n", "")), 47, name)
end
sim.type("unheard")
save("new")
click(60, 290)
check.that(window().focus, "the box has the keyboard")
keys("backspace", 4)
sim.type("My Hand") -- capitals take shift, which a box does not hear
keys("left", 9)
sim.type("a")
keys("right", 20)
sim.type("2")
save("ay_and2")
sim.type(("0123456789"):rep(4)) -- it takes 32
save("ay_and2" .. ("0123456789"):rep(4):sub(1, 25))
keys("backspace", 40)
sim.log()
sim.choose("Save Position")
sim.type("../x")
sim.choose("Save Position")
check.equal(check.count(check.log(), "Position not saved, this is no file name: "), 2, "no name, no file's name")
check.that(not check.read(plugin .. "custom/x.txt"), "outside")
keys("backspace", 4)
sim.type("my fist")
sim.key("return")
check.that(not window().focus, "return gives the keyboard back")
sim.type("unheard")
save("my_fist")
click(60, 290)
click(PAD_X, 500)
sim.frames(1)
check.that(not window().focus, "so does a click elsewhere")
click(PAD_X, 500)

-- ---- Numbers, mirror, presets, hands, and undo ----

local UNDO, REDO, SAVE = {31, 361}, {91, 361}, {98, 269}
local JOINT, LIMB, ALL = {21, 385}, {61, 385}, {101, 385}
local RESET, MIRROR, COPY = {21, 406}, {61, 406}, {101, 406}
local X, Y, PLUS_X = {430, 30}, {430, 64}, {497, 30}
local LEFT_FOREARM, EMPTY, LEFT_HAND = {221, 112}, {450, 160}, {455, 222}

local poses = {} -- before each change
local function push(place) click(place[1], place[2]) end
local function change(what, action, ...)
    poses[#poses + 1] = pose()
    action(...)
    sim.frames(1)
    local shown, last = pose(), poses[#poses]
    for i, value in ipairs(shown) do
        if value ~= last[i] then return end
    end
    check.that(false, what .. " changed nothing")
end
local function type_into(box, text, key)
    push(box)
    sim.type(text)
    sim.key(key)
    sim.frames(1)
end

press_button(LEFT_FOREARM)
change("a number", type_into, X, "-12.5", "return")
check.that(not window().focus, "taken, and the keyboard given back")
change("two numbers", function() type_into(X, "20", "tab") end)
change("the next number", function() sim.type("1,5\n") end)
check.equal(axes("l_arm2"), 20, "x")
check.equal(select(2, axes("l_arm2")), 1.5, "y, with a comma")
for _, refused in ipairs {"4x", "56", "-81", "--1", "-"} do
    type_into(X, refused, "return")
    check.that(window().focus, refused .. " is still there to be mended")
    sim.key("escape")
    check.that(not window().focus, "escape")
    type_into(X, refused, "backspace")
    push(EMPTY)
    check.equal(axes("l_arm2"), ({["4x"] = 4, ["56"] = 5, ["-81"] = -8})[refused] or 20, refused)
    if axes("l_arm2") ~= 20 then push(UNDO) end
    check.equal(axes("l_arm2"), 20, refused .. " undone")
end
change("a step", push, PLUS_X)
change("the highest", type_into, X, "55", "return")
push(PLUS_X)
check.equal(axes("l_arm2"), 55, "the joint's limit")

push(ALL)
local asymmetric = pose()
change("mirror", push, MIRROR)
check.list({axes("r_arm2")}, {55, -1.5, -asymmetric[3 * 6]}, "what was left")
change("mirror", push, MIRROR)
check.list(pose(), asymmetric, "twice is as before")
push(JOINT)
change("copy", push, COPY)
check.list({axes("r_arm2")}, {55, -1.5, -asymmetric[3 * 6]}, "the other side")
check.equal(axes("l_arm2"), 55, "this side stays")
push(LIMB)
change("reset", push, RESET)
check.list({axes("l_arm1")}, {0, 0, 0}, "of the same limb")
check.equal(axes("r_arm2"), 55, "not the other limb")
change("a preset", function()
    push {417, 376} -- the fist, of the left hand: the chosen joint is of that side
    sim.run(1)
end)
check.equal(axes("l_f31"), 70, "a finger")
check.that(axes("r_f31") ~= 70, "of one hand")
push(ALL)
change("reset", push, RESET)
check.equal(axes("head"), 0, "all")
change("a hand", function()
    local x, y = at(LEFT_HAND[1], LEFT_HAND[2])
    sim.mouse_down(x, y)
    sim.frames(3)
    check.equal(axes("l_arm1"), 0, "taken, not drawn yet")
    x, y = at(LEFT_HAND[1] + 8, LEFT_HAND[2] - 25)
    sim.mouse_drag(x, y)
    sim.wheel(x, y, -10) -- nearer to who looks at her, which is ahead
    sim.frames(30)
    sim.mouse_up(x, y)
end)
check.that(axes("l_arm1") > 10, "the arm is raised")
check.list({axes("r_arm1")}, {0, 0, 0}, "the other one lies")
local raised = pose()
sim.mouse(at(300, 300))
sim.frames(3)
check.list(pose(), raised, "let go")

push(SAVE)
check.equal(select(2, check.read(plugin .. "custom/positions-w/my_fist.txt"):gsub("\r\n", "")), 47, "saved here, too")
for i = #poses, 1, -1 do
    push(UNDO)
    check.list(pose(), poses[i], "undone, change " .. i)
end
for i = 2, #poses do
    push(REDO)
    check.list(pose(), poses[i], "again, change " .. i - 1)
end
push(REDO)
check.list(pose(), raised, "all again")
push(REDO)
check.list(pose(), raised, "no more")

-- The whole figure has no limits, but what no position can hold is refused.
press_button {187, 130}
change("an offset", type_into, X, "0.25", "return")
type_into(X, "1e39", "return")
sim.key("escape")
check.near(axes("xyz"), 0.25, 1e-6, "metres")
push(UNDO)

-- On a button of the tools, a click ends a drag and does nothing else.
press_button {187, 35}
click(PAD_X, PAD_Y)
push(RESET)
sim.mouse(at(PAD_X, PAD_Y - 60))
sim.frames(1)
check.list(pose(), raised, "neither dragged nor reset")

-- ---- Size ----

posed = pose() -- the pad had a channel
save("my_fist")
press_button {187, 20} -- no drag runs
sim.wheel(300, 300, 1)
check.list(place(), {24, 24, 587, 587}, "a tenth larger about the middle, cut to whole boxels")
for _ = 1, 20 do sim.wheel(300, 300, 1) end
local w = window()
check.list({w.right - w.left, w.top - w.bottom}, {3 * SIDE, 3 * SIDE}, "the largest")
for _ = 1, 40 do sim.wheel(300, 300, -1) end
sim.wheel(300, 300, -30)
w = window()
check.list({w.right - w.left, w.top - w.bottom}, {SIDE / 2, SIDE / 2}, "the smallest")
drag({366, 89}, -7, 0, 0)
check.near(select(3, axes("r_f53")), posed[3 * 40] + 7, 1e-4, "the button of another finger, half as large")
drag({366, 89}, 7, 0, 0)
check_pose(posed, "there and back")

-- ---- Closed ----

-- Time going back forgets what was chosen.
press_button {187, 20}
sim.new_flight()
sim.frames(2)
click(PAD_X, PAD_Y)
sim.mouse(at(PAD_X, PAD_Y - 50))
sim.frames(1)
check_pose(posed, "nothing is chosen")

-- Closing it ends a drag; she moves by herself again, but not in the first 5 s of a flight.
press_button {187, 20}
click(PAD_X, PAD_Y)
sim.click(window().left + 6, window().top + 8)
check.that(not window().visible, "closed by its box")
sim.mouse(10, 10)
sim.frames(1)
check_pose(posed, "the drag ended with it")
sim.choose("Editor")
check.that(window().visible, "shown again")
sim.frames(2)
check_pose(posed, "the drag is over")

-- ---- What was saved ----

local left = sim.stop()
check.equal(#left, 0, "left behind: " .. tostring(left[1]))
sim.start()
sim.run(1)
for i, value in ipairs(pose()) do check.equal(value, 0, "upright, value " .. i) end
sim.choose("Editor")
sim.choose("Positions/my_fist")
sim.run(1)
check_pose(posed, "loaded")
local old = check.read(plugin .. "custom/positions-w/my_fist.txt")
drag({187, 20}, 10, 10, 0)
sim.choose("Save Position") -- its name is in the box
check.that(check.read(plugin .. "custom/positions-w/my_fist.txt") ~= old, "saved back")
sim.choose("Positions/look/look_left")
sim.run(1)
sim.choose("Save Position")
check.equal(select(2, check.read(plugin .. "custom/positions-w/look/look_left.txt"):gsub("\r\n", "")), 47, "in its group")
