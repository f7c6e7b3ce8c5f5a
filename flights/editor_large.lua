-- A model of 30 systems, 300 devices and 6,000 parameters in the editor: scroll bars, pages, the wheel and the
-- usage list reach the last of everything. What is changed there is seen in the saved file.
local check = require "lib.check"
local editor = require "lib.editor"

local files, order = {}, {}
for s = 1, 30 do
    local lines = {"sys=S" .. s}
    for d = 1, 10 do
        lines[#lines + 1] = "dev=D" .. d
        for p = 1, d == 10 and 110 or 10 do -- the last device holds the most
            lines[#lines + 1] = ("out=P%d,double,,%d,,,,,,,,0\nlogic:\n[S%d.D%d.P1]>[%d]\ncalc=[S30.D10.P110]+[%d]")
                                    :format(p, p, s, d, p, p)
        end
    end
    order[s] = "S" .. s
    files["S" .. s] = table.concat(lines, "\n") .. "\n"
end
check.systems(files, order)

local function saved(name, text, what)
    editor.title("SAVE")
    local file = check.read(sim.dir("plugin") .. "systems/" .. name .. ".txt")
    check.that(file:find(text, 1, true), what .. ": " .. text .. " is not in " .. name)
end

editor.start(1280, 800)
editor.drag_bar(1)
editor.select(1, editor.rows())
editor.rename(1, editor.rows(), "LAST")
editor.select(2, 10)
for _ = 1, 10 do editor.page(3, "PAGE >") end
editor.rename(3, editor.rows(), "END")
saved("LAST", "out=END,", "the last parameter was renamed")
saved("S1", "calc=[LAST.D10.END]+[1.000000]", "the first link to it followed")

-- Back by a page, down by a click of the wheel.
editor.page(3, "< PAGE")
editor.wheel(3, -1)
editor.select(3, 1)
editor.detail("unit", "three below")
saved("LAST", "out=P70,double,three below,", "the wheel")
editor.wheel(3, 1000)
editor.select(3, 1)
editor.detail("unit", "the first")
saved("LAST", "out=P1,double,the first,", "the wheel to the top")
for _ = 1, 9 do editor.page(3, "PAGE >") end

-- The first use of the last parameter, and back again.
editor.page(3, "PAGE >")
editor.select(3, editor.rows())
editor.first_use()
editor.detail("unit", "a user")
saved("S1", "out=P1,double,a user,", "the usage list")
editor.title("<---")
editor.detail("unit", "looked at before")
editor.rename(3, editor.rows(), "BACK") -- the column has followed
saved("LAST", "out=BACK,double,looked at before,", "one step back")
