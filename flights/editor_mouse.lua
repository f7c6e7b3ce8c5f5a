-- While the editor is shown nothing behind it can be clicked, turned or started; folded, it takes nothing but its
-- button. Keys are the simulator's until a field is typed in.
local check = require "lib.check"
local editor = require "lib.editor"

-- Places of the list that the pilot clicks on, which the first officer's own window takes.
local function heading()
    for _, text in ipairs(sim.screen_text()) do
        if text.text:match("^CHECKLISTS") then return text.x + 5, text.y + 4 end
    end
    error("no list of checklists")
end
local function items() return #sim.screen_text() end

local function each_place(visit)
    for x = 20, 1260, 31 do
        for y = 10, 790, 26 do visit(x, y) end
    end
end

editor.start(1280, 800)
local x, y = heading()
local before = items()
check.that(sim.click(x, y), "a click on the list")
sim.run(1)
check.equal(items(), before, "the list behind the editor")

-- Not "SAVE" and its neighbours at the top, and nothing twice in the time of a double click.
local opened = #sim.windows()
each_place(function(px, py)
    check.that(sim.wheel(px, py, 1), "the wheel at " .. px .. "," .. py)
    check.equal(sim.mouse(px, py), "arrow", "the cursor at " .. px .. "," .. py)
    check.that(sim.mouse_down(px, py, "right"), "a right click at " .. px .. "," .. py)
    sim.mouse_up(px, py)
    if py > 740 then return end
    check.that(sim.click(px, py), "a click at " .. px .. "," .. py)
    sim.frames(1)
end)
check.that(not sim.key("f1"), "a key after clicks")
check.equal(#sim.windows(), opened, "a window of the editor's")
check.equal(items(), before, "the list after clicks everywhere")
check.list(sim.said(), {}, "said")

-- What is typed is the field's, then the simulator's again: after return, and after a click beside it.
for _, ends in ipairs {function() sim.key("return") end, function() sim.click(640, 766) end} do
    sim.run(0.6)
    editor.open(3, 1)
    check.that(sim.key("X"), "a letter for the field")
    ends()
    sim.frames(2)
    check.equal(editor.box(), nil, "the field is stored")
    check.that(not sim.key("X"), "a letter for the simulator")
end

editor.title("HIDE")
each_place(function(px, py)
    check.that(not sim.wheel(px, py, 1), "the wheel while it is folded, at " .. px .. "," .. py)
    check.equal(sim.mouse(px, py), "default", "the cursor while it is folded")
    check.that(not sim.mouse_down(px, py, "right"), "a right click while it is folded")
    sim.mouse_up(px, py)
end)
check.that(not sim.click(300, 500), "a click while it is folded")
sim.click(x, y)
sim.run(1)
check.that(items() > before, "the list unfolds when the editor is folded")
