-- The package for any aircraft, fresh from its zip file, in one that nobody has described: she works at once, and
-- reads the aircraft's own checklist after its import.
local function has(list, text)
    for _, line in ipairs(list) do if line:find(text, 1, true) then return true end end
end
local function ask(text)
    sim.said()
    sim.hear(text)
    sim.run(8)
    return sim.said()
end

sim.start()
assert(has(sim.log(), "Aircraft detected: any aircraft, by data/aircraft.txt line 3"), "the list serves it")
sim.run(6)
assert(#sim.widgets() == 0, "there is nothing to set up")
assert(has(ask("tell me about the aircraft"), "The gear is fixed."), "she has found out what there is")
assert(has(ask("landing lights on"), "Landing lights on."), "and does as she is told")
assert(#ask("before start checklist") == 0, "there is no checklist yet")
sim.choose("Fennic/Import Checklist")
sim.restart()
sim.run(6)
assert(has(ask("before start checklist"), "Doors?"), "she reads the aircraft's own")
assert(has(ask("closed"), "Fuel pump?"), "and hears the answers")
assert(has(ask("on"), "complete"), "to the end")
for _, item in ipairs(sim.menu()[1].items) do assert(not item.text:find("Import"), "it is imported") end
assert(has(ask("tell me about the aircraft"), "The gear is fixed."), "all else is still there")
assert(#sim.problems() == 0, sim.problems()[1])
sim.stop()
