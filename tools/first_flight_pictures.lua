-- Makes docs/pictures/first_officer.png and docs/pictures/reading.png: the first officer after the setup in an
-- airliner, waiting, and reading a checklist. ImageMagick makes them small.
--
--     ./fennic sim --aircraft TL319 --screen 560x320 tools/first_flight_pictures.lua docs/pictures/

local function picture(view, name)
    sim.show(view)
    local path = sim.dir("xplane") .. "picture.png"
    sim.screenshot(path)
    assert(os.execute(("convert '%s' +dither -colors 160 'png8:%s%s.png'"):format(path, arg[1], name)))
end

sim.start()
sim.run(1)
sim.push("Setup")
sim.restart()
sim.run(3)
require("lib.list_aside")()
sim.run(1)
picture("cockpit", "first_officer")
sim.hear("before start checklist")
sim.run(6)
picture("front", "reading")
