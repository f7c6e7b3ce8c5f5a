-- Makes docs/pictures/position_creator.png, with the aircraft of the release build staged:
--
--     ./fennic sim tools/position_creator_picture.lua
package.path = "flights/?.lua;" .. package.path
local check = require "lib.check"

check.write(sim.dir("plugin") .. "data/developer.txt", "editor=1\r\n")
check.settings {installation = "2"}
sim.screen(650, 600) -- little more than the panel
sim.publish("kv/fennic_kill", "int", 0)
sim.start()
sim.frames(2)
sim.choose("Editor")
local function click(x, y)
    sim.click(50 + x, 50 + 512 - y)
    sim.frames(1)
end
click(83, 102) -- the left index finger
click(60, 290) -- the name's box
for _ = 1, 3 do sim.key("backspace") end
sim.type("point ahead")
sim.set("kv/fennic_kill", 1) -- what else is on the screen would shine through
sim.frames(1)
sim.screenshot("docs/pictures/position_creator.png")
