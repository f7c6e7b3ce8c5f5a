-- Talking with her: checklists read by voice alone, the captain's and hers, through all that lies between his
-- mouth and her ears. What is no answer takes her no further, and none of her sentences is lost.
local check = require "lib.check"
local voice = require "lib.voice"
local crew = require "lib.skyhawk"
local captain, hears, answers, silence = crew.captain, crew.hears, crew.answers, crew.silence

crew.is_aloud = true
sim.record(sim.dir("xplane") .. "talk.wav")
crew.park()
sim.start()
crew.fly(4)
check.that(voice.process() > 0, "nobody listens")

captain("preflight checklist")
answers("Documents?", "on board")
answers("Control lock?", "removed")
answers("Fuel and oil?", "quantity checked")
answers("And the walk around?", "all in order")
hears("Preflight checklist complete.")

sim.noise(15) -- of the engine next door
captain("before start checklist")
hears("Seats and belts?")
silence(0.1)
crew.speak("checked")
check.list(sim.understood(), {"checked"}, "a word of the list, and not what is waited for")
crew.speak("yesterday we had pizza for dinner")
crew.fly(0.5)
sim.press("kv/fennic/rec")
crew.fly(2)
sim.release("kv/fennic/rec")
silence(3)
check.list(sim.understood(), {}, "neither nonsense nor silence")
crew.speak("adjusted and locked", "woman", 70)
answers("Brakes?", "set")
hears("Circuit breakers?")
silence(1)
sim.record()
local texts, seconds = crew.said(), sim.time()
local spoken = voice.check_recorded(sim.dir("xplane") .. "talk.wav", texts)
print(("%d sentences, %.0f s of her voice in a flight of %.0f s; he said %d again"):format(#texts, spoken, seconds,
                                                                                      crew.repeats))
check.that(crew.repeats <= 2, "he is not understood")
check.that(#texts > 10, "a short talk")

-- A word ends it all, in the middle of her sentence.
captain("fuel state")
hears("gallons left")
check.wait(1, function() crew.step() return sim.loudness() > 0.01 end, "she speaks")
crew.speak("abort")
hears("All Commands and Checklists Aborted!")
silence(3)
check.no_problems()
