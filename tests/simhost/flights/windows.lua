-- The pilot's mouse and keyboard, windows and menus, from a flight.
assert(#sim.windows() == 0 and #sim.menu() == 0)
sim.publish("probe/window", "int", 1)
sim.screen(800, 600)
sim.start()
sim.log()

-- What the plug-in has noted since the last call.
local function noted(...)
    local lines = {}
    for _, line in ipairs(sim.log()) do
        lines[#lines + 1] = line:match("SEC TFT (.*)")
    end
    local found, expected = table.concat(lines, "; "), table.concat({...}, "; ")
    if found ~= expected then error("noted: " .. found .. "\nexpected: " .. expected, 2) end
end

local function window() return sim.windows()[1] end
for field, expected in pairs {title = "Probe's window", plugin = "Probe", left = 100, top = 400, right = 300,
                              bottom = 200, visible = true, focus = false, legacy = false, vr = false,
                              popped_out = false, layer = "floating", decoration = "round"} do
    assert(window()[field] == expected, field .. ": " .. tostring(window()[field]))
end

-- The mouse: every frame of a held button is a drag.
assert(sim.mouse(500, 500) == "default")
assert(sim.click(150, 250))
noted("left down at 150, 250", "left up at 150, 250")
assert(window().focus)
sim.double_click(100, 200)
noted("left down at 100, 200", "left up at 100, 200", "left down at 100, 200", "left up at 100, 200")
sim.mouse_down(150, 250, "right")
sim.frames(2)
sim.mouse_drag(-20, 900)
sim.mouse_up(0, 0)
noted("right down at 150, 250", "right drag at 150, 250", "right drag at 150, 250", "right drag at -20, 900",
      "right up at 0, 0")
assert(sim.wheel(150, 250, -3) and not sim.wheel(700, 500, 1))
noted("wheel -3")
-- The keyboard.
sim.type("aB\n")
noted("key 97 8 65", "key 97 16 65", "key 66 9 66", "key 66 17 66", "key 13 8 13", "key 13 16 13")
sim.key("left", "shift+control")
sim.key(0x41)
sim.key("5", "option")
noted("key 28 13 37", "key 28 21 37", "key 97 8 65", "key 97 16 65", "key 53 10 53", "key 53 18 53")
assert(sim.key("f1"))
sim.log()
assert(not sim.click(700, 500))
noted("focus lost")
assert(not sim.key("f1"))
noted()

-- The headset.
sim.vr(true)
noted("headset on")
assert(window().vr and window().left == 0 and window().right == 0)
sim.vr(false)
noted("headset off")
assert(not window().vr and window().left == 100)

-- Menus. (How their items are found, tests/simhost/commands_test.cpp tries.)
local menu = sim.menu()
assert(#menu == 1 and menu[1].text == "Probe" and #menu[1].items == 5)
local items = menu[1].items
assert(items[1].text == "On" and items[1].checked == true and items[1].enabled and not items[1].items)
assert(items[2].checked == false and items[3].separator and items[3].text == nil)
assert(items[4].enabled == false and items[4].checked == nil)
assert(items[5].items[1].text == "Even/more")
sim.choose("Off")
noted("Off chosen")
local function refuses(path, why)
    local ok, message = pcall(sim.choose, path)
    assert(not ok and message:find(why, 1, true), tostring(message))
end
refuses("Never", "is disabled")

-- The plug-in goes while the button is held.
sim.restart()
sim.mouse_down(150, 250)
sim.stop()
assert(#sim.windows() == 0 and #sim.menu() == 0)
sim.mouse_drag(160, 260)
sim.frames(1)
sim.mouse_up(160, 260)
refuses("Probe/On", "the menus are nothing")
