local function check(value)
    assert(value == 2)
end
sim.start()
check(1)
