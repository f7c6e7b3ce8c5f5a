-- Flight time follows the clock.
local before = os.time()
sim.run(2.3)
assert(os.time() - before >= 2)
