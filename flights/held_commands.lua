-- A command that is begun and held is let go once: by the file, an abort of any kind, a break that drops what
-- would have let go, a new flight, the end of the plug-in.
local check = require "lib.check"
local overlay = require "lib.overlay"

local ABORTED = "All Commands and Checklists Aborted!"

check.systems {CREW = "sys=CREW\n"
    .. check.device("dev=ENGINE",
        {"crank", "5,test/starter", "5,test/starter", "7,,300", "6,test/starter", "0,Cranked"},
        {"let go", "11,test/starter"},
        {"crank twice", "5,test/starter", "5,test/starter", "6,test/starter", "7,,30", "0,Twice"},
        {"crank and break", "5,test/starter", "5,test/pump", "7,,1", "3,", "6,test/starter"})
    .. check.device("dev=LISTS", {false, "9,abort"})
    .. check.device("devstack=MENU", {"abort", "10,"})}
sim.add_command("test/starter", "held by hand")
sim.add_command("test/pump", "held by hand, too")
sim.publish("kv/fennic_kill", "int", 0)
check.start(4)

local function count(name)
    local fired = sim.fired(name)
    return fired.begun .. " " .. fired.ended
end
local cranked = 0
local function crank()
    check.hear("crank", 2)
    cranked = cranked + 1
    check.equal(count("test/starter"), cranked .. " " .. cranked - 1, "held")
    check.forget()
end
local function is_let_go(what)
    check.equal(count("test/starter"), cranked .. " " .. cranked, what)
    sim.run(1)
    check.equal(count("test/starter"), cranked .. " " .. cranked, what .. ", once")
end

local aborts = {
    ["the spoken abort"] = function() sim.reply("abort") end,
    ["the stop command"] = function() sim.tap("kv/fennic/stop") end,
    ["a click on abort"] = function()
        overlay.click("LISTS (1)")
        overlay.click("abort")
    end,
    ["abort from the menu"] = function() sim.choose("Fennic/Commands/MENU/abort") end,
}
for what, abort in pairs(aborts) do
    crank()
    abort()
    sim.frames(1)
    is_let_go(what)
    check.equal(sim.said()[1], what ~= "abort from the menu" and ABORTED or nil, what)
    sim.reply("abort")
    sim.run(10)
end

crank()
sim.hear("let go")
is_let_go("let go now")
sim.reply("abort")
sim.run(2)
is_let_go("nothing is held")
check.hear("crank twice", 1)
cranked = cranked + 1
is_let_go("begun twice, let go once")
sim.reply("abort")
sim.run(2)

-- The break drops the end of one, and has nothing to do with the other.
check.hear("crank and break", 5)
cranked = cranked + 1
is_let_go("a break")
check.equal(count("test/pump"), "1 0", "still held")
crank()
sim.new_flight()
sim.frames(2)
is_let_go("a new flight")
check.equal(count("test/pump"), "1 1", "let go in the new flight")
sim.reply("abort")
sim.run(10)

crank()
sim.set("kv/fennic_kill", 1)
sim.run(60)
check.equal(count("test/starter"), cranked .. " " .. cranked - 1, "she does nothing")
sim.set("kv/fennic_kill", 0)
sim.frames(1)
sim.log()
sim.stop()
is_let_go("stopped")
check.equal(check.count(check.log(), "1 command,"), 0, "by herself, and not by the simulator")

-- Whoever writes "abort" in every frame: it is done each time, and said once.
check.start(4)
crank()
for _ = 1, 600 do
    sim.reply("abort")
    sim.frames(1)
end
check.list(sim.said(), {ABORTED}, "said once")
sim.run(1)
sim.reply("abort")
check.says(1, {ABORTED}, "and when it is said anew")
