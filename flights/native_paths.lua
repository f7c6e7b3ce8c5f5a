-- On a Mac the simulator gives colon-separated paths to whoever does not ask for the system's own at once.
local check = require "lib.check"

sim.colon_paths(true)
sim.start()
sim.run(5)
check.equal(check.count(check.log(), "ant open file"), 0, "every file is found")
local messages = table.concat(check.messages(), "\n")
check.that(messages:find("contextpath>" .. sim.dir("plugin"), 1, true), "the speech server gets a native path")
sim.hear("before start checklist")
check.wait(10, function() return #sim.said() > 0 end, "she reads the checklist")
check.that(#sim.stop() == 0, "nothing left behind")
check.that(check.read(sim.dir("plugin") .. "data/settings_mac.txt"), "the settings are where they belong")
