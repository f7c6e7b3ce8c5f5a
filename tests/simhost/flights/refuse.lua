-- A plug-in that does not want to start is an error that a flight can catch, and it can try again.
sim.publish("probe/refuse_start", "int", 1)
local ok, message = pcall(sim.start)
assert(not ok and message:find("lin.xpl", 1, true), message)
assert(not pcall(sim.stop))
sim.set("probe/refuse_start", 0)
sim.start()
sim.hear("good day")
assert(sim.said()[1] == "good day")
