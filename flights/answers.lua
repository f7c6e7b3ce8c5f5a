-- A checklist answered without a word: with the select button alone, and with clicks on the list alone.
local check = require "lib.check"
local overlay = require "lib.overlay"

local CLICK = "kv/fennic/click_snd"
local SELECT = "kv/fennic/select"

check.systems {CREW = "sys=CREW\ndev=WATCH\nout=PHASE,integer,,0,,,test/phase,exist,,,,0\n"
    .. check.device("dev=OFFER", {"[CREW.WATCH.PHASE]==[1]", "12,start checklist,60", "12,not now,60"})
    .. check.device("devstack=NEWS", {"[CREW.WATCH.PHASE]==[3]", "0,Any news?"}, {"any", "0,I see"})
    .. check.device("dev=CHECKLISTS", {false, "9,start checklist", "9,abort"})
    .. check.device("devstack=START",
        {"start checklist", "0,Belts?"},
        {{"open", "0,Standing by", "3,"}, {"locked|fastened", "0,Fuel?"}},
        {"both", "0,Passengers?"},
        {"any", "0,Complete"})}
local BELTS = {"open", "locked", "fastened"}
local ABORTED = "All Commands and Checklists Aborted!"

-- The answers on the screen, from the first one up.
local function answers()
    local list, after = {}, nil
    for _, text in ipairs(sim.screen_text()) do
        if text.text == "EXPECTED ANSWERS:" then break end
        if after then list[#list + 1] = text.text end
        after = after or text.text == "FENNIC ANNOUNCES:"
    end
    return list
end
local function check_answers(expected, what)
    sim.frames(2)
    check.list(answers(), expected, what)
    local phrases = {}
    for line in sim.get("kv/speech/expected"):gmatch("[^\n]+") do phrases[#phrases + 1] = line end
    local number = 0
    for _, answer in ipairs(expected) do
        if answer ~= "..." then
            number = number + 1
            check.equal(phrases[number] or "none", answer, "expected by the server: " .. what)
        end
    end
    return phrases
end

-- The highlighted answer is the one that pulses.
local function highlighted()
    local before, pulsing = {}, "none"
    for _, text in ipairs(answers()) do before[text] = overlay.colour(text) end
    sim.frames(5)
    for _, text in ipairs(answers()) do
        if before[text] ~= overlay.colour(text) then pulsing = text end
    end
    return pulsing
end

local function press(seconds)
    sim.press(SELECT)
    sim.run(seconds)
    sim.release(SELECT)
    sim.frames(1)
end
local function step_to(answer)
    press(0.1)
    sim.run(0.6)
    check.equal(highlighted(), answer, "stepped")
end
local function hold(what)
    press(0.4)
    sim.run(1)
    check.equal(highlighted(), "none", what)
    return sim.said()
end

-- ---- Without the click's dataref ----

-- Then a hold confirms nothing, but in one family of aircraft.
local isAboard = false
local function start(file, description)
    if isAboard then sim.stop() end
    isAboard = true
    check.aircraft(file, description)
    check.start(3.5)
    check.forget()
end
sim.publish("test/phase", "int", 0)
for _, airliner in ipairs {false, true} do
    start(airliner and "b738_4k.acf" or "Cessna_172SP.acf",
          airliner and "Boeing 737-800X" or "Cessna 172 SP Skyhawk - 180HP")
    check.hear("start checklist", 1)
    press(0.1)
    sim.run(0.6)
    check.equal(highlighted(), "open", "a step")
    press(0.4)
    check.says(1, {"Belts?", airliner and "Standing by" or nil}, "a hold without the click's dataref")
end

-- ---- The button alone ----

sim.publish(CLICK, "int", 0)
start("Cessna_172SP.acf", "Cessna 172 SP Skyhawk - 180HP")
local function offer()
    sim.set("test/phase", 1)
    sim.frames(1)
    sim.set("test/phase", 2)
end
offer()
check_answers({"start checklist", "not now"}, "she offers")
check.list(hold("nothing is highlighted: the first answer"), {"Belts?"}, "held")
check_answers({"not now", table.unpack(BELTS)}, "what was answered is offered no longer")
local log = check.log()
check.equal(check.count(log, "selectCommandAnswerIndex=0"), 1, "log")
check.equal(check.count(log, "LastRecognition=answers[i]=start checklist"), 1, "log")

-- Half a second passes from a press to its step; after the last answer comes the first.
sim.press(SELECT)
sim.run(0.1)
sim.release(SELECT)
sim.run(0.3)
check.equal(highlighted(), "none", "not yet")
sim.run(0.1)
check.equal(highlighted(), "not now", "half a second after the press")
for _, answer in ipairs {"open", "locked", "fastened", "not now", "open", "locked"} do step_to(answer) end
check.list(hold("a hold takes the highlighted answer"), {"Fuel?"}, "held")
check_answers({"not now", "both"}, "the next step")
step_to("not now")
sim.pause(true) -- in which a hold is a short press
press(2)
sim.pause(false)
sim.run(0.6)
check.equal(highlighted(), "both", "stepped in a pause")

-- The click is heard while the button is held: for a frame, after 0.3 s.
sim.press(SELECT)
local clicked = check.wait(1, function() return sim.get(CLICK) == 1 end, "the click")
check.near(clicked, 0.3, 0.05, "the click")
sim.frames(1)
check.equal(sim.get(CLICK), 0, "the click is over")
check.says(1, {"Passengers?"}, "confirmed while the button is still held")
sim.release(SELECT)
sim.run(1)
check.equal(sim.get(CLICK), 0, "no click at the release")
check_answers({"not now"}, "any answer, and an offer")

-- Stopped in the middle, with an answer highlighted.
sim.tap("kv/fennic/stop")
check.hear("start checklist", 1)
sim.said()
step_to("not now")
step_to("open")
sim.tap("kv/fennic/stop")
check.says(1, {ABORTED}, "stopped")
check_answers({"not now"}, "stopped")
check.equal(highlighted(), "none", "stopped")

-- ---- Clicks alone ----

local function click(text, above)
    overlay.click(text, above)
    sim.run(1)
    return sim.said()
end
start("Cessna_172SP.acf", "Cessna 172 SP Skyhawk - 180HP")
check.list(click("..."), {}, "nobody has asked")
sim.set("test/phase", 3)
sim.run(2)
sim.set("test/phase", 2)
sim.frames(2)
check.list(sim.said(), {"Any news?"}, "an early click is no answer")
check.list(click("any"), {"I see"}, "an answer")
offer()
check_answers({"start checklist", "not now"}, "she offers")
check.list(click("not now"), {}, "an answer that nobody waits for")
local folded = check_answers({"start checklist", "not now"}, "a click takes no offer back")
click("CHECKLISTS (2)")
check.equal(#check_answers({"start checklist", "not now"}, "unfolded"), #folded + 2, "the open group's items")
check.list(click("start checklist"), {"Belts?"}, "called")
check.list(click("open", 19 - 15 * 4), {}, "below the answers")
check.list(click("fastened", 19), {}, "19 pixels above the last answer")
check.list(click("fastened", 17), {"Fuel?"}, "17 pixels above it")
check.list(click("both"), {"Passengers?"}, "the second answer")
check.list(click("not now"), {"Complete"}, "any answer")

-- Any answer when nothing else is expected, and a stop from the list.
sim.run(60)
check_answers({"..."}, "the offers are over")
click("CHECKLISTS (2)")
check.list(click("start checklist"), {"Belts?"}, "called again")
click("locked")
check.list(click("abort"), {ABORTED}, "stopped from the list")
check_answers({"..."}, "stopped")
click("start checklist")
check.list(click("open", -3), {}, "3 pixels below the first answer")
check.list(click("open", -2), {"Standing by"}, "2 pixels below it")
check_answers({"..."}, "broken off")
click("start checklist")
click("fastened")
click("both")
check_answers({"...", "any"}, "any answer")
sim.said()
check.list(click("any"), {"Complete"}, "any answer")
