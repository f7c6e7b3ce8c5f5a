-- Aircraft that "data/aircraft.txt" describes: an invented one is served, with what its row says; what is wrong in
-- the file costs its line alone; the aircraft that she knows are hers first.
--
-- With a folder as the first argument, a picture of the figure that was set up goes there.
local check = require "lib.check"

local folder, plugin = sim.dir("aircraft"), sim.dir("plugin")
check.systems {S = "sys=S\ndev=D\nout=LOADED,integer,,1,,,,,test/loaded,new,,0\n"}
os.remove(folder .. "Cessna_172SP.acf")

local RUNWAYS = "kv/fnc/orvik/to_rwy/dist_m"
local file

-- Starts an aircraft with this file and description and a list of aircraft; the log of the start.
local function start(name, description, list)
    if file then
        sim.stop()
        os.remove(file)
    end
    file = folder .. name
    check.write(file, "I\n1200 Version\nACF\n\nPROPERTIES_BEGIN\nP acf/_descrip " .. description
        .. "\nP _obja/count 0\nPROPERTIES_END\n")
    check.write(plugin .. "data/aircraft.txt", list)
    check.settings {installation = "0"}
    sim.log()
    sim.start()
    sim.run(2)
    return check.log()
end

local function works()
    sim.sent()
    sim.run(1)
    sim.hear("abort")
    return #check.messages() > 0
end

local function tells(log, ...)
    for _, text in ipairs {...} do check.equal(check.count(log, text), 1, text .. " in\n" .. table.concat(log, "\n")) end
end

-- ---- What a row says, through line ends, blanks, comments and mistakes ----

local LIST = "\xEF\xBB\xBF# mine\r\nseat=1,2,3\r\naircraft = Zephyr Nine\rfile= zephyr.acf \n  runways=1 # of its own\n"
    .. "clicksound=yes\nsetup\nwings=2\nfile=other.acf\nseat=1,75,1,2,11,5\n\naircraft=Zephyr\nfile=../zephyr.acf\nsetup=acf\n"
local log = start("zephyr.acf", "Zephyr Nine-A", LIST)
tells(log, "Aircraft detected: Zephyr Nine, by data/aircraft.txt line 3",
      "data/aircraft.txt line 2: it stands before the first \"aircraft=\" - line dropped: seat=1,2,3",
      "data/aircraft.txt line 6: \"clicksound=\" is 0 or 1 - line dropped: clicksound=yes",
      "data/aircraft.txt line 7: neither a comment nor key=value - line dropped: setup",
      "data/aircraft.txt line 8: the keys are aircraft, file, setup, seat, runways and clicksound - line dropped: wings=2",
      "data/aircraft.txt line 9: the aircraft has a line \"file=\" already - line dropped: file=other.acf",
      "data/aircraft.txt line 10: \"seat=\" is three numbers with commas between them, x,y,z in feet - line dropped",
      "data/aircraft.txt line 13: \"file=\" is the name of an aircraft's file, which ends in .acf - line dropped")
check.equal(sim.get("test/loaded"), 1, "its systems")
check.equal(sim.get(RUNWAYS), -1, "its runways")
check.that(works(), "without a figure she works at once")
check.equal(#sim.widgets(), 0, "and asks for nothing")

log = start("zephyr.acf", "Zephyr One", LIST)
tells(log, "Aircraft detected: Zephyr, by data/aircraft.txt line 12")
check.that(not sim.exists(RUNWAYS), "another row, other traits")
check.that(not works() and #sim.widgets() > 0, "a figure is asked for")

-- ---- Another aircraft, another file, one that she knows ----

log = start("zephyr.acf", "A Zephyr", LIST)
tells(log, "This aircraft is not described in data/aircraft.txt: its description is \"A Zephyr\"")
check.that(not sim.exists("test/loaded"), "a stranger has no systems")

log = start("mistral.acf", "Zephyr Nine", "aircraft=Zephyr\nfile=zephyr.acf\n")
tells(log, "data/aircraft.txt line 1: there is no zephyr.acf in the aircraft's folder, so no systems are read for it")
check.that(not sim.exists("test/loaded"), "nor has one of another file")

local KNOWN = "Boeing 737-800X"
log = start("b738_4k.acf", KNOWN, "aircraft=\nsetup=none\nrunways=0\n")
tells(log, "Aircraft detected: O737X", "data/aircraft.txt line 1 is not used: she knows this aircraft without it")
check.equal(sim.get(RUNWAYS), -1, "what she knows herself comes first")
log = start("b738_4k.acf", KNOWN, "aircraft=Zephyr\n")
tells(log, "Aircraft detected: O737X", "data/aircraft.txt describes other aircraft than this one: " .. KNOWN)
log = start("mine.acf", KNOWN, "aircraft=\n") -- whose file she does not know
tells(log, "Aircraft detected: any aircraft, by data/aircraft.txt line 1")
check.equal(sim.get("test/loaded"), 1, "its systems")
