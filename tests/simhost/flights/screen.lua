-- Screenshots and the texts on the screen, from a flight. With "none": on a machine without OpenGL.
local path = sim.dir("xplane") .. "shot.png"
local hasOpenGl = arg[1] ~= "none"

assert(#sim.screen_text() == 0, "a screen without a plug-in")
sim.publish("probe/draws", "int", 1)
sim.start()
assert(#sim.screen_text() == 0, "nothing before the first frame")
sim.frames(1)
local texts = sim.screen_text()
assert(#texts == 2, #texts)
local text = texts[2]
assert(text.text == "p\xFFrobe" and text.x == 30 and text.y == 40 and texts[1].text == "")
assert(text.r == 0.25 and text.g == 0.5 and text.b == 1)

sim.screen(320, 200)
local written, message = pcall(sim.screenshot, path)
assert(#sim.screen_text() == 2, "a screenshot is a frame of its own")
if not hasOpenGl then
    assert(not written and message:find("no OpenGL", 1, true), message)
    return
end
assert(written, message)
local file = assert(io.open(path, "rb"))
local head = file:read(24)
file:close()
assert(head:sub(2, 4) == "PNG")
assert(string.unpack(">I4", head, 17) == 320 and string.unpack(">I4", head, 21) == 200)

written, message = pcall(sim.screenshot, sim.dir("xplane") .. "nowhere/shot.png")
assert(not written and message:find("nowhere/shot.png", 1, true), message)
sim.stop()
sim.frames(1)
assert(#sim.screen_text() == 0, "nobody draws any more")
