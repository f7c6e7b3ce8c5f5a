-- Files that fight back: folders where files should be, files that are missing or huge. The first officer starts,
-- says so in the log, and works. (Bytes that are no text are given to every reader in tests/fuzz/, and a folder that
-- cannot be written is tried in tests/util/.)
local check = require "lib.check"

local plugin = sim.dir("plugin")
local GOOD = "sys=GOOD\ndev=D\nout=TALK,execute,,0,,,,,test/talk,new,,1\nlogic:\ninstring=hello\nexecute=0,Hello,0\n"

-- Starts, has a word with her, stops. The log of it all.
local function fly(what)
    sim.set("sim/time/total_flight_time_sec", 31)
    check.forget()
    check.start(2)
    check.asks("hello", 1, {"Hello"}, what)
    sim.stop()
    return check.log()
end

-- The settings in custom/ are the way out when those in data/ cannot be read.
local settings = check.read(plugin .. "data/settings_mac.txt")
check.write(plugin .. "custom/settings_mac.txt", settings)
check.write(plugin .. "custom/settings_win.txt", settings)
local function restore()
    check.write(plugin .. "data/settings_mac.txt", settings)
    check.systems {GOOD = GOOD}
end
restore()

-- ---- Folders for files ----

local folders = {"data/settings_mac.txt", "data/voicelist_mac.txt", "data/context.txt", "data/obj/fennic.txt",
                 "systems/_save.txt", "systems/FOLDER.txt", "custom/positions-w/rest/rest_folder.txt"}
check.write(plugin .. "systems/_systems.txt", "FOLDER\nGOOD\n")
for _, path in ipairs(folders) do
    os.remove(plugin .. path)
    check.folder(plugin .. path)
end
local definition = plugin .. "data/obj/fennic.txt"
local log = fly("folders")
for _, line in ipairs {"!!! Error: Cant read file " .. definition, "Cant open file " .. plugin .. "data/voicelist_mac.txt",
                       "Cant write file " .. plugin .. "data/context.txt",
                       "Cant write file " .. plugin .. "data/settings_mac.txt",
                       "Cant write file " .. plugin .. "systems/_save.txt"} do
    check.that(check.count(log, line) >= 1, "log: " .. line)
end
for _, path in ipairs(folders) do
    check.that(os.remove(plugin .. path), path .. " is still the folder that it was")
end

-- Settings in UTF-16 are not read, and not lost either.
restore()
local wide = "\xFF\xFE" .. settings:gsub(".", "%0\0")
check.write(plugin .. "data/settings_mac.txt", wide)
check.start(1)
sim.stop()
log = check.log()
check.equal(check.count(log, "data/settings_mac.txt line 1: this is no plain text"), 1, "told")
check.equal(check.read(plugin .. "data/settings_mac.txt.kept"), wide, "and kept")

-- ---- Nothing there ----

restore()
log = fly("no definition, no voices")
check.equal(check.count(log, "!!! Error: Cant read file " .. definition), 1, "no definition")
check.that(check.read(plugin .. "data/context.txt"):find("^hello\r\n"), "the context is written again")
check.equal(check.read(plugin .. "systems/_save.txt"), "GOOD.D.TALK=0.000000\r\n", "saved values, too")
check.write(plugin .. "systems/_systems.txt", "")
check.start(2)
check.equal(sim.exists("test/talk"), false, "an empty list of systems")
sim.stop()

-- ---- Long files ----

-- Files of some megabytes: many lines, and one line.
restore()
check.write(plugin .. "systems/HUGE.txt", "sys=HUGE\ndev=D\nout=X,double,,0,,,,,test/x,new,,0\nlogic:\n"
    .. ("calc=[HUGE.D.X]+[1]\n"):rep(50000) .. "out=Y,double,,0,,,,,test/y,new,,0\nlogic:\ncalc=[2]"
    .. ("+[2]"):rep(250000))
check.write(plugin .. "systems/_systems.txt", "HUGE\n" .. ("GONE\n"):rep(2000) .. "GOOD\n")
check.write(plugin .. "systems/_save.txt", ("x=1\n"):rep(200000))
check.write(plugin .. "data/voicelist_mac.txt", ("voice\n"):rep(200000))
check.write(plugin .. "data/settings_mac.txt", settings .. ("y=1\n"):rep(200000) .. ("z"):rep(2000000))
sim.start()
sim.frames(2)
check.equal(sim.get("test/x"), 2, "a parameter of 50,000 calculations")
check.equal(sim.get("test/y"), 500002, "a calculation of 250,000 elements")
check.equal(sim.get("test/talk"), 0, "the file behind")
sim.stop()
