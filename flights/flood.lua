-- Too much of everything: twenty thousand answers at once, ten thousand saved values. She goes on as ever. (That the
-- log stays one that can be read is tested in tests/util/.)
local check = require "lib.check"

local ANSWERS, SAVED = 20000, 10000

local text = {"sys=CREW", "devstack=QUESTION", "out=ASK,execute,,0,,,,,,,,0", "logic:", "instring=ask me",
              "execute=0,Well?,0", "out=ANSWER,execute,,0,,,,,,,,0"}
for i = 1, ANSWERS do
    text[#text + 1] = ("logic:\ninstring=answer %d\nexecute=0,You said %d,0"):format(i, i)
end
text[#text + 1] = "dev=OFFER\nout=START,execute,,0,,,,,,,,0\nlogic:\ninstring=offer all"
for i = 1, ANSWERS do text[#text + 1] = ("execute=12,offer %d,%d"):format(i % 5000, i % 2 * 60) end
text[#text + 1] = "dev=KEPT"
local saved = {}
for i = 1, SAVED do
    text[#text + 1] = ("out=P%d,double,,0,,,,,%s,new,,1"):format(i, i % 1000 == 0 and "test/p" .. i or "")
    saved[i] = ("CREW.KEPT.P%d=%d.5"):format(i, i)
end
check.systems {CREW = table.concat(text, "\n")}
check.write(sim.dir("plugin") .. "systems/_save.txt", table.concat(saved, "\n"))

check.start(4)
for i = 2000, SAVED, 1000 do check.equal(sim.get("test/p" .. i), i + 0.5, "saved value " .. i) end
-- The rule is the last line that holds the address, and that of P1000 is also a part of P10000's.
check.equal(sim.get("test/p1000"), SAVED + 0.5, "the last line")

sim.hear("offer all")
check.asks("ask me", 1, {"Well?"}, "asked")
local shown = {}
for _, line in ipairs(sim.screen_text()) do shown[line.text] = true end
check.that(shown["offer 1"] and not shown["offer 2"], "those with a time are shown")
check.asks("answer " .. ANSWERS, 1, {"You said " .. ANSWERS}, "answered")
