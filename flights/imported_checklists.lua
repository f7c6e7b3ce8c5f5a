-- Checklists that others have written, imported from the menu and read to their ends: by a pilot who knows
-- no more than what is expected of him, and says nothing else.
local check = require "lib.check"
local clists = require "lib.clists"

local plugin, aircraft = sim.dir("plugin"), sim.dir("aircraft")
local own = aircraft .. "Cessna_172SP_clist.txt"

local function offered()
    for _, item in ipairs(sim.menu()) do
        for _, inner in ipairs(item.items or {}) do
            if inner.text == "Import Checklist" then return true end
        end
    end
    return false
end

-- The phrases that are expected now.
local function expected()
    local phrases = {}
    for phrase in sim.get("kv/speech/expected"):gmatch("[^\n]+") do phrases[#phrases + 1] = phrase end
    return phrases
end

local function expects(wanted)
    for _, phrase in ipairs(expected()) do
        if phrase == wanted then return true end
    end
    return false
end

-- Calls a checklist and answers until it is complete. All that she has said.
local function read(call)
    local said = {}
    local function listen(seconds)
        sim.run(seconds)
        local refuses = false
        for _, text in ipairs(sim.said()) do
            said[#said + 1] = text
            refuses = refuses or text:find("^I do not see it") ~= nil
        end
        return refuses
    end
    sim.hear(call)
    local refuses = listen(8)
    for _ = 1, 60 do
        local last = said[#said] or ""
        if last:find("complete%.$") or last:find("Shall I read it%?$") then return said end
        local answer = expected()[1]
        for _ = 1, 10 do
            if answer then break end
            listen(2)
            answer = expected()[1]
        end
        if refuses then answer = "continue" end
        check.that(answer, "after \"" .. last .. "\" nothing is expected")
        sim.hear(answer == "any" and "" or answer)
        refuses = listen(8)
    end
    error("the checklist " .. call .. " does not end; she said last: " .. tostring(said[#said]))
end

-- A new start with the checklists of this file and no systems of ours.
local function import(name)
    if sim.exists("kv/to_speech") then sim.stop() end
    for _, file in ipairs {"CHECKLIST DATA", "CHECKLIST", "CHECKLIST MENU"} do
        os.remove(plugin .. "systems/" .. file .. ".txt")
    end
    check.systems {}
    check.write(own, clists[name])
    check.start(6)
    check.that(offered(), "an aircraft with a clist.txt and no lists of ours offers the import")
    sim.said()
    sim.choose("Fennic/Import Checklist")
    check.list(sim.said(), {"I have the checklists. Please reload the aircraft."}, "she tells")
    check.restart(6)
    check.that(not offered(), "what is imported is not offered again")
    sim.said()
end

local function has(said, text)
    for _, line in ipairs(said) do
        if line == text then return true end
    end
    return false
end

-- ---- A shipped aircraft has its own lists ----

check.write(own, clists.twin)
check.start(6)
check.that(not offered(), "where there are lists, none are offered")

-- ---- The twin: refused, overruled, gone on with ----

import "twin"
sim.set("sim/cockpit2/controls/parking_brake_ratio", 0)
local said = read("before start checklist")
check.that(has(said, "Cockpit preparation."), "a heading is said")
check.that(has(said, "Battery switch?"), "abbreviations are written out")
check.that(has(said, "I do not see it, Sir. Say continue to go on."), "a condition that is not met is refused")
check.equal(said[#said], "Next is the after start checklist. Shall I read it?", "and the next one is offered")
check.asks("yes", 8, {"After start checklist.", "Engine 1 oil pressure, green."}, "yes starts it")
check.asks("green", 4, {"I do not see it, Sir. Say continue to go on."}, "no oil pressure")
sim.set("sim/cockpit2/engine/indicators/oil_pressure_psi", {60, 60})
check.says(4, {"Engine 2 oil pressure, green.", "Generator 1 and 2?"}, "what she sees herself she ticks")
check.hear("abort", 4)
sim.said()

-- It comes up by itself when both engines run, once.
sim.set("sim/flightmodel/engine/ENGN_running", {1, 1})
check.says(4, {"Shall I read the after start checklist?"}, "a checklist comes up by itself")
check.asks("no", 4, {"Standing by, Sir."}, "and is not wanted")
check.says(30, {}, "it does not come up again")

-- A value that must rise while the item is the current one; another that must pass from one to another.
sim.set("sim/cockpit2/engine/actuators/throttle_ratio_all", 0.5)
check.hear("before takeoff checklist", 5)
for _, answer in ipairs {"checked", "continue"} do
    check.hear(answer, 4)
end
check.equal(sim.said()[4], "Throttle?", "the third item")
check.hear("checked", 3)
check.that(has(sim.said(), "I do not see it, Sir. Say continue to go on."), "it has not risen yet")
sim.set("sim/cockpit2/engine/actuators/throttle_ratio_all", 0.65)
sim.run(1)
check.asks("checked", 4, {"Fuel balance?"}, "now it has")
check.hear("abort", 4)

-- ---- Any list can be read to its end ----

import "jet"
for _, call in ipairs {"cockpit preparation checklist", "before start checklist", "after start checklist",
                       "landing checklist"} do
    said = read(call)
    check.that(#said > 5, call .. " is read")
end
check.hear("landing checklist", 5)
check.hear("advised", 5)
sim.said()
check.asks("speed", 5, {"Autobrake?"}, "letting go of the button is no answer to what takes any")
import "latin"
said = read("prévol checklist")
check.that(has(said, "V1, VR speeds?"), "letters stay letters")
check.that(has(said, "A, left, right."), "ornaments are not said")
check.that(has(said, "Ceintures attachées?"), "nor are capitals")

-- ---- Nothing is imported twice, or over what is there ----

check.write(own, "no checklist at all\n")
check.systems {}
for _, file in ipairs {"CHECKLIST DATA", "CHECKLIST", "CHECKLIST MENU"} do
    os.remove(plugin .. "systems/" .. file .. ".txt")
end
check.restart(6)
sim.said()
sim.choose("Fennic/Import Checklist")
check.list(sim.said(), {"I could not import the checklists."}, "a file without a checklist")
check.equal(check.read(plugin .. "systems/CHECKLIST.txt"), nil, "and nothing is written")
sim.stop()
