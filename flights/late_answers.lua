-- What was pressed or said for nothing answers no later question: not a press while the list is hidden, and
-- not a phrase that nobody waited for.
local check = require "lib.check"
local overlay = require "lib.overlay"

local SELECT, WIDGET, REC = "kv/fennic/select", "kv/fennic/widget", "kv/fennic/rec"

check.systems {CREW = "sys=CREW\ndev=WATCH\nout=PHASE,integer,,0,,,test/phase,exist,,,,0\n"
    .. check.device("devstack=ENGINES", {"[CREW.WATCH.PHASE]==[1]", "0,Shall I shut down the engines?"},
                    {"yes", "0,They are off"})
    .. check.device("dev=CALLS", {"take your time", "7,,30", "0,I am back"}, {false, "9,yes"})}
sim.publish("test/phase", "int", 0)
sim.publish("kv/fennic/click_snd", "int", 0)
sim.publish("kv/fennic_kill", "int", 0)
check.start(4)

local function ask()
    sim.set("test/phase", 1)
    sim.frames(1)
    sim.set("test/phase", 0)
    sim.run(2)
    local said = sim.said()
    check.that(said[#said] == "Shall I shut down the engines?" or said[#said] == "They are off", "she asks")
    return said[#said] == "They are off"
end
local function stop()
    sim.tap("kv/fennic/stop")
    sim.run(10)
    sim.said()
end

-- ---- The button while nobody sees the list ----

local function kill() sim.set("kv/fennic_kill", 1 - sim.get("kv/fennic_kill")) end
for what, switch in pairs {hidden = function() sim.tap(WIDGET) end, killed = kill} do
    for _, seconds in ipairs {0.1, 0.4} do
        for _, isOpen in ipairs {true, false} do -- the question, before the button is let go
            if what == "killed" then ask() end
            switch()
            sim.frames(1)
            sim.press(SELECT)
            sim.run(seconds)
            if not isOpen then sim.release(SELECT) end
            if what == "hidden" then ask() end
            switch()
            sim.run(1)
            sim.release(SELECT)
            check.says(2, {}, ("%s: a press of %g s"):format(what, seconds))
            stop()
        end
    end
end

-- A step that was pending in the flight before is none in the next one.
ask()
sim.tap(SELECT)
sim.new_flight()
sim.frames(2)
local before = overlay.colour("yes")
sim.run(400)
check.equal(overlay.colour("yes"), before, "not highlighted")
stop()

-- ---- A phrase that nobody waits for ----

-- Whether the question is answered that she asks so many seconds after the phrase.
local function is_answered(say, seconds)
    say()
    sim.run(seconds)
    sim.said()
    local answered = ask()
    stop()
    return answered
end

local sources = {
    ["from the server, after the button's release"] = function()
        sim.tap(REC)
        sim.run(1)
        sim.reply("yes")
        sim.frames(1)
    end,
    ["from the menu"] = function() sim.choose("Fennic/Commands/ENGINES/yes") end,
    ["from the list"] = function()
        overlay.click("CALLS (1)")
        overlay.click("yes")
    end,
}
for what, source in pairs(sources) do
    check.that(is_answered(source, 13), what .. ": in time")
    sim.log()
    check.that(not is_answered(source, 16), what .. ": too late")
    check.equal(check.count(check.log(), "Forgotten, since nobody waited for it: yes"), 1, what)
end

-- While she is busy it is kept; and once more said, it counts from then on.
check.that(is_answered(function()
    sim.hear("take your time")
    sources["from the menu"]()
end, 43), "she was busy for 30 s")
check.that(is_answered(function()
    sources["from the menu"]()
    sim.run(12)
    sources["from the list"]()
end, 12), "said twice")
