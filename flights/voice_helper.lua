-- The process that speaks and listens ends when nobody expects it, and comes back; aircraft come and go.
local check = require "lib.check"
local voice = require "lib.voice"
local crew = require "lib.skyhawk"
local captain, hears = crew.captain, crew.hears

local BUTTON = "kv/fennic/rec"

local function until_she_speaks()
    check.wait(2, function() crew.step() return sim.loudness() > 0.01 end, "she speaks")
end

-- The process ends, and what she says meanwhile is said by the simulator. Then there is another one.
local function dies(delay)
    local before = voice.process()
    check.that(before > 0, "nobody to be killed")
    sim.log()
    check.that(voice.kill(before), "killed")
    crew.fly(0.1)
    check.equal(voice.process(), 0, "the process after its end")
    check.equal(sim.get("kv/diagnost/speech"), 0, "she is known to be mute")
    check.equal(sim.loudness(), 0, "a sound from nobody")
    check.equal(check.count(check.log(), ("%s; it is started again in %d s"):format(voice.killed, delay)), 1, "log")
    local since = sim.time()
    return function()
        check.wait(delay + 1, function() crew.step() return voice.process() > 0 end, "another one")
        check.near(sim.time() - since, delay - 0.1, 0.1, "seconds without her voice")
        check.that(voice.process() ~= before, "the same process")
        crew.fly(0.1)
        check.equal(sim.get("kv/diagnost/speech"), 1, "she speaks again")
        check.equal(sim.get("kv/diagnost/reco"), 1, "she hears again")
    end
end

crew.is_aloud = true
crew.park()
sim.start()
crew.fly(4)

-- ---- In the middle of her sentence ----

captain("fuel state")
hears("gallons left")
until_she_speaks()
local comes_back = dies(1)
sim.hear("abort")
crew.fly(0.1)
check.list(sim.simulator_said(), {"All Commands and Checklists Aborted!"}, "said by the simulator")
comes_back()
captain("before start checklist")
hears("Before start checklist.")
until_she_speaks()
check.list(sim.simulator_said(), {}, "said by her alone")

-- ---- While he holds the button ----

hears("Seats and belts?")
crew.silence(0.1)
sim.understood()
sim.press(BUTTON)
crew.fly(sim.speak("locked") / 2)
comes_back = dies(2)
crew.fly(0.5)
sim.release(BUTTON)
crew.silence(0.5)
check.list(sim.understood(), {}, "half a word")
comes_back()
captain("locked")
hears("Brakes?")

-- ---- As the pilot wishes ----

local before = voice.process()
sim.choose("Fennic/Restart Speech Engine")
crew.fly(0.5)
check.that(voice.process() > 0 and voice.process() ~= before, "restarted")
captain("set")
hears("Circuit breakers?")
captain("abort")
hears("All Commands and Checklists Aborted!")

-- ---- Another aircraft ----

before = voice.process()
sim.stop()
crew.fly(1)
check.systems {OTHER = "sys=OTHER\ndev=CREW\nout=ASK,execute,,0,,,,,,,,0\nlogic:\ninstring=cabin crew take your seats\n"
    .. "execute=0,We are seated.,0\n"}
sim.start()
crew.fly(4)
crew.speak("before start checklist")
crew.silence(2)
captain("cabin crew take your seats")
hears("We are seated.")
until_she_speaks()
check.equal(voice.process(), before, "the process serves every aircraft")
