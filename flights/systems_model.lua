-- The systems model as an author sees it: numbers go in by datarefs, are compared and computed every frame,
-- and come out by datarefs.
local check = require "lib.check"

sim.publish("test/a", "double", 0)
sim.publish("test/b", "int", 0)

-- Every parameter of the device OUT publishes its value as "test/<name>".
local lines = {"sys=MODEL", "dev=IN", "out=A,double,,0,,,test/a,exist,,,,0", "out=B,integer,,0,,,test/b,exist,,,,0",
               "dev=OUT"}
local function parameter(name, type, initial, body, limits)
    lines[#lines + 1] = "out=" .. name .. "," .. type .. ",," .. initial .. "," .. (limits or ",") .. ",,,test/"
        .. name .. ",new,,0\n" .. (body or "")
end
local A, B = "[MODEL.IN.A]", "[MODEL.IN.B]"

parameter("kept", "double", "2.5")
parameter("kept_int", "int", "-2.9")
parameter("never", "double", "7", "logic:\n[1]==[2]\ncalc=[9]")
parameter("left_to_right", "double", "0", "logic:\ncalc=" .. A .. "+" .. B .. "*[2]")
parameter("by_zero", "double", "5", "logic:\ncalc=[3]/[0]")
parameter("minus", "double", "0", "logic:\ncalc=" .. A .. "-[0.5]/" .. B)
parameter("binary", "double", "0", "logic:\ncalc=" .. A .. "b2i[0]")
parameter("floor", "double", "0", "logic:\ncalc=" .. A .. "flr[0]")
parameter("constant", "double", "0", "logic:\ncalc=[7]")
parameter("earlier", "double", "0", "logic:\ncalc=" .. A .. "*" .. A .. "\ncalc=" .. B
          .. "\ncalc=[CBLOCK0]+[CBLOCK1]-[CBLOCK2]")
parameter("integer", "integer", "0", "logic:\ncalc=" .. A)
parameter("of_integer", "double", "0", "logic:\ncalc=[MODEL.OUT.integer]*[2]")
parameter("graph", "double", "0", "logic:\ncalc=" .. A .. "\ngraf=0,0\ngraf=10,100\ngraf=20,50\ngraf=20,0")
parameter("one_point", "double", "0", "logic:\ncalc=" .. A .. "\ngraf=0,55")
parameter("limited", "double", "0", "logic:\ncalc=" .. A, "-1.5,3.25")
parameter("limited_int", "integer", "50", "", "0,10")
parameter("counter", "double", "0", "logic:\ncalc=[MODEL.OUT.counter]+[1]")
parameter("from_itself", "double", "3", "logic:\ncalc=+[1]")
parameter("forward", "double", "0", "logic:\ncalc=[LATER.DEVICE.VALUE]")
parameter("nowhere", "double", "0", "logic:\n[MODEL.OUT.nothing]==[0]\ncalc=[MODEL.OUT.nothing]+[4]")
parameter("two_names", "double", "0", "logic:\ncalc=[MODEL.IN]")
parameter("first_of_two", "double", "0", "logic:\ncalc=[TWIN.D.VALUE]")
parameter("word", "text", "9", "")
for name, comparison in pairs {eq = "==", ne = "!=", gt = ">", lt = "<", ge = ">=", le = "<="} do
    parameter(name, "int", "0", "logic:\n" .. A .. comparison .. B .. "\ncalc=[1]\nlogic:\ncalc=[0]")
end
parameter("listed", "int", "0", "logic:\n" .. A .. "==[1;2;x;5]\ncalc=[1]\nlogic:\ncalc=[0]")
parameter("unlisted", "int", "0", "logic:\n" .. A .. "!=[1;2;5]\ncalc=[1]\nlogic:\ncalc=[0]")
parameter("list_ordered", "int", "0", "logic:\n" .. A .. ">[1;2]\ncalc=[1]\nlogic:\ncalc=[0]")
parameter("chain", "int", "0", "logic:\n" .. A .. "==[1]\n||\n" .. A .. "==[2]\n&&\n" .. B
          .. "==[1]\ncalc=[1]\nlogic:\ncalc=[0]")
parameter("only_or", "int", "0", "logic:\n||\n" .. A .. "==[99]\ncalc=[1]\nlogic:\ncalc=[0]")
parameter("first_block", "int", "0", "logic:\n" .. A .. ">[0]\ncalc=[1]\nlogic:\n" .. A
          .. ">[-5]\ncalc=[2]\nlogic:\ncalc=[3]")

check.systems({MODEL = table.concat(lines, "\r\n"),
               LATER = "sys=LATER\ndev=DEVICE\nout=VALUE,double,,0.25,,,,,,,,0",
               TWIN = "sys=TWIN\ndev=D\nout=VALUE,int,,1,,,,,,,,0\nsys=TWIN\ndev=D\nout=VALUE,int,,2,,,,,,,,0\n"
                   .. "dev=D\nout=VALUE,int,,3,,,,,,,,0"}, {"MODEL", "TWIN", "LATER"})

sim.start()
local log = check.log()
check.equal(check.count(log, "Error!!! Cant find parameter: "), 3, "unresolved links")
check.equal(check.count(log, "Error!!! Cant find parameter: MODEL.OUT.nothing"), 2, "each once")
sim.frames(2)

local function expect(values)
    sim.frames(1)
    for name, value in pairs(values) do check.equal(sim.get("test/" .. name), value, name) end
end
local function inputs(a, b)
    sim.set("test/a", a)
    sim.set("test/b", b)
end

expect {kept = 2.5, kept_int = -2, never = 7, by_zero = 0, constant = 7, forward = 0.25, nowhere = 4,
        two_names = 0, first_of_two = 1, limited_int = 10, word = 0, only_or = 1}

inputs(3, 4)
expect {left_to_right = 14, minus = 0.625, earlier = 13, integer = 3, of_integer = 6, graph = 30, limited = 3,
        eq = 0, ne = 1, gt = 0, lt = 1, ge = 0, le = 1, listed = 0, unlisted = 1, list_ordered = 1}
inputs(2, 2)
expect {eq = 1, ne = 0, gt = 0, lt = 0, ge = 1, le = 1, listed = 1, unlisted = 0, chain = 0, first_block = 1}
inputs(2.5, 1)
expect {eq = 0, gt = 1, ge = 1, le = 0, integer = 2, of_integer = 5, floor = 2, listed = 0, unlisted = 1,
        graph = 25, one_point = 2.5}
inputs(1, 1)
expect {chain = 1}
inputs(2, 1)
expect {chain = 1}
inputs(1, 0)
expect {chain = 0}
inputs(-2.5, 0)
expect {floor = -3, integer = -2, limited = -1.5, graph = 0, minus = 0, list_ordered = 0, first_block = 2}
inputs(-7, 0)
expect {first_block = 3}
inputs(15, 0)
expect {graph = 75, limited = 3.25}
inputs(20, 0)
expect {graph = 0}
inputs(25, 0)
expect {graph = 0}
for value, number in pairs {[1100.9] = 12, [101] = 5, [12] = 1, [29] = 0, [0] = 0} do
    inputs(value, 0)
    expect {binary = number}
end

-- Links to the parameter itself, and calculations that begin with an operator, go on from the value before.
local counted, own = sim.get("test/counter"), sim.get("test/from_itself")
sim.frames(100)
expect {counter = counted + 101, from_itself = own + 101}

-- Whoever writes a parameter's output dataref is overruled in the next frame.
sim.set("test/kept", 99)
expect {kept = 2.5}

-- The simulator's numbers may be none at all.
inputs(0 / 0, 0)
expect {ne = 1, eq = 0, integer = 0}
inputs(1e300, 0)
expect {integer = 2147483647, limited = 3.25}
inputs(1, 0)
expect {integer = 1, limited = 1}
