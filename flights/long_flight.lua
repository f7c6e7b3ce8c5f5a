-- The end of a day and a night in the air, a checklist every minute, two frames a second: nothing grows, nothing
-- runs away.
-- (The frame rate is given in CMakeLists.txt.)
local check = require "lib.check"

sim.publish("test/round", "int", 0)
sim.publish("test/lamp", "float[8]", 0)
local LONG = ("and so on "):rep(300) -- so that a list of spoken or heard texts that only grows is seen to
check.systems {S = ([[
sys=S
devstack=CRUISE CHECK
out=CALL,execute,,0,,,,,,,,0
logic:
instring=cruise check
execute=12,in a moment,7
execute=1,Cruise check number <S.D.ROUND>,0
execute=2,tablet,1
execute=0,LONG,0
out=FUEL,execute,,0,,,,,,,,0
logic:
instring=checked
||
instring=in a moment
execute=8,test/lamp[3],1
execute=7,,2
execute=1,Complete#Completed,0
dev=D
out=ROUND,integer,,0,,,test/round,exist,,,,0
out=LATE,double,,0,,,test/never,exist,test/never_either,exist,,0
]]):gsub("LONG", LONG)}

local ROUNDS = 300
local WARM = 60

-- Resident memory in MB; nil where there is no /proc. Wine has it on a drive.
local function resident()
    local statm = check.read("/proc/self/statm") or check.read("Z:/proc/self/statm")
    return statm and tonumber(statm:match("^%d+ (%d+)")) * 4096 / 2 ^ 20
end

check.start(10)
check.forget()

local logged, memory = {}, nil
for round = 1, ROUNDS do
    sim.set("test/round", round)
    sim.set("test/lamp", 0, 3)
    check.hear("cruise check", 10)
    sim.hear(round .. LONG:sub(1, 500))
    check.hear("checked", 45)
    local said = sim.said()
    check.list({said[1], said[2], #said}, {"Cruise check number " .. round, LONG, 3}, "round " .. round)
    check.equal(sim.get("test/lamp", 3), 1, "round " .. round)
    logged[round] = #sim.log()
    sim.sent()

    check.near(sim.get("kv/fo/head_x"), 0, 45, "the head's pitch")
    check.near(sim.get("kv/fo/head_y"), 0, 60, "the head's turn")
    check.near(sim.get("kv/fo/head_z"), 0, 45, "the head's tilt")
    if round == WARM then
        sim.set("sim/time/total_flight_time_sec", sim.time() + 20 * 3600)
        collectgarbage()
        memory = resident()
    end
end
check.that(sim.time() > 24 * 3600, "the time has passed")
check.equal(logged[ROUNDS], logged[WARM], "log lines a round")
if memory then
    collectgarbage()
    local grown = resident() - memory
    check.that(grown < 0.5, ("grown by %.2f MB in 4 hours"):format(grown))
end

-- What she takes down at the end is as small as at the beginning.
sim.stop()
check.that(#check.read(sim.dir("plugin") .. "data/context.txt") < 400, "the context file")
