-- Ctrl-C and the like in the middle of a flight: the scratch folder goes too.
sim.start()
os.execute("kill -TERM $PPID")
error("still flying")
