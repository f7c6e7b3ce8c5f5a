-- What a parameter flagged for saving keeps from flight to flight.
local check = require "lib.check"

local systems = sim.dir("plugin") .. "systems/"
local save = systems .. "_save.txt"

os.remove(save)
check.systems {S = [[
sys=S
dev=D
out=HOURS,double,h,1.5,,,,,test/hours,new,,1
logic:
[S.D.STEP]!=[0]
calc=[S.D.HOURS]+[S.D.STEP]
out=LANDINGS,integer,,3,,,test/landings,new,,,,1
out=FORGOTTEN,double,,1,,,test/forgotten,new,,,,0
out=SHORT,double,,1,,,test/short,new,,
out=STEP,double,,0,,,test/step,new,,,,0
devstack=SEQUENCE
out=FIRST,execute,,0,,,,,,,,1
logic:
instring=begin
execute=0,Begun,0
out=SECOND,execute,,0,,,,,test/second,new,,1
logic:
instring=go on
execute=0,On,0
]]}

-- The first flight: the file's own values; what was reached is saved.
sim.start()
sim.frames(2)
check.equal(sim.get("test/hours"), 1.5, "the file's value")
sim.set("test/step", 0.25)
sim.frames(4)
sim.set("test/step", 0)
sim.set("test/landings", 17)
sim.set("test/forgotten", 99)
sim.frames(1)
sim.hear("begin")
sim.stop()
check.equal(check.read(save), "S.D.HOURS=2.500000\r\nS.D.LANDINGS=17.000000\r\nS.SEQUENCE.FIRST=1.000000\r\n"
    .. "S.SEQUENCE.SECOND=0.000000\r\n", "saved values")

-- The second: they are back, sequences at their step; the parameter without the flag is not.
sim.start()
sim.frames(2)
check.equal(sim.get("test/hours"), 2.5, "restored")
check.equal(sim.get("test/landings"), 17, "restored")
check.equal(sim.get("test/forgotten"), 1, "not saved")
check.asks("go on", 1, {"Begun", "On"}, "the sequence goes on where it was")
sim.set("test/step", -10)
sim.frames(2)
check.that(#sim.restart() == 0, "nothing left behind")
sim.frames(1)
check.equal(sim.get("test/hours"), -7.5, "over another restart")
sim.stop()

-- By hand: the last line that holds the name wins, values that are none are passed over and said in the log.
check.write(save, "S.D.HOURS=8\nx S.D.HOURSGLASS=9.5\nS.D.HOURS=many\nS.D.LANDINGS\n\nUNKNOWN.X.Y=3\n")
sim.log()
sim.start()
local log = check.log()
check.equal(check.count(log, "systems/_save.txt line 3: "), 1, "a value that is none")
check.equal(check.count(log, "systems/_save.txt line 4: "), 1, "no value")
sim.frames(2)
check.equal(sim.get("test/hours"), 9.5, "the last line")
check.equal(sim.get("test/landings"), 3, "the file's value")

-- A systems file that is gone, unreadable or not in the list for a flight takes no saved values with it. The
-- lines of what is not loaded stand first, where they cannot be taken for those of what is.
sim.stop()
local kept = check.read(save)
check.that(kept:find("^x S.D.HOURSGLASS=9.5\r\nUNKNOWN.X.Y=3\r\nS.D.HOURS=9.5"), kept)
-- One of the files is away, or a folder is in its place, which cannot be read.
local function flight_without(name, in_its_place, said)
    assert(os.rename(systems .. name, systems .. "x"))
    if in_its_place == "a folder" then sim.make_folder(systems .. name) end
    sim.log()
    sim.start()
    check.equal(check.count(check.log(), said), 1, said)
    sim.run(1)
    sim.stop()
    if in_its_place == "a folder" then check.that(sim.remove(systems .. name), "the folder is there") end
    assert(os.rename(systems .. "x", systems .. name))
    return check.read(save)
end
local noted = kept .. "a note that nobody reads\n"
check.write(save, noted)
check.equal(flight_without("_systems.txt", "nothing", "System files not found at " .. sim.dir("plugin")), noted,
            "no list")
check.equal(flight_without("_systems.txt", "a folder", "FileIO:Cant open file " .. systems .. "_systems.txt: "), noted,
            "a list that cannot be read")
check.write(systems .. "T.txt", "sys=T\ndev=D\nout=P,double,,1,,,,,,,,1\n")
check.write(systems .. "_systems.txt", "S\nT\n")
check.start(1)
sim.stop()
local both = kept .. "T.D.P=1.000000\r\n"
check.equal(check.read(save), both, "one more")
local function sorted(text)
    local lines = {}
    for line in text:gmatch("[^\r\n]+") do lines[#lines + 1] = line end
    table.sort(lines)
    return table.concat(lines, "\n")
end
for in_its_place, said in pairs {nothing = "Version: ",
                                 ["a folder"] = "FileIO:Cant open file " .. systems .. "S.txt: it is no regular file"} do
    check.equal(sorted(flight_without("S.txt", in_its_place, said)), sorted(both), in_its_place .. " for a systems file")
end

-- A "_save.txt" that cannot be read at the start is not replaced at the stop.
flight_without("_save.txt", "a folder", "FileIO:Cant open file " .. save)
check.equal(check.count(check.log(), "FileIO:Cant write file " .. save .. ": it could not be read"), 1, "not written")
check.write(systems .. "_save.txt", both)
sim.start()
sim.frames(2)
check.equal(sim.get("test/hours"), 9.5, "all there again")
sim.stop()
