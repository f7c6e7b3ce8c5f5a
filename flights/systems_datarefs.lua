-- Parameters bound to datarefs: of every type, of aircraft that publish theirs late, elements of arrays, and
-- the plug-in's own, which others read and write.
local check = require "lib.check"

sim.publish("test/int", "int", -3)
sim.publish("test/float", "float", 1.5)
sim.publish("test/double", "double", 0.1)
sim.publish("test/ints", "int[20]", {10, 11, 12})
sim.publish("test/floats", "float[3]", {0.5, 1.5, 2.5})
sim.publish("test/text", "string", "abc")
sim.publish("test/taken", "float", 4)

local lines = {"sys=S", "dev=IN"}
local function input(name, dataref, type, mode)
    lines[#lines + 1] = ("out=%s,%s,,0,,,%s,%s,,,,0"):format(name, type or "double", dataref, mode or "exist")
end
local function output(name, dataref, value, type)
    lines[#lines + 1] = ("out=%s,%s,,0,,,,,%s,exist,,0\nlogic:\ncalc=%s"):format(name, type or "double", dataref, value)
end
for _, name in ipairs {"int", "float", "double", "text"} do input(name, "test/" .. name) end
input("element", "test/ints[2]")
input("last", "test/ints[15]")
input("beyond", "test/ints[16]")
input("negative", "test/ints[-1]")
input("no_number", "test/ints[two]")
input("no_index", "test/ints")
input("short", "test/floats[2]")
input("too_short", "test/floats[9]")
input("late", "test/late")
input("late_element", "test/late_floats[1]")
input("own", "test/own", "double", "new")
input("own_int", "test/own_int", "int", "new")
input("taken", "test/taken", "double", "new")
input("odd_mode", "test/int", "double", "maybe")

lines[#lines + 1] = "dev=SHOWN"
local shown = {"int", "float", "double", "text", "element", "last", "beyond", "negative", "no_number", "no_index",
               "short", "too_short", "late", "late_element", "own", "own_int", "taken", "odd_mode"}
for _, name in ipairs(shown) do
    lines[#lines + 1] = ("out=%s,double,,0,,,,,shown/%s,new,,0\nlogic:\ncalc=[S.IN.%s]"):format(name, name, name)
end

lines[#lines + 1] = "dev=OUT\nout=level,double,,0,-1.5,6,test/level,new,,,,0"
output("int", "out/int", "[S.OUT.level]", "integer")
output("float", "out/float", "[S.OUT.level]")
output("double", "out/double", "[S.OUT.level]")
output("element", "out/floats[1]", "[S.OUT.level]")
output("beyond", "out/floats[16]", "[S.OUT.level]")
output("late", "out/late[3]", "[S.OUT.level]")
output("taken", "test/taken", "[S.OUT.level]")
sim.publish("out/int", "int", 0)
sim.publish("out/float", "float", 0)
sim.publish("out/double", "double", 0)
sim.publish("out/floats", "float[20]", 5)
check.systems {S = table.concat(lines, "\n")}

sim.start()
sim.frames(2)

local function expect(values)
    sim.frames(1)
    for name, value in pairs(values) do check.equal(sim.get(name), value, name) end
end

-- ---- In ----

expect {["shown/int"] = -3, ["shown/float"] = 1.5, ["shown/text"] = 0, ["shown/element"] = 12,
        ["shown/last"] = 0, ["shown/short"] = 2.5, ["shown/beyond"] = 0, ["shown/negative"] = 0,
        ["shown/no_number"] = 0, ["shown/no_index"] = 0, ["shown/too_short"] = 0, ["shown/odd_mode"] = 0}
check.near(sim.get("shown/double"), 0.1, 1e-7, "a double")
sim.set("test/ints", 77, 15)
sim.set("test/int", 2147483647)
expect {["shown/last"] = 77, ["test/text"] = "abc"}
check.near(sim.get("shown/int"), 2147483647, 200, "a large int")

-- What a parameter publishes for input, others write; it follows.
expect {["test/own"] = 0, ["test/own_int"] = 0}
sim.set("test/own", 0.75)
sim.set("test/own_int", -12)
expect {["shown/own"] = 0.75, ["shown/own_int"] = -12, ["test/own"] = 0.75}

-- A name that somebody has published before stays his, and his alone.
local log = check.log()
check.equal(check.count(log, "CUSTOM DATAREF (float) ERROR (already exist): test/taken"), 1, "already exists")
expect {["shown/taken"] = 0}

-- Datarefs that the aircraft publishes only in flight are found in the next frame.
sim.run(10)
expect {["shown/late"] = 0, ["shown/late_element"] = 0}
sim.publish("test/late", "float", 8.5)
sim.publish("test/late_floats", "float[2]", {1, 2.25})
expect {["shown/late"] = 8.5, ["shown/late_element"] = 2.25}
sim.set("test/late", 9)
expect {["shown/late"] = 9}

-- ---- Out ----

sim.set("test/level", 3.75)
expect {["out/int"] = 3, ["out/float"] = 3.75, ["out/double"] = 3.75, ["test/taken"] = 3.75}
check.list({table.unpack(sim.get("out/floats"), 1, 3)}, {5, 3.75, 5}, "an element")
sim.publish("out/late", "int[6]", 1)
sim.set("test/level", 6)
sim.frames(1)
check.list(sim.get("out/late"), {1, 1, 1, 6, 1, 1}, "an element of a late array")

-- Limits hold, and what others write over is written again; the simulator's numbers may be none at all.
for _, case in ipairs {{-1.75, -1.5, -1}, {1e300, 6, 6}, {2.5, 2.5, 2}} do
    sim.set("test/level", case[1])
    expect {["out/float"] = case[2], ["out/int"] = case[3]}
end
sim.set("out/float", 99)
expect {["out/float"] = 2.5}
sim.set("test/level", 0 / 0)
expect {["out/int"] = 0}

-- An element that cannot be reached is said once, and nothing is written.
sim.run(5)
check.equal(sim.get("out/floats", 16), 5, "element 16 untouched")
for _, line in ipairs(check.log()) do log[#log + 1] = line end
for _, name in ipairs {"test/ints[16]", "test/ints[-1]", "test/ints[two]", "out/floats[16]"} do
    check.equal(check.count(log, "array index outside 0 to 15: " .. name), 1, name)
end
