-- Makes docs/pictures/figure.png: the first officer at rest, from the captain's seat.
--
--     ./fennic sim --screen 480x400 tools/figure_picture.lua docs/pictures/figure.png

sim.start()
sim.run(1)
sim.tap("kv/fennic/widget") -- the list would cover her knees
sim.show("cockpit")
sim.frames(1)
sim.screenshot(arg[1])
