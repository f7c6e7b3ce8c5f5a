-- A pilot's first minutes with a fresh installation: the first checklist is heard and answered.
sim.start()
sim.run(6)
sim.said()
sim.hear("before start checklist")
sim.run(5)
assert(sim.said()[1], "she reads the checklist")
sim.stop()
