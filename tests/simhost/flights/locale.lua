-- The plug-in runs under the locale, the flight does not.
local name = arg[1]
sim.start()
local ok, message = pcall(sim.locale, name)
if not ok then
    print("SKIPPED: " .. message)
    os.exit(77)
end
assert(sim.get("probe/half") == "0,5", "the plug-in's point: " .. sim.get("probe/half"))
sim.publish("t/float", "float", 0.5)
assert(tostring(sim.get("t/float")) == "0.5")
assert(load("return 0.25 + 1.5e0")() == 1.75, "Lua's own numbers")
assert(tonumber("0.5") == 0.5 and string.format("%.1f", 0.5) == "0.5")
sim.hear("good day")
sim.run(0.5)
assert(sim.get("probe/half") == "0,5")
sim.locale("C")
assert(sim.get("probe/half") == "0.5")
