-- Without the program that speaks and listens the simulator speaks for her, the pilot is told once, and she goes
-- on. When the program is there again it is used, even if it was unpacked without the right to be run.
local check = require "lib.check"
local voice = require "lib.voice"
local crew = require "lib.skyhawk"

local function is_told(what, times)
    local log = check.log()
    check.equal(check.count(log, what), times, what .. " in the log")
end

assert(os.rename(voice.program, voice.program .. ".away"))
crew.park()
sim.start()
crew.fly(4)
local log = check.log()
check.equal(check.count(log, "FENNIC Speech: cannot start " .. voice.native_program .. ": "), 1, "that it is missing, in the log")
check.equal(check.count(log, "; texts are spoken by the simulator"), 1, "what comes of it, in the log")
check.equal(voice.process(), 0, "nobody speaks")
check.equal(sim.get("kv/diagnost/speech"), 0, "she is mute")
check.equal(sim.get("kv/diagnost/reco"), 0, "she is deaf")

sim.hear("before start checklist")
crew.hears("Seats and belts?")
sim.hear("locked")
crew.hears("Brakes?")
crew.fly(1)
check.list(sim.simulator_said(), {"Before start checklist.", "Seats and belts?", "Brakes?"}, "said by the simulator")
sim.hear("abort")
crew.fly(130) -- and nobody tells it a second time
is_told("FENNIC Speech: cannot start", 0)
sim.simulator_said()

check.that(os.rename(voice.program .. ".away", voice.program) and voice.forbid_running(), "put back")
check.wait(61, function() crew.step() return voice.process() > 0 end, "the program is looked for again")
crew.fly(0.1)
check.equal(sim.get("kv/diagnost/speech"), 1, "she speaks")
check.equal(sim.get("kv/diagnost/reco"), 1, "she hears")
sim.hear("fuel state")
crew.hears("gallons left")
check.wait(2, function() crew.step() return sim.loudness() > 0.01 end, "her voice")
check.list(sim.simulator_said(), {}, "said by her alone")
