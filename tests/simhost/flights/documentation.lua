-- Every example of the authors' page flies, and its calls are all that there are.
local page, program = arg[1], arg[2]
local file = assert(io.open(page))
local text = file:read("a")
file:close()

local flown = 0
for example in text:gmatch("```lua\n(.-)```") do
    local path = sim.dir("xplane") .. "example.lua"
    local out = assert(io.open(path, "w"))
    out:write(example)
    out:close()
    assert(os.execute(("'%s' --quiet '%s'"):format(program, path)), "this example fails:\n" .. example)
    flown = flown + 1
end
assert(flown >= 4, "examples found: " .. flown)

for name in pairs(sim) do assert(text:find("sim." .. name, 1, true), name .. " is not documented") end
for name in text:gmatch("sim%.([%a_]+)") do assert(sim[name], name .. " is documented, but not there") end
