-- An author writes a checklist in the simulator: from an empty model, with mouse and keyboard alone, saved, and
-- read by the first officer after a restart. Then he renames, moves, clones and deletes, and every link follows.
local check = require "lib.check"
local editor = require "lib.editor"

local plugin = sim.dir("plugin")
local systems = plugin .. "systems/"

local function read(name)
    return (check.read(systems .. name):gsub("\r\n", "\n"))
end

local function holds(name, text, what)
    local whole = read(name)
    check.that(whole:find(text, 1, true), what .. ": no " .. text .. " in\n" .. whole)
end

-- Without developer mode there is no window over the screen.
sim.screen(1280, 800)
check.start(1)
for _, window in ipairs(sim.windows()) do
    check.that(window.right - window.left < 1280, "a window as wide as the screen")
end
sim.stop()

check.write(systems .. "_systems.txt", "")
sim.publish("test/brake", "int", 0)
sim.publish("kv/fennic_kill", "int", 0)
editor.start(1280, 800)

-- ---- A checklist of two steps, and the brake that it asks for ----

editor.column(1, "New..")
editor.rename(1, 1, "CHECKLIST")
editor.column(2, "New..")
editor.rename(2, 1, "TEST")
editor.switch("serial")
editor.column(3, "New..")
editor.rename(3, 1, "CALL")
editor.detail("text", "") -- the box shows words where there are none, which are not stored
editor.add_block()
editor.logic_end(1, "ADD")
editor.comparison(2, "kind")
editor.comparison(2, "left", "test checklist")
editor.logic_end(2, "ADD")
editor.comparison(3, "kind")
editor.comparison(3, "left", "test list please")
check.equal(sim.get("kv/to_speech"), "contextpathupdate>" .. plugin, "the server is told of the phrase")
check.that(check.read(plugin .. "data/context.txt"):find("test list please\r\n", 1, true), "not in the context")
editor.comparison(3, "join")
editor.panel("EXECECUTE")
editor.execute("ADD")
editor.action_type("SAY&WAIT")
editor.action(1, "text", "Parking brake?")

editor.column(3, "New..")
editor.rename(3, 2, "BRAKE")
editor.add_block()
editor.logic_end(1, "ADD")
editor.comparison(2, "kind")
editor.comparison(2, "left", "set")
editor.logic_end(2, "ADD")
editor.comparison(3, "left", "CHECKLIST.COCKPIT.BRAKE") -- not there yet
editor.comparison(3, "right", "1")
editor.panel("EXECECUTE")
editor.execute("ADD")
editor.action(1, "text", "Test checklist complete")

editor.column(2, "New..")
editor.rename(2, 2, "COCKPIT")
editor.column(3, "New..")
editor.rename(3, 1, "BRAKE")
editor.detail("input", "test/brake")
editor.detail("unit", "off or on")

-- ---- What is refused says why and stays in the box ----

local function refused(change, typed, message)
    change(typed)
    check.equal(editor.box(), typed, message .. ": what was typed")
    sim.key(27)
    sim.frames(2)
    check.equal(editor.box(), nil, "escape closes the box")
end
refused(function(text) editor.rename(3, 1, text) end, "A=B", "a sign that names cannot have")
refused(function(text) editor.detail("init", text) end, "1,5", "no number")

editor.title("SAVE")
check.equal(read("_systems.txt"), "CHECKLIST\n", "the list of systems")
check.equal(read("CHECKLIST.txt"), [[
draw=1
sys=CHECKLIST
devstack=TEST
out=CALL,integer,,0.000000,,,,,,,,0
logic:
instring=test checklist
||
instring=test list please
execute=1,Parking brake?,0.000000
out=BRAKE,integer,,0.000000,,,,,,,,0
logic:
instring=set
&&
[CHECKLIST.COCKPIT.BRAKE]==[1.000000]
execute=0,Test checklist complete,0.000000
dev=COCKPIT
out=BRAKE,integer,off or on,0.000000,,,test/brake,exist,,,,0
]], "the saved checklist")

