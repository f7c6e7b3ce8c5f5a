-- Posing the figure in VR: the panel hangs in front of the pilot, has no place on the monitor, and is worked with
-- a beam. The argument is where its pictures go.
local check = require "lib.check"
local creator = require "lib.position_creator"
local window, axes, at, click = creator.window, creator.axes, creator.at, creator.click
local SIDE, PAD_X, PAD_Y = creator.side, creator.pad_x, creator.pad_y
local HEAD, FINGER = {187, 20}, {366, 89}

local pictures = arg[1] or sim.dir("xplane")
local function picture(name)
    sim.screenshot(pictures .. name, creator.title)
    return check.read(pictures .. name)
end

sim.start()
sim.run(6)
sim.choose("Editor")
sim.run(2) -- a move that is under way ends
sim.vr(true)
sim.frames(3)
local w = window()
check.that(w.vr and w.right == 0, "in the headset, and nowhere on the monitor")
check.list({w.vr_width, w.vr_height}, {SIDE, SIDE}, "as large as on the monitor")

-- The screen's mouse lies where it lay; the beam alone counts.
sim.mouse(1500, 900)
sim.point_at(creator.title)
local before = picture("vr_panel.png")
creator.press(HEAD)
check.that(picture("vr_head_chosen.png") ~= before, "the chosen button is seen")
local x, y, z = axes("head")
click(PAD_X, PAD_Y)
local beamX, beamY = at(PAD_X, PAD_Y)
sim.mouse(beamX - 12, beamY + 7)
sim.frames(1)
sim.wheel(beamX - 12, beamY + 7, 3)
sim.frames(1)
local newX, newY, newZ = axes("head")
check.near(newX, x - 7, 1e-4, "up lowers x")
check.near(newY, y + 3, 1e-4, "the wheel")
check.near(newZ, z + 12, 1e-4, "left raises z")
click(PAD_X + 50, PAD_Y)
sim.mouse(at(300, 300))
sim.frames(1)
check.list({axes("head")}, {newX, newY, newZ}, "let go")
local label
for _, text in ipairs(sim.screen_text()) do
    if text.window == creator.title then label = text end
end
check.that(label and label.text == "300" and label.x == 305, "the cursor's place is told in the headset")

-- Numbers are typed there, too, and a hand is dragged with the beam.
click(430, 98)
sim.type("5\n")
check.equal(select(3, axes("head")), 5, "typed")
click(101, 385) -- all of her
click(21, 406) -- reset: the hands lie on her thighs
sim.mouse_down(at(455, 222))
sim.mouse_drag(at(463, 200))
sim.frames(20)
sim.mouse_up(at(463, 200))
check.that(axes("l_arm1") > 5, "the arm follows")

-- Half as large again, the same buttons; the pose is saved under the name that is typed.
for _ = 1, 5 do sim.wheel(10, 10, 1) end
sim.frames(1)
check.that(window().vr_width > 1.5 * SIDE, "larger")
creator.press(FINGER)
z = select(3, axes("r_f53"))
click(PAD_X, PAD_Y)
beamX, beamY = at(PAD_X, PAD_Y)
sim.mouse(beamX + 9, beamY)
sim.frames(1)
check.near(select(3, axes("r_f53")), z - 9, 1e-4, "boxels count, whatever the size")
click(PAD_X, PAD_Y)
click(60, 290)
check.that(window().focus, "the box has the keyboard")
for _ = 1, 3 do sim.key("backspace") end
sim.type("in vr\n") -- a blank becomes an underscore
picture("vr_posed.png")
sim.choose("Save Position")
check.that(check.read(sim.dir("plugin") .. "custom/positions-w/in_vr.txt"), "saved")

-- The headset comes off in the middle of a drag: it ends, and the panel is the monitor's again.
click(PAD_X, PAD_Y)
local finger = select(3, axes("r_f53"))
sim.vr(false)
sim.frames(3)
check.equal(select(3, axes("r_f53")), finger, "she holds still")
w = window()
check.list({w.left, w.bottom, w.right - w.left}, {50, 50, SIDE}, "back on the monitor, as large as before")
