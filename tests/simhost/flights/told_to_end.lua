-- Ctrl-C and the like in the middle of a flight: the scratch folder goes too, whichever of the two processes
-- is told.
sim.start()
local flight = "$PPID"
os.execute("kill -TERM " .. (arg[1] == "watcher" and "$(awk '{print $4}' /proc/" .. flight .. "/stat)" or flight))
while arg[1] == "watcher" do end -- until it is there
error("still flying")
