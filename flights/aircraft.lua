-- Which aircraft the first officer knows, and what knowing one brings with it.
local check = require "lib.check"

local folder, plugin = sim.dir("aircraft"), sim.dir("plugin")
check.systems {S = "sys=S\ndev=D\nout=LOADED,integer,,1,,,,,test/loaded,new,,0\n"}

local RUNWAYS = "kv/fnc/orvik/"

-- Starts with an aircraft file of this name and description; the log of the start.
local isAboard
local function start(name, description, state, objects)
    if isAboard then sim.stop() end
    isAboard = true
    check.aircraft(name, description, objects)
    check.settings {installation = tostring(state or 2)}
    check.forget()
    sim.start()
    sim.frames(2)
    return check.log()
end

-- ---- The aircraft of the table ----

-- A departure runway, a little way off, for those that compute it.
sim.world(47.46, 8.55)
sim.publish("laminar/B738/fms/ref_runway_start_lat", "float", 47.46)
sim.publish("laminar/B738/fms/ref_runway_start_lon", "float", 8.55)

local known = {
    {"Cessna_172SP.acf", "Cessna 172 SP Skyhawk - 180HP - 2 seats", "Cessna 172 SP Skyhawk"},
    {"a319.acf", "A319 with high fidelity system modelling", "TL319"},
    {"a321.acf", "A321 with high fidelity system modelling", "TL321"},
    {"b738_4k.acf", "Boeing 737-800X", "O737X", true},
    {"737_80NG.acf", "Boeing 737-800NG", "737 Level Up", true, 738},
    {"737_80NG.acf", "Boeing 737-900ER", "737 Level Up", true, 739},
    {"737_80NG.acf", "Boeing 737-600NG", "737 Level Up", true, 736},
    {"737_80NG.acf", "Boeing 737-700NG", "737 Level Up", true, 737},
    {"737_80NG.acf", "Boeing 737-900NG and more", "737 Level Up", true, 739},
    {"a340.acf", "KV340-500", "KV345"},
}
for _, aircraft in ipairs(known) do
    local name, description, label, hasRunways, variant = table.unpack(aircraft)
    local log = start(name, description)
    check.equal(check.count(log, "Aircraft detected: " .. label), 1, description)
    check.equal(sim.get("test/loaded"), 1, description .. ": systems")
    check.equal(sim.get(RUNWAYS .. "ldg_rwy/delta_hdg_deg"), hasRunways and -1 or nil, description .. ": runways")
    check.equal((sim.get(RUNWAYS .. "to_rwy/dist_m") or 0) > 100, hasRunways or false, description .. ": departure")
    check.equal(sim.get("kv/fnc/lu_mode"), variant, description .. ": variant")
end

-- The same without the model file: known, but without systems and runways.
for _, aircraft in ipairs(known) do
    local log = start("other.acf", aircraft[2])
    check.equal(check.count(log, "Aircraft detected: " .. aircraft[3]), 1, aircraft[2])
    for _, name in ipairs {"test/loaded", RUNWAYS .. "to_rwy/dist_m", "kv/fnc/lu_mode"} do
        check.that(not sim.exists(name), aircraft[2] .. " has " .. name)
    end
end

-- Aircraft that only mention another, or are written a little differently, are strangers. The first officer
-- is aboard all the same.
for _, description in ipairs {"Not a Boeing 767 300ER", "cessna 172 SP Skyhawk - 180HP", "Boeing 737-800", "", " "} do
    local log = start("b738_4k.acf", description)
    check.equal(check.count(log, "Aircraft detected"), 0, "stranger: " .. description)
    check.that(not sim.exists("test/loaded"), "no systems for a stranger")
    check.equal(check.messages()[1], "contextpath>" .. plugin, "aboard: " .. description)
end

-- ---- Whether the figure is installed ----

-- Whether she works in the aircraft that has started, and what the settings say afterwards.
local function expect(works, saved, what)
    check.equal(check.works(), works, what)
    sim.stop()
    isAboard = false
    check.equal(check.read(plugin .. "data/settings_mac.txt"):match("installation=(%-?%d+)"), tostring(saved), what)
end

for state = -1, 2 do
    start("Cessna_172SP.acf", "Cessna 172 SP Skyhawk - 180HP", state)
    check.equal(sim.get("test/loaded"), 1, "the model is loaded in any state")
    expect(state == 2, state, "state " .. state)
    start("a340.acf", "KV340-500", state)
    expect(true, 11, "the aircraft that carries the figure itself needs no setup")
end

-- One aircraft must have the figure in its aircraft file, whatever the settings say.
start("767-300ER_xp11.acf", "Boeing 767 300ER")
expect(false, 0, "the 767 without the figure")
start("767-300ER_xp11.acf", "Boeing 767 300ER", 2, "P _obja/0/_v10_att_file_stl kvfennic.obj\n")
expect(true, 2, "the 767 with the figure")

-- An object in the aircraft that is not the one shipped, by its number of lines, takes the setup back.
check.write(plugin .. "data/obj/kvfennic.obj", "I\n800\nOBJ\n\n")
for object, state in pairs {["A\r\n800\r\nOBJ\r\n"] = 2, ["A\n800\nOBJ\nTRIS 0 3\n"] = 0} do
    check.write(folder .. "objects/kvfennic.obj", object)
    start("a319.acf", known[2][2])
    expect(state == 2, state, object)
end
