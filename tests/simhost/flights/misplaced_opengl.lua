-- A plug-in makes a texture in a command's handler: one line in the log, and the flight fails in the end.
sim.publish("probe/do", "int", 20)
sim.start()
sim.frames(1)
sim.log()
sim.hear("beacon")
local told = 0
for _, line in ipairs(sim.log()) do
    if line:find("command handler makes an OpenGL object (", 1, true) then told = told + 1 end
end
assert(told <= 2 and told > 0, told)