-- ---- The first officer reads it ----

check.restart(4)
sim.said()
check.hear("test list please", 4)
check.asks("set", 2, {"Parking brake?"}, "the brake is not set")
sim.set("test/brake", 1)
sim.frames(1)
check.asks("set", 2, {"Test checklist complete"}, "the brake is set")

-- ---- A value that is calculated ----

editor.show()
editor.select(2, 2)
editor.column(3, "New..")
editor.add_block()
editor.add_calculation()
editor.operand(1, "CHECKLIST.COCKPIT.BRAKE")
editor.detail("output", "test/brake")
editor.title("SAVE")
holds("CHECKLIST.txt", "out=NewOut,integer,,0.000000,,,,,test/brake,exist,,0\nlogic:\ncalc=[CHECKLIST.COCKPIT.BRAKE]\n",
      "a calculation")

-- ---- Renaming, moving, cloning, deleting: links follow ----

editor.rename(3, 1, "LEVER")
editor.rename(2, 2, "PEDESTAL")
editor.title("SAVE")
holds("CHECKLIST.txt", "[CHECKLIST.PEDESTAL.LEVER]==", "renamed")

editor.column(1, "New..")
editor.rename(1, 2, "PANEL")
editor.select(1, 1)
editor.select(2, 2)
editor.column(2, "COPY")
editor.select(1, 2)
editor.column(2, "MOVE")
editor.title("SAVE")
holds("CHECKLIST.txt", "[PANEL.PEDESTAL.LEVER]==", "the device was moved")
holds("PANEL.txt", "dev=PEDESTAL\nout=LEVER,", "the device was moved")

editor.column(2, "CLONE")
editor.title("UNDO")
editor.title("UNDO")
editor.title("SAVE")
holds("CHECKLIST.txt", "[CHECKLIST.PEDESTAL.LEVER]==", "clone and move are undone")

-- With AUTO every change is in the files.
editor.title("AUTO")
editor.select(1, 2)
editor.column(1, "DEL")
check.equal(read("_systems.txt"), "CHECKLIST\n", "a deleted system is not listed")
editor.title("UNDO")
check.equal(read("_systems.txt"), "CHECKLIST\nPANEL\n", "an undone deletion is saved too")

-- ---- Saving that fails leaves everything as it was ----

editor.title("AUTO")
local list, checklist = read("_systems.txt"), read("CHECKLIST.txt")
editor.select(1, 1)
editor.select(3, 1)
editor.detail("text", "changed")
editor.select(1, 2)
editor.column(1, "New..")
local obstacle = systems .. "NewSystem.txt"
check.folder(obstacle)
sim.log()
editor.title("SAVE")
check.that(table.concat(sim.log()):find("Cant write file", 1, true), "a folder in a file's place is not told")
check.equal(read("_systems.txt"), list, "the list")
check.equal(read("CHECKLIST.txt"), checklist, "the first file")
assert(os.remove(obstacle))
editor.title("SAVE")
check.equal(read("_systems.txt"), "CHECKLIST\nPANEL\nNewSystem\n", "saved after all")
holds("CHECKLIST.txt", "changed", "saved after all")

-- What is being typed outlives a change of the screen's size; the kill switch leaves nothing to see or click.
editor.select(1, 1)
sim.double_click(700, 705)
sim.type("half typed")
sim.screen(1600, 800)
sim.frames(2)
check.equal(editor.box(), "half typed", "the screen has grown")
sim.screen(1280, 800)
sim.set("kv/fennic_kill", 1)
sim.frames(2)
check.equal(editor.box(), nil, "the kill switch closes the box")
sim.double_click(700, 705)
sim.frames(2)
check.equal(editor.box(), nil, "the kill switch")
sim.set("kv/fennic_kill", 0)
sim.frames(2)

-- Hidden, the mouse reaches the simulator again.
editor.title("HIDE")
sim.click(640, 300)
sim.double_click(300, 650)
check.equal(editor.box(), nil, "nothing opens while the editor is hidden")
