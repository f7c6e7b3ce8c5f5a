-- The aircraft's kill switch: while it is on, the first officer does nothing at all; then she goes on.
local check = require "lib.check"

sim.publish("kv/fennic_kill", "int", 1)
sim.publish("test/in", "double", 0)
check.systems {S = [[
sys=S
dev=D
out=IN,double,,0,,,test/in,exist,,,,0
out=OUT,double,,0,,,,,test/out,new,,0
logic:
calc=[S.D.IN]*[2]
]] .. check.device("dev=TALK", {"count for me", "1,One", "0,Two"})
   .. check.device("devstack=SEQUENCE", {"wait for me", "0,Waiting"}, {"go on", "0,Going"})}

check.start(10)
check.list(check.messages(), {}, "on from the start: not a word, not even for the voice")
check.equal(sim.get("test/out"), 0, "no systems")

local function figure()
    local values = {}
    for _, name in ipairs {"_face", "_eyes_x", "_eyes_y", "head_x", "head_y", "head_z"} do
        values[#values + 1] = sim.get("kv/fo/" .. name)
    end
    return values
end
check.list(figure(), {0, 360, 360, 0, 0, 0}, "the figure stands as it was made")

sim.set("kv/fennic_kill", 0)
sim.run(3)
local messages = check.messages()
check.equal(#messages, 2, "context and voice, at last")
check.that(messages[2]:find("^initvoice>"), "the voice, at last")
sim.set("test/in", 4)
sim.frames(1)
check.equal(sim.get("test/out"), 8, "the systems work")
check.that(sim.get("kv/fo/_eyes_x") ~= 360, "the eyes move")

-- In the middle of a sentence, and then for a long time.
sim.hear("count for me")
sim.set("kv/fennic_kill", 1)
sim.frames(1)
check.forget()
local before = figure()
sim.set("test/in", 5)
sim.tap("kv/fennic/rec")
sim.reply("count for me")
sim.run(3600)
check.list(check.messages(), {}, "silence")
check.list(figure(), before, "nothing moves")
check.equal(sim.get("test/out"), 8, "the systems stand still")
check.equal(sim.get("kv/fr_speech"), "count for me", "nobody reads what the server writes")

-- Only 1 is on.
sim.set("kv/fennic_kill", 2)
sim.frames(1)
check.equal(sim.get("test/out"), 10, "the systems work again")
check.list(sim.said(), {"Two"}, "the sentence is finished")

-- An hour without her did not throw her off balance, also when she may not lean back because a sequence
-- waits.
local function expect_balance()
    for _ = 1, 20 * 60 do
        sim.frames(1)
        for axis, limit in pairs {x = 30, y = 45, z = 30} do
            check.near(sim.get("kv/fo/head_" .. axis), 0, limit, "the head, " .. axis)
        end
    end
end
expect_balance()
check.hear("wait for me", 5)
local leg = sim.get("kv/fo/l_leg1_x")
sim.set("kv/fennic_kill", 1)
sim.run(3600)
sim.set("kv/fennic_kill", 0)
expect_balance()
check.near(sim.get("kv/fo/l_leg1_x"), leg, 2, "the leg")
