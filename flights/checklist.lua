-- A checklist of three steps, challenge and response: read to its end, answered wrongly, broken off, aborted
-- by voice and by the stop button, interrupted by a pause and by a new flight, and read again each time.
local check = require "lib.check"

sim.publish("test/brake", "int", 0)
sim.publish("test/height", "int", 0)
check.systems {CHECKLIST = "sys=CHECKLIST\n"
    .. check.device("devstack=BEFORE START",
        {"before start checklist|before start please", "8,kv/fo/_planshet,1", "1,Before start checklist",
         "0,Parking brake?"},
        {{"set|brake set&[CHECKLIST.COCKPIT.BRAKE]==[1]", "0,Fuel selector?"},
         {"negative", "0,Standing by.", "3,"}},
        {"both", "1,Before start checklist complete", "8,kv/fo/_planshet,0"})
    .. check.device("devstack=CLIMB", {"[CHECKLIST.COCKPIT.HEIGHT]>[100]", "0,One hundred", "12,roger,60"},
                    {"[CHECKLIST.COCKPIT.HEIGHT]>[1000]", "0,One thousand"})
    .. [[
dev=COCKPIT
out=BRAKE,integer,,0,,,test/brake,exist,,,,0
out=HEIGHT,integer,,0,,,test/height,exist,,,,0
out=STEP1,integer,,0,,,,,test/call,new,,0
logic:
calc=[CHECKLIST.BEFORE START.P1]
out=STEP2,integer,,0,,,,,test/brake_step,new,,0
logic:
calc=[CHECKLIST.BEFORE START.P2]
out=STEP3,integer,,0,,,,,test/fuel,new,,0
logic:
calc=[CHECKLIST.BEFORE START.P3]
]]}

local FRAME = 1 / 60
local ABORTED = "All Commands and Checklists Aborted!"

check.start(3.5)
check.forget()

local function steps()
    return sim.get("test/call") .. sim.get("test/brake_step") .. sim.get("test/fuel")
end

local waits_for = check.waits_for

local function begin()
    sim.set("test/brake", 0)
    sim.hear("before start checklist")
    check.equal(steps(), "100", "the checklist begins")
    check.says(4, {"Before start checklist", "Parking brake?"}, "the first challenge")
    check.equal(sim.get("kv/fo/_planshet"), 1, "tablet in hand")
    check.equal(waits_for(), "set, brake set, negative", "answers to the first challenge")
end

local function expect_at_rest(what)
    check.equal(steps(), "000", what)
    check.equal(sim.get("kv/fo/_planshet"), 0, what .. ", the tablet put away")
    check.equal(waits_for(), "none", what .. ", nothing waited for")
end

-- ---- Read to its end ----

check.asks("set", 1, {}, "an answer to nothing")
begin()
sim.hear("banana")
sim.hear("brake set")
sim.hear("both")
check.asks("before start checklist", 5, {}, "wrong answers, and an answer that the cockpit gives the lie")
check.equal(steps(), "100", "and the step stays")
sim.set("test/brake", 1)
sim.run(2)
check.equal(steps(), "100", "what was said too early does not count later")
sim.hear("brake set")
check.equal(steps(), "110", "the second alternative")
check.says(1, {"Fuel selector?"}, "the second challenge")
check.equal(waits_for(), "both", "answers to the second challenge")
sim.press("kv/fennic/rec")
sim.frames(1)
sim.reply("both")
sim.frames(1)
check.equal(steps(), "111", "the last answer")
sim.frames(1)
check.equal(steps(), "000", "rewound in the next frame")
sim.release("kv/fennic/rec")
check.says(5, {"Before start checklist complete"}, "complete")
expect_at_rest("read to its end")

-- How long it takes: 22 letters and a second between the title and the challenge; the queue is empty, and
-- the answer taken, from the frame in which the challenge is spoken.
sim.sent()
check.hear("before start please", 4)
local sent = sim.sent()
check.near(sent[4].t - sent[2].t, 22 * 0.1 + 1, FRAME, "title to challenge")
check.equal(sent[4].text, "say>Parking brake?", "title to challenge")
sim.said()

-- ---- Broken off ----

sim.hear("negative")
check.equal(steps(), "120", "broken off")
check.says(1, {"Standing by."}, "broken off")
expect_at_rest("broken off")

-- ---- Aborted ----

begin()
sim.press("kv/fennic/rec")
sim.frames(1)
sim.reply("Abort!")
sim.frames(1)
check.equal(steps(), "000", "aborted in the frame in which it was heard")
sim.release("kv/fennic/rec")
check.says(1, {ABORTED}, "aborted by voice")
expect_at_rest("aborted by voice")

begin()
sim.press("kv/fennic/stop")
sim.frames(10)
check.equal(steps(), "100", "the stop button acts when it is let go")
sim.release("kv/fennic/stop")
sim.frames(1)
check.equal(steps(), "000", "aborted by the button")
check.says(1, {ABORTED}, "aborted by the button")
expect_at_rest("aborted by the button")

-- While she is still reading: the rest of what she was about to do is dropped.
check.hear("before start checklist", 1)
sim.tap("kv/fennic/stop")
check.says(5, {"Before start checklist", ABORTED}, "aborted in the middle of a sentence")
expect_at_rest("aborted in the middle of a sentence")

-- ---- A pause ----

check.hear("before start checklist", 1)
sim.pause(true)
check.says(60, {"Before start checklist"}, "no challenge while the simulator is paused")
sim.pause(false)
check.says(3, {"Parking brake?"}, "the challenge after the pause")
sim.set("test/brake", 1)
sim.pause(true)
check.hear("set", 10)
check.equal(steps(), "100", "no answer counts while the simulator is paused")
sim.pause(false)
sim.run(2)
check.equal(steps(), "100", "nor afterwards")
sim.hear("set")
check.asks("both", 6, {"Fuel selector?", "Before start checklist complete"}, "after the pause")
expect_at_rest("after the pause")

-- ---- A new flight ----

-- The clock starts over, so she does not wait for a time of the old flight; the step is still the same.
sim.run(600)
check.hear("before start checklist", 1)
sim.new_flight()
sim.frames(2)
check.list(sim.said(), {"Before start checklist", "Parking brake?"}, "nothing to wait for in a new flight")
check.equal(steps(), "100", "the step in a new flight")
sim.set("test/brake", 1)
check.hear("set", 1)
sim.new_flight()
sim.frames(1)
check.asks("both", 6, {"Fuel selector?", "Before start checklist complete"}, "the rest in a new flight")
expect_at_rest("after a new flight")
begin()
sim.tap("kv/fennic/stop")
sim.run(1)
sim.said()

-- ---- A sequence that nobody calls ----

-- The stop button ends what runs, not what begins by itself later; nor do answers outlive the flight in which
-- they were waited for.
sim.set("test/height", 500)
check.says(5, {"One hundred"}, "once, though the stop button was pressed before")
check.equal(waits_for(), "roger", "a timer")
sim.new_flight()
sim.frames(2)
check.equal(waits_for(), "none", "no timer in a new flight")
sim.tap("kv/fennic/stop")
check.says(3, {ABORTED, "One hundred"}, "aborted, and begun anew")
