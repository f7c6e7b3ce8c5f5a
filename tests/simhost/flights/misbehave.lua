-- Lets the plug-in do what no plug-in should: arg[1] is the dataref that asks for it, arg[2] its value.
sim.publish(arg[1], "int", 0)
sim.start()
sim.frames(2)
sim.set(arg[1], tonumber(arg[2]))
sim.frames(2)
sim.stop()
