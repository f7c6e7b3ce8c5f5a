-- A program that takes what it is given and neither reads it nor answers is given up after a while, and another
-- one started. Flown in real time, since it is the clock that tells, too. An argument is the program that does
-- nothing, where a script is none.
local check = require "lib.check"
local voice = require "lib.voice"

local function fly_until(condition, seconds, what)
    check.wait(seconds, function() sim.frames(1) return condition() end, what)
end

check.systems {OTHER = "sys=OTHER\ndev=CREW\nout=ASK,execute,,0,,,,,,,,0\nlogic:\ninstring=gear up\nexecute=0,Up.,0\n"}
assert(os.rename(voice.program, voice.program .. ".away"))
check.write(voice.program, arg[1] and check.read(arg[1]) or "#!/bin/sh\nexec sleep 1000\n")
sim.start()
fly_until(function() return voice.process() > 0 end, 5, "a process")
local hanging = voice.process()
sim.run(4)
sim.log()
sim.hear("gear up")
local since = sim.time()
fly_until(function() return voice.process() ~= hanging end, 60, "the end of her patience") -- 20 s and four times 1.7
check.near(sim.time() - since, 27, 2, "seconds of patience")
assert(os.rename(voice.program .. ".away", voice.program))
fly_until(function() return voice.process() > 0 end, 3, "another one")
check.that(not voice.kill(hanging), "the one that hung is left behind")
local log = check.log()
for _, line in ipairs {"the voice does not say what it was given to say", "the voice ended " .. voice.ended .. "; it is started again in 1 s"} do
    check.equal(check.count(log, line), 1, line)
end
