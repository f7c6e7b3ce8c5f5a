-- Makes docs/pictures/position_creator.png, with the aircraft of the release build staged:
--
--     ./fennic sim tools/position_creator_picture.lua
package.path = "flights/?.lua;" .. package.path
local check = require "lib.check"
local creator = require "lib.position_creator"

check.settings {installation = "2"}
sim.screen(650, 600) -- little more than the panel
sim.publish("kv/fennic_kill", "int", 0)
sim.start()
sim.frames(2)
sim.choose("Editor")
creator.press {221, 112} -- the left forearm
sim.mouse_down(creator.at(455, 222)) -- her left hand
local x, y = creator.at(464, 190)
sim.mouse_drag(x, y)
sim.wheel(x, y, -16) -- ahead
sim.frames(40)
sim.mouse_up(x, y)
creator.click(60, 290) -- the name's box
for _ = 1, 3 do sim.key("backspace") end
sim.type("point ahead")
sim.frames(2)
sim.set("kv/fennic_kill", 1) -- what else is on the screen would shine through
sim.frames(1)
sim.screenshot("docs/pictures/position_creator.png")
