-- The words that every crew uses: by voice, from the menu, with the select button; in an airliner, in the
-- Cessna, and there with a list that somebody else has written.
local check = require "lib.check"
local clists = require "lib.clists"
local overlay = require "lib.overlay"

local aircraft = sim.dir("aircraft")
local isCessna = aircraft:find("Cessna_172SP") ~= nil
local STANDING_BY, NO_CHECKLIST = "Standing by, Sir.", "No checklist is running, Sir."

-- What she says to it.
local function expect(words, said, seconds) check.asks(words, seconds or 6, said) end

local function group() return overlay.lines("^WORDS %(")[1] end

if isCessna then
    sim.start()
else
    require("lib.airliner").park()
end
sim.run(6)
sim.said()

-- ---- While no list runs ----

expect("next item", {NO_CHECKLIST})
expect("checklist", {NO_CHECKLIST})
expect("say again", {NO_CHECKLIST})
expect("say again", {NO_CHECKLIST})
check.equal(group(), "WORDS (2)", "only what makes sense")

-- ---- Skipped, and told at the end ----

local ITEMS = isCessna
    and {{"Seats and belts?", "locked"}, {"Brakes?"}, {"Circuit breakers?", "in"}, {"Avionics?"},
         {"Fuel selector?"}}
    or {{"Cockpit preparation?", "complete"}, {"Signs?"}, {"Fuel quantity?"}, {"Altimeters?"},
        {"Take-off speeds?"}, {"Windows and doors?"}, {"Beacon?"}, {"Parking brake?"}}
local END = isCessna and "Before start checklist complete, except brakes, avionics and fuel selector."
    or "Before start checklist complete, except signs, fuel quantity, altimeters, take-off speeds, windows and "
        .. "doors, beacon and parking brake."
check.hear("before start checklist", 10)
check.list(sim.said(), {"Before start checklist.", ITEMS[1][1]}, "called")
check.equal(group(), "WORDS (4)", "within reach")
for i, item in ipairs(ITEMS) do
    local following = ITEMS[i + 1] and ITEMS[i + 1][1] or END
    expect(item[2] or "next item", {following}, 8)
end
sim.run(20)
expect("checklist", {NO_CHECKLIST})

-- Forgotten when the list begins anew.
check.hear("before start checklist", 10)
expect("next item", {"Before start checklist.", ITEMS[1][1], ITEMS[2][1]})
sim.choose("Fennic/Commands/WORDS/checklist")
sim.run(5)
local where = isCessna and "Before start checklist, at brakes." or "Before start checklist, at signs."
check.list(sim.said(), {where}, "where she is")

-- ---- Held ----

expect("stand by", {STANDING_BY})
expect("stand by", {STANDING_BY})
check.equal(group(), "WORDS (5)", "go ahead is offered")
expect("checklist", {where})
sim.run(60)
check.list(sim.said(), {}, "nothing is asked")
expect("go ahead", {ITEMS[2][1]})
expect("stand by", {STANDING_BY})
expect("next item", {ITEMS[3][1]}) -- which ends it
expect("abort", {"All Commands and Checklists Aborted!"})

-- While she speaks: what she has not yet said waits, what others say does not.
check.hear("before start checklist", 1.5)
check.hear("stand by", 10)
check.list(sim.said(), {"Before start checklist.", STANDING_BY}, "in the middle of it")
check.hear("what are we squawking", 6)
check.equal(sim.said()[1]:match("^We squawk"), "We squawk", "she is there for all else")
expect("go ahead", {ITEMS[1][1]})
expect("stand by", {STANDING_BY})
expect(ITEMS[1][2], {ITEMS[2][1]})
expect("stand by", {STANDING_BY})
expect("abort", {"All Commands and Checklists Aborted!"})
check.hear("before start checklist", 10)
check.list(sim.said(), {"Before start checklist.", ITEMS[1][1]}, "no hold outlives an abort")

-- ---- The button: behind the answers, and only on demand ----

local function highlight_a_word()
    local _, answers = sim.get("kv/speech/expected"):gsub("[^\n]+", "")
    for _ = 1, answers + 1 do
        sim.tap("kv/fennic/select")
        sim.run(0.7)
    end
    check.that(overlay.line("next item"), "its group is unfolded while it is highlighted")
end
highlight_a_word()
expect("next item", {ITEMS[2][1]})
check.that(not overlay.line("next item"), "an old word answers no new question")
highlight_a_word()
sim.press("kv/fennic/select")
sim.run(0.5)
sim.release("kv/fennic/select")
sim.run(5)
check.list(sim.said(), {ITEMS[3][1]}, "the first word is next item")
expect("abort", {"All Commands and Checklists Aborted!"})
check.no_problems()
if not isCessna then return end

-- ---- An engine's start is no checklist ----

check.hear("start the engine", 12)
sim.said()
expect("next item", {NO_CHECKLIST})
expect("abort", {"All Commands and Checklists Aborted!"})

-- ---- A list of somebody else, where there is no system of ours ----

sim.stop()
for _, file in ipairs {"CHECKLIST", "MENU", "CREW"} do os.remove(sim.dir("plugin") .. "systems/" .. file .. ".txt") end
check.systems {}
check.write(sim.dir("plugin") .. "systems/_places.txt", "lamp=none\nlamp switch=none\n") -- the second one is never used
check.write(aircraft .. "Cessna_172SP_clist.txt", clists.twin)
check.start(6)
sim.choose("Fennic/Import Checklist")
check.restart(6)
sim.said()
expect("next item", {NO_CHECKLIST})
expect("before start checklist", {"Before start checklist.", "Cockpit preparation.", "Preflight inspection?"}, 12)
for _, item in ipairs {{"complete", "Parking brake?"}, {"next item", "Fuel selectors?"}, {"both on", "Avionics master?"},
                       {"next item", "Battery switch?"}, {"continue", "Beacon light?"}} do
    expect(item[1], {item[2]})
end
expect("checklist", {"Before start checklist, at beacon light."})
expect("stand by", {STANDING_BY})
expect("next item", {"Mind the propellers.", "Doors?"}, 8)
expect("checked", {"Before start checklist complete, except parking brake, avionics master and beacon light.",
                   "Next is the after start checklist. Shall I read it?"}, 25)
expect("yes", {"After start checklist.", "Engine 1 oil pressure, green."}, 8)
expect("checklist", {"After start checklist, at engine 1 oil pressure."})
expect("next item", {"Engine 2 oil pressure, green."})
for _, question in ipairs {"Generator 1 and 2?", "Transponder?", "Flaps?", "Altitude QNH?"} do
    expect("next item", {question})
end
-- An item that takes any answer: neither a word nor letting go of the button behind it is one.
expect("say again", {"Altitude QNH?"})
expect("one zero one three", {"After start checklist complete, except engine 1 oil pressure, engine 2 oil pressure, "
    .. "generator 1 and 2, transponder and flaps.", "Next is the before start checklist. Shall I read it?"}, 30)
check.no_problems()
