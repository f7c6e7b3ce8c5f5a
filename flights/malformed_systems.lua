-- Systems files with mistakes: each is named in the log with file, line and field, its line is dropped, and
-- everything around it works.
local check = require "lib.check"

local faults = {} -- what the log must say

-- Writes a file whose lines may each be followed by what is wrong with it.
local function file(name, lines)
    local text = {}
    for number, line in ipairs(lines) do
        if type(line) == "table" then
            faults[#faults + 1] = ("systems/%s.txt line %d: %s"):format(name, number, line[2])
            line = line[1]
        end
        text[number] = line
    end
    return table.concat(text, "\n")
end

local function output(name, initial)
    return ("out=%s,double,,%s,,,,,test/%s,new,,0"):format(name, initial or "0", name)
end

check.systems({
    BAD = file("BAD", {
        "draw=1",
        {"dev=TOO EARLY", "a device needs a system before it"},
        {output("too_early"), "a parameter needs a system and a device before it"},
        "logic:", "calc=[1]",
        "sys=BAD",
        {output("no_device"), "a parameter needs a system and a device before it"},
        "dev=D",
        "this line belongs to nothing",
        output("good", "1"),
        {"calc=[5]", 'stands before the first "logic:"'},
        "logic:",
        {"just a remark", "neither a keyword nor a comparison"},
        {"calc=[1.2.3]", 'operand "1.2.3" is no number'},
        {"calc=[-]+[1]", 'operand "-" is no number'},
        {"calc=[CBLOCKx]", 'operand "CBLOCKx" is no number'},
        {"graf=0", 'y "" is no number'},
        {"graf=a,1", 'x "a" is no number'},
        {"execute=0,Hello", "an action has three fields: type, text, value"},
        {"execute=zero,Hello,0", 'type "zero" is no number'},
        {"execute=0,Hello,none", 'value "none" is no number'},
        {"[--]==[1]", 'left side "--" is no number'},
        {"[1]==[1..2]", 'right side "1..2" is no number'},
        "calc=[6]",
        {"out=eight,fields,,1,,,,,", "a parameter has ten to twelve fields"},
        {"out=fields,double,,1,,,,,", "a parameter has ten to twelve fields"},
        "logic:", "calc=[9]",
        {output("bad_initial", "1.5 kg"), 'initial value "1.5 kg" is no number'},
        {output("no_initial", ""), 'initial value "" is no number'},
        {"out=bad_min,double,,1,low,,,,test/bad_min,new,,0", 'minimum "low" is no number'},
        {"out=bad_max,double,,1,,high,,,test/bad_max,new,,0", 'maximum "high" is no number'},
        "out=ten,double,,2.5,,,,,test/ten,new",
        "out=eleven,double,,3.5,,,,,test/eleven,new,text",
        "out=exponent,double,,1e3,,,,,test/exponent,new,,0",
        "\r", "",
        output("after", "4") .. "\r",
        "logic:\r",
        "[BAD.D.good]==[6]\r",
        "calc=[7]\r",
    }),
    NEXT = "dev=STILL BAD\n" .. output("next_file", "8") .. "\n",
    LAST = "sys=LAST\ndev=D\n" .. output("last_file", "9"),
}, {"BAD", "..", "../BAD", "sub/BAD", "MISSING", "NEXT", "LAST"})
faults[#faults + 1] = "systems/_systems.txt line 2: no name of a file"
faults[#faults + 1] = "systems/_systems.txt line 3: no name of a file"
faults[#faults + 1] = "systems/_systems.txt line 4: no name of a file"

sim.start()
local log = check.log()
for _, fault in ipairs(faults) do check.equal(check.count(log, fault), 1, "log of: " .. fault) end
check.equal(check.count(log, " - line dropped: "), #faults, "lines dropped")

sim.frames(3)
for name, value in pairs {good = 6, ten = 2.5, eleven = 3.5, exponent = 1000, after = 7, next_file = 8,
                          last_file = 9} do
    check.equal(sim.get("test/" .. name), value, name)
end
for _, name in ipairs {"too_early", "no_device", "bad_initial", "no_initial", "bad_min", "bad_max"} do
    check.that(not sim.exists("test/" .. name), name .. " is dropped")
end
