-- The same flight twice, in the plain locale and in a German one, where numbers are written with a comma: what
-- is said, logged and written to files must not differ in a byte.
local check = require "lib.check"

local plugin = sim.dir("plugin")

-- A file's name with letters of more than one byte, and longer than Windows takes without being asked.
local place = "auf halber Höhe" .. (" und höher"):rep(17)
local systems = {CHECKLIST = ([[
sys=CHECKLIST
dev=D
out=FUEL,double,l,12.75,0.5,99.5,test/fuel,new,test/fuel_out,new,,1
out=HALF,double,,0,,,,,test/half,new,,1
logic:
[CHECKLIST.D.FUEL]>=[20.25]
calc=[CHECKLIST.D.FUEL]*[0.5]
graf=0.5,1.5
graf=100.5,50.25
logic:
calc=[0.125]
devstack=FUEL CHECK
out=CALL,execute,,0,,,,,,,,0
logic:
instring=fuel in Zürich, please
execute=1,<CHECKLIST.D.FUEL> litres,0.0
execute=7,,0.75
execute=8,test/lever,0.375
execute=8,test/levers[1],-2.5
execute=2,PLACE,1.0
execute=12,enough,1.5
execute=0,Enough?,0
out=ANSWER,execute,,0,,,,,,,,0
logic:
instring=enough
execute=0,Thank you,0
dev=BAD
out=COMMA,double,,1;5,,,,,,,,0
]]):gsub("PLACE", place)}
check.write(plugin .. "custom/positions-w/" .. place .. ".txt", "23,r_arm2,1.5,-2.9,0.125,\r\n22,r_arm1,1;5,0,0,\r\n")
check.settings {user = "Größe 1.5", volume = "50", rate = "1;5"}
local settings = check.read(plugin .. "data/settings_mac.txt")
sim.publish("test/lever", "float", 0)
sim.publish("test/levers", "float[4]", 0)

-- Everything that the plug-in lets see of itself.
local function fly()
    local seen = {}
    local function note(name, value) seen[#seen + 1] = name .. ": " .. tostring(value) end
    check.systems(systems)
    check.write(plugin .. "systems/_save.txt", "CHECKLIST.D.FUEL=33.5\r\n")
    check.write(plugin .. "data/settings_mac.txt", settings)
    sim.set("test/lever", 0)
    sim.set("test/levers", 0, 1)
    sim.set("sim/time/total_flight_time_sec", 40)
    check.forget()
    sim.start()
    sim.frames(3)
    note("fuel", sim.get("test/fuel"))
    note("half", sim.get("test/half"))
    check.hear("fuel in Zürich, please", 6)
    check.near(sim.get("kv/fo/r_arm2_y"), -2.9, 0.4, "the arm, which is never quite still")
    note("lever", sim.get("test/lever"))
    note("levers", sim.get("test/levers", 1))
    sim.hear("enough")
    sim.set("test/fuel", 44.625)
    sim.run(1)
    sim.stop()
    for _, message in ipairs(sim.sent()) do note(("sent at %.4f"):format(message.t), message.text) end
    for _, line in ipairs(sim.log()) do note("log", line) end
    for _, file in ipairs {"systems/_save.txt", "systems/CHECKLIST.txt", "data/context.txt",
                           "data/settings_mac.txt", "custom/positions-w/" .. place .. ".txt"} do
        note(file, check.read(plugin .. file))
    end
    return seen
end

local plain = fly()
local all = table.concat(plain, "\n")
for _, part in ipairs {"fuel: 33.5\n", "half: 9.421875\n", "lever: 0.375\n", "levers: -2.5\n", "say>33 litres\n",
                       "CHECKLIST.D.FUEL=44.625000\r\n", "volume>50\n", "say>Thank you\n", "1;5",
                       "fuel in zürich please\r\n"} do
    check.that(all:find(part, 1, true), "the plain flight lacks " .. part)
end

local isInstalled, message = pcall(sim.locale, "de_DE.UTF-8")
if not isInstalled then
    print("SKIPPED: " .. message)
    return
end
check.list(fly(), plain, "under the German locale")
