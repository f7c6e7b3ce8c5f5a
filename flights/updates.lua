-- Updates: what the pilot has made stays, what he has not touched becomes new, what he has deleted stays away.
-- Three versions come as packages bring them; a folder without "shipped/" is left as it is.
local check = require "lib.check"

local plugin = sim.dir("plugin")

-- One system that answers with its version, so that what was read can be heard.
local function system(name, version)
    return string.format("sys=%s\r\ndev=D\r\nout=TALK,integer,,0,,,,,,,,0\r\nlogic:\r\ninstring=%s\r\n"
                         .. "execute=0,%s of version %d.,0\r\n", name, name:lower(), name, version)
end

-- FNV-1a over the text without carriage returns.
local function checksum(text)
    local sum = 0xCBF29CE484222325
    for byte in text:gsub("\r", ""):gmatch(".") do sum = (sum ~ byte:byte()) * 0x100000001B3 end
    return string.format("%016x", sum)
end

local function live(name) return check.read(plugin .. "systems/" .. name .. ".txt") end

local function ship(version, names)
    sim.remove(plugin .. "shipped")
    check.folder(plugin .. "shipped/systems")
    check.folder(plugin .. "shipped/custom/positions-w/rest")
    for _, name in ipairs(names) do
        check.write(plugin .. "shipped/systems/" .. name .. ".txt", system(name, version))
    end
    check.write(plugin .. "shipped/systems/_systems.txt", table.concat(names, "\r\n") .. "\r\n")
    check.write(plugin .. "shipped/custom/positions-w/rest/rest_new.txt", "0,pelvis,0,0," .. version .. ",\r\n")
end

-- What she answers to these words.
local function answers(words)
    sim.said()
    for _, word in ipairs(words) do
        check.hear(word, 3)
    end
    return sim.said()
end

local function fly()
    sim.log()
    check.restart(6)
    return check.log()
end

local function tells(lines)
    return check.count(lines, "You changed files of which there are new versions") > 0
end

local function menu_line()
    local found
    local function look(items)
        for _, item in ipairs(items or {}) do
            if (item.text or ""):find("^New versions beside your own files") then found = item.text end
            look(item.items)
        end
    end
    look(sim.menu())
    return found
end

-- ---- Without packages' files nothing is changed ----

local shipped_checklist = check.read(plugin .. "systems/CHECKLIST.txt")
check.start(6)
check.equal(check.read(plugin .. "systems/CHECKLIST.txt"), shipped_checklist, "a folder without shipped/ is as it was")
check.equal(check.read(plugin .. "data/shipped_files.txt"), nil, "and has no record")
check.equal(menu_line(), nil, "and the menu tells nothing")

-- ---- The first version, in an empty folder ----

sim.remove(plugin .. "systems")
ship(1, {"ALPHA", "BRAVO", "CHARLIE"})
check.that(not tells(fly()), "a fresh installation tells nothing")
check.list(answers {"alpha", "bravo", "charlie"},
           {"ALPHA of version 1.", "BRAVO of version 1.", "CHARLIE of version 1."}, "all is in place")

-- ---- The second: one file is the pilot's, one he has deleted, one is new ----

local mine = system("BRAVO", 1):gsub("of version 1", "as I want it")
check.write(plugin .. "systems/BRAVO.txt", mine)
os.remove(plugin .. "systems/CHARLIE.txt")
check.that(not tells(fly()), "the pilot's own work is not told as long as there is nothing newer")
-- An editor that writes other line ends changes nothing.
check.write(plugin .. "systems/ALPHA.txt", (live("ALPHA"):gsub("\r", "")))
ship(2, {"ALPHA", "BRAVO", "CHARLIE", "DELTA"})
local lines = fly()
check.that(tells(lines), "it is told that a new version lies beside his")
check.equal(menu_line(), "New versions beside your own files: 1", "in the menu, too")
check.list(answers {"alpha", "bravo", "charlie", "delta"},
           {"ALPHA of version 2.", "BRAVO as I want it.", "DELTA of version 2."}, "each file is whose it is")
check.equal(live("BRAVO"), mine, "his file is untouched")
check.equal(check.read(plugin .. "systems/BRAVO.txt..new"), system("BRAVO", 2), "the new one is beside it")
check.equal(live("CHARLIE"), nil, "what he deleted stays deleted")
check.equal(check.read(plugin .. "custom/positions-w/rest/rest_new.txt"), "0,pelvis,0,0,2,\r\n", "positions, too")

-- ---- The third: he took the new one, unchanged, and from now on it is ours again ----

check.write(plugin .. "systems/BRAVO.txt", system("BRAVO", 2))
os.remove(plugin .. "systems/BRAVO.txt..new")
ship(3, {"ALPHA", "BRAVO", "CHARLIE", "DELTA"})
check.that(not tells(fly()), "nothing is the pilot's own any more")
check.list(answers {"alpha", "bravo", "delta"},
           {"ALPHA of version 3.", "BRAVO of version 3.", "DELTA of version 3."}, "all are new")
check.equal(menu_line(), nil, "and the menu says no more")

-- ---- From a version before there was a record ----

os.remove(plugin .. "data/shipped_files.txt")
check.write(plugin .. "systems/ALPHA.txt", system("ALPHA", 1))
check.write(plugin .. "systems/BRAVO.txt", mine)
os.remove(plugin .. "systems/DELTA.txt")
ship(4, {"ALPHA", "BRAVO", "DELTA", "ECHO"})
local versions = {}
for _, name in ipairs {"ALPHA", "BRAVO", "DELTA"} do
    versions[#versions + 1] = checksum(system(name, 1)) .. "\tsystems\t" .. name .. ".txt"
end
check.write(plugin .. "shipped/versions.txt", table.concat(versions, "\n") .. "\n")
check.that(tells(fly()), "his own is found without a record")
check.equal(live("ALPHA"), system("ALPHA", 4), "an old version is known by its checksum")
check.equal(live("BRAVO"), mine, "his is not")
check.equal(live("DELTA"), nil, "what he had deleted stays deleted")
check.equal(live("ECHO"), system("ECHO", 4), "what was never there comes")

-- ---- A record that cannot be read: hands off ----

os.remove(plugin .. "data/shipped_files.txt")
check.folder(plugin .. "data/shipped_files.txt")
ship(5, {"ALPHA"})
lines = fly()
check.that(check.count(lines, "shipped files not put in place") == 1, "it is told")
check.equal(live("ALPHA"), system("ALPHA", 4), "nothing is replaced")
sim.stop()
