-- Lines that the first officer does not understand stay in the author's files when he saves, and the editor shows
-- where they are.
local check = require "lib.check"
local editor = require "lib.editor"

local systems = sim.dir("plugin") .. "systems/"

local function read(name) return (check.read(systems .. name):gsub("\r\n", "\n")) end

local list = "CREW\nnot made yet\n"
local crew = [[
draw=1
# my own systems
sys=CREW
dev=THRUST
out=LEVER,double,%,0.000000,0.000000,,,,,,,0
logic:
instring=set thrust
execute=1,Set thrust, please,0
calc=-[-5.000000]
out=HALF,double,0.5
logic:
calc=[CREW.THRUST.LEVER]*[0.5]
out=LAST,integer,,0.000000,,,,,,,,0
]]
check.write(systems .. "_systems.txt", list)
check.write(systems .. "CREW.txt", crew)
editor.start(1280, 800)
editor.board_below("NOT UNDERSTOOD")
editor.title("SAVE")
check.equal(read("CREW.txt"), crew, "saved as it was")
check.equal(read("_systems.txt"), list, "the list of files")

-- A click on the line of the action leads to its block.
editor.select(3, 2)
editor.first_use(4)

-- With AUTO the first click saves.
editor.title("AUTO")
editor.column(3, "New..")
local saved = read("CREW.txt")
for line in crew:gmatch("[^\n]+") do
    check.that(saved:find(line .. "\n", 1, true), "no " .. line .. " in\n" .. saved)
end
