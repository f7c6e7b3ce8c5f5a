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
sim.hear("go on")
check.says(1, {"Begun", "On"}, "the sequence goes on where it was")
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
local function flight_without(take, bring_back, said)
    take()
    sim.log()
    sim.start()
    check.equal(check.count(check.log(), said), 1, said)
    sim.run(1)
    sim.stop()
    bring_back()
    return check.read(save)
end
local function shell(command) return function() assert(os.execute("cd '" .. systems .. "' && " .. command)) end end
check.equal(flight_without(shell("mv _systems.txt x"), shell("mv x _systems.txt"),
    "System files not found at " .. sim.dir("plugin")), kept, "no list")
check.equal(flight_without(shell("mv _systems.txt x && mkfifo _systems.txt"), shell("mv x _systems.txt"),
    "FileIO:Cant open file " .. systems .. "_systems.txt: "), kept, "a list that cannot be read")
check.write(systems .. "T.txt", "sys=T\ndev=D\nout=P,double,,1,,,,,,,,1\n")
check.write(systems .. "_systems.txt", "S\nT\n")
sim.start()
sim.run(1)
sim.stop()
local both = kept .. "T.D.P=1.000000\r\n"
check.equal(check.read(save), both, "one more")
local function sorted(text)
    local lines = {}
    for line in text:gmatch("[^\r\n]+") do lines[#lines + 1] = line end
    table.sort(lines)
    return table.concat(lines, "\n")
end
for _, way in ipairs {{"mv S.txt x", "mv x S.txt", "Version: "}, {"mv S.txt x && mkfifo S.txt", "mv x S.txt",
    "FileIO:Cant open file " .. systems .. "S.txt: it is no regular file"}} do
    local saved = flight_without(shell(way[1]), shell(way[2]), way[3])
    check.equal(sorted(saved), sorted(both), "without a systems file: " .. way[1])
end

-- A "_save.txt" that cannot be read at the start is not replaced at the stop.
check.equal(flight_without(shell("mv _save.txt x && mkfifo _save.txt"), shell("mv x _save.txt"),
    "FileIO:Cant open file " .. save), check.read(save), "unreadable")
check.write(systems .. "_save.txt", both)
sim.start()
sim.frames(2)
check.equal(sim.get("test/hours"), 9.5, "all there again")
sim.stop()
