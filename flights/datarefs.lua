-- The datarefs that the plug-in publishes: which, of what type, with what value; who is told; and what happens
-- when a name is taken or there are too many.
local check = require "lib.check"

local plugin = sim.dir("plugin")
check.systems {S = "sys=S\ndev=D\nout=A,double,,1.5,,,test/in,new,test/out,new,,0\nout=B,int,,-2,,,,,test/int,new,,0\n"
    .. "out=TALK,execute,,0,,,,,,,,0\nlogic:\ninstring=talk\nexecute=7,,0.055\nexecute=0,Hello,0\n"}

-- Name and first value, in the order in which they are created; 1.0 and the like are floats.
local published = {}
for line in check.read(plugin .. "data/obj/fennic.txt"):gmatch("[^\r\n]+") do
    for _, axis in ipairs {"_x", "_y", "_z"} do
        published[#published + 1] = {"kv/fo/" .. line:match("^%d+,([^,]+)") .. axis, 0.0}
    end
end
local shown = {} -- body, head and arms
for i = 1, 40 * 3 do shown[i] = {"kv/fo/shown/" .. published[i][1]:sub(7), 0.0} end
local function publish(entries)
    for _, entry in ipairs(entries) do published[#published + 1] = {entry[1], entry[2]} end
end
publish {
    {"kv/fo/delta_hdg2fo", 360.0}, {"kv/fo/_eyes_x", 360.0}, {"kv/fo/_eyes_y", 360.0}, {"kv/fo/_glass", 1},
    {"kv/fo/_planshet", 0}, {"kv/fo/_face", 0}, {"kv/fo/_show", 1}, {"kv/fo/baro100", 0},
    {"kv/fo/baro_check", 0}, {"kv/fo/_gender", 0}, {"kv/fo/_look", 0}, {"kv/fo/_pad", 0},
    {"kv/fo/_mouth", 0}}
publish(shown)
publish {
    {"kv/fo/shown/eyes_x", 360.0}, {"kv/fo/shown/eyes_y", 360.0},
    {"kv/to_speech", ""}, {"kv/fr_speech", ""}, {"kv/diagnost/speech", 1},
    {"kv/diagnost/reco", 1}, {"kv/speech/messages", ""}, {"kv/speech/expected", ""},
    {"kv/fo/checklist", 0}, {"kv/fo/stand_by", 0}, {"test/in", 1.5}, {"test/out", 1.5}, {"test/int", -2}}
local names = {}
for i, entry in ipairs(published) do names[i] = entry[1] end

local function expect_published()
    for _, entry in ipairs(published) do
        local value = sim.get(entry[1])
        check.equal(value, entry[2], entry[1])
        check.equal(math.type(value), math.type(entry[2]), "type of " .. entry[1])
    end
end
local function expect_gone()
    for _, name in ipairs(names) do check.that(not sim.exists(name), name .. " is gone") end
end

-- ---- Who is told ----

sim.dataref_browser(true)
sim.start()
expect_published()
check.list(sim.dataref_browser_names(), names, "the dataref browser is told")
sim.run(5)
check.list(sim.dataref_browser_names(), {}, "once")
sim.set("kv/fo/_glass", 0)
sim.set("kv/fo/head_x", 12.5)
sim.set("test/out", 7)
check.list({sim.get("kv/fo/_glass"), sim.get("kv/fo/head_x")}, {0, 12.5}, "others may write them")

-- The aircraft is loaded again: the simulator still knows the names, but nobody publishes them.
sim.dataref_browser(false)
sim.stop()
expect_gone()
sim.start()
expect_published()
check.equal(check.count(check.log(), "already exist"), 0, "no name was taken")
check.list(sim.dataref_browser_names(), {}, "nobody to tell")
sim.stop()

-- ---- Texts ----

sim.start()
sim.frames(1)
check.equal(sim.get("kv/to_speech"), "contextpath>" .. plugin, "the last message stays readable")
sim.set("kv/fr_speech", ("long "):rep(1000))
sim.frames(1)
check.equal(sim.get("kv/fr_speech"), "", "read and emptied")

-- Of two messages in one frame the dataref holds the second; simhost saw both.
sim.press("kv/fennic/rec")
sim.frames(1)
sim.reply("talk") -- heard, pause, three frames of it, Hello
sim.frames(5)
sim.sent()
sim.release("kv/fennic/rec")
sim.frames(1)
check.list(check.messages(), {"say>Hello", "CmdRecStop"}, "both in one frame")
check.equal(sim.get("kv/to_speech"), "CmdRecStop", "the second")
sim.stop()

-- ---- Names that are taken ----

sim.publish("kv/fo/_glass", "int", 5)
sim.publish("kv/fo/head_x", "float", 3.5)
sim.publish("kv/to_speech", "string", "mine")
sim.publish("test/out", "int", 8)
sim.dataref_browser(true)
sim.log()
sim.start()
local log = check.log()
for _, line in ipairs {"(int) ERROR (already exist): kv/fo/_glass", "(float) ERROR (already exist): kv/fo/head_x",
                       "(string) ERROR (already exist): kv/to_speech", "(float) ERROR (already exist): test/out"} do
    check.equal(check.count(log, "CUSTOM DATAREF " .. line), 1, line)
end
local told = sim.dataref_browser_names()
check.equal(#told, #names - 4, "the browser is not told of these")
sim.run(20)
check.list({sim.get("kv/fo/_glass"), sim.get("kv/fo/head_x"), sim.get("test/out")}, {5, 3.5, 8},
           "not ours, not touched")
check.that(sim.get("kv/to_speech"):find("^initvoice>"), "but the server's is used, whoever published it")
sim.stop()
check.that(sim.exists("kv/fo/_glass") and sim.exists("kv/to_speech"), "they outlast the plug-in")

-- ---- Too many ----

-- The table takes 999. What comes too late is refused with a line in the log; everything else works.
local many = {"sys=S", "dev=D"}
for i = 1, 1200 do many[#many + 1] = ("out=P%d,double,,%d,,,,,many/%d,new,,0"):format(i, i, i) end
many[#many + 1] = "out=SUM,double,,0,,,,,kv/fo/_glass,exist,,0\nlogic:\ncalc=[S.D.P1]+[S.D.P1200]"
check.systems {S = table.concat(many, "\n")}
sim.log()
check.start(2)
log = table.concat(check.log(), "\n")
local FULL = "CUSTOM DATAREF %(float%) ERROR %(table is full%): "
local _, refused = log:gsub(FULL .. "many/", "")
refused = refused + log:match("(%d+) more left out: " .. FULL)
local computed = #shown + 2 -- take no place in it
local room = 999 - (#names - computed - 3 - 3) -- without this flight's own and those of the last one that are taken
check.equal(refused, 1200 - room, "refused")
check.equal(sim.get("many/" .. room), room + 0.0, "the last one")
check.that(not sim.exists("many/" .. room + 1), "the one too many")
sim.frames(2)
check.equal(sim.get("kv/fo/_glass"), 1201, "parameters without a dataref work")
sim.stop()
check.that(not sim.exists("many/1"), "all gone")
