-- A plug-in that does not want to start is an error that a flight can catch, and it can try again. One that does
-- not want to be enabled is there, but is not called.
sim.publish("probe/refuse_start", "int", 1)
local ok, message = pcall(sim.start)
assert(not ok and message:find("lin.xpl", 1, true), message)
assert(not pcall(sim.stop))
sim.set("probe/refuse_start", 0)
sim.start()
sim.hear("good day")
assert(sim.said()[1] == "good day")

sim.publish("probe/refuse_enable", "int", 1)
sim.restart()
sim.log()
sim.vr(true)
sim.reply("another day")
sim.frames(2)
assert(#sim.log() == 0 and #sim.said() == 0 and sim.get("kv/fr_speech") == "another day")
