-- Plug-ins of the simulator and of the aircraft side by side, in both layouts; what they print is the test.
-- "middle" comes with the command line.
local root, aircraft = sim.dir("xplane"), sim.dir("aircraft")
local function install(folder, library)
    assert(os.execute(("mkdir -p '%s' && cp '%s' '%s'"):format(folder:match("^(.*)/"),
        root .. "Resources/plugins/middle/64/lin.xpl", folder .. library)))
end
install(root .. "Resources/plugins/first/lin_x64/", "first.xpl")
install(root .. "Resources/plugins/misnamed/lin_x64/", "other.xpl")
install(root .. "Resources/plugins/incomplete/64/", "lin.xpl")
assert(os.execute(("cd '%sResources/plugins' && cp middle/incomplete.xpl incomplete/64/lin.xpl"):format(root)))
install(root .. "Resources/plugins/refuses/64/", "lin.xpl")
install(root .. "Resources/plugins/torn/64/", "lin.xpl")
assert(io.open(root .. "Resources/plugins/torn/64/lin.xpl", "w")):write("half of it"):close()
assert(io.open(root .. "Resources/plugins/a list.txt", "w")):close()
install(aircraft .. "plugins/own/lin_x64/", "own.xpl")

sim.start()
assert(io.open("neighbours.lua"), "the flight's own folder is another"):close()
local told = table.concat(sim.log(), "\n")
assert(told:find("misnamed holds no plug-in", 1, true) and told:find("refuses refused to start", 1, true), told)

print("-- The aircraft is loaded again")
sim.restart()
print("-- It leaves, and one without plug-ins comes")
sim.stop()
assert(not pcall(sim.stop))
os.rename(aircraft .. "plugins", aircraft .. "none")
sim.start()
assert(not pcall(sim.start))
print("-- The flight ends")
