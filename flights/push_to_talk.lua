-- When the first officer listens, and to what: the talk button, repeated and late texts, "abort", and the
-- answer of a pilot who presses the button and says nothing.
local check = require "lib.check"

check.systems {TALK = [[
sys=TALK
dev=CHATTER
out=HEARD,integer,,0,,,,,test/heard,new,,0
logic:
instring=good day
calc=[TALK.CHATTER.HEARD]+[1]
]] .. check.device("devstack=QUESTION", {"ask me", "0,Ready?", "7,,1"}, {"any", "0,Thank you."})}

local FRAME = 1 / 60

check.start(3.5)
check.forget()

-- How often the recognition handler has run on the text since the last call.
local function handled(text)
    return check.count(check.log(), "Just Get Recognition: " .. text)
end

-- Before the first press whatever the server writes is dropped, and taken out of its dataref.
sim.reply("good day")
sim.frames(1)
check.equal(handled("good day"), 0, "not listening yet")
check.equal(sim.get("kv/fr_speech"), "", "the dataref is emptied")
sim.frames(5)
check.equal(sim.get("test/heard"), 0, "nothing heard")

-- Press and release go to the server, a frame each, also when both come in one frame.
sim.press("kv/fennic/rec")
check.list(check.messages(), {}, "the press waits for the frame")
sim.frames(10)
sim.release("kv/fennic/rec")
sim.frames(1)
check.list(check.messages(), {"CmdRecStart", "CmdRecStop"}, "press and release")
local tapped = sim.time()
sim.tap("kv/fennic/rec")
sim.frames(5)
local sent = sim.sent()
check.equal(#sent, 2, "messages of a tap")
check.equal(sent[1].text .. " " .. sent[2].text, "CmdRecStart CmdRecStop", "start wins, stop comes after")
check.near(sent[1].t, tapped + FRAME, 1e-4, "start in the next frame")
check.near(sent[2].t, tapped + 2 * FRAME, 1e-4, "stop in the frame after")

-- The text is heard while the button is held, and once: a repeat of what was handled last is not handled
-- again, unless the first was understood and used up.
sim.press("kv/fennic/rec")
sim.frames(1)
for _ = 1, 3 do
    sim.reply("mumble")
    sim.frames(2)
end
check.equal(handled("mumble"), 1, "repeated text")
sim.reply("good day")
sim.frames(1)
sim.reply("good day")
sim.frames(1)
check.equal(handled("good day"), 2, "used up and said again")
check.equal(sim.get("test/heard"), 2, "both count")
sim.reply("Good Day")
sim.frames(1)
check.equal(sim.get("test/heard"), 2, "phrases are compared exactly")
sim.release("kv/fennic/rec")
sim.frames(1)
check.forget()

-- An answer that comes after the release still counts: servers take their time.
sim.reply("good day")
sim.frames(1)
check.equal(sim.get("test/heard"), 3, "late answer")

-- A longer text than 600 bytes is cut there.
sim.log()
sim.reply(("x"):rep(700))
sim.frames(1)
check.list(check.log(), {"Just Get Recognition: " .. ("x"):rep(600)}, "a long text")

-- "abort" needs no button and is done each time; the tablet goes with it.
sim.said()
for _ = 1, 2 do
    sim.set("kv/fo/_planshet", 1)
    sim.reply("abort")
    sim.run(1)
    check.equal(sim.get("kv/fo/_planshet"), 0, "the tablet")
end
check.list(sim.said(), {"All Commands and Checklists Aborted!", "All Commands and Checklists Aborted!"}, "abort")
check.equal(handled("abort"), 2, "abort, each time")
check.asks("Abort!", 1, {"All Commands and Checklists Aborted!"}, "abort among punctuation")
check.asks("abort mission", 1, {}, "abort among words")

-- Pressing without a word answers a step that takes anything, and only such a step. (The question ends with a
-- pause, so that the button which asked it is up again when the step begins to wait.)
local function press_silently()
    sim.press("kv/fennic/rec")
    sim.frames(30)
    sim.release("kv/fennic/rec")
    sim.frames(2)
end
sim.log()
press_silently()
check.equal(handled("ANY"), 0, "nobody has asked")
check.asks("ask me", 2, {"Ready?"}, "the question")
press_silently()
check.equal(handled("ANY"), 1, "a silent press")
check.says(2, {"Thank you."}, "is an answer")
press_silently()
sim.run(2)
check.equal(handled("ANY"), 0, "the step is done")
check.list(sim.said(), {}, "the step is done")

-- Any word does as well. Once a sequence has used it up, further texts are dropped until the next press.
check.hear("ask me", 2)
check.asks("what was the question", 2, {"Ready?", "Thank you."}, "any answer")
sim.log()
sim.reply("good day")
sim.frames(5)
check.equal(handled("good day"), 0, "not listening any more")
check.equal(sim.get("test/heard"), 3, "not heard")
