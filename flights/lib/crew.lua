-- A captain who talks to the first officer, and a world that moves while they do: what the flights in all
-- aircraft share. They step the simulator through this module only, so that it hears all she says.
local check = require "lib.check"

local crew = {}

crew.ref = require "lib.ref"
crew.step_world = nil -- a function that is called before each frame, with the flight time
crew.is_aloud = false -- true: the captain speaks into the microphone, and listens to her voice
crew.repeats = 0 -- how often he had to say something again

local ramps = {}  -- dataref -> {from, to, begin, finish}: values on their way
local said = {}   -- all she has said, in order
local cursor = 0  -- how far the flight has followed it
local unheard = {} -- what she said and the flight did not wait for
local quietAt = 0 -- when she will have finished speaking, as far as it is known

local BUTTON = "kv/fennic/rec"
local PAUSE = 0.4 -- between two sentences, in her voice or his, seconds
local PATIENCE = 3 -- seconds in which something comes of what he says, or he says it again
local RATES = {50, 30, 70} -- slower then, and quicker

-- Takes a dataref to a value, evenly, while time passes.
function crew.move(dataref, to, seconds)
    ramps[dataref] = {from = sim.get(dataref), to = to, begin = sim.time(), finish = sim.time() + seconds}
end

-- Values at once: name in ref = value, or a table for the elements of an array.
function crew.set(values)
    for name, value in pairs(values) do sim.set(crew.ref[name], value) end
end

local function moveValues(now)
    for dataref, ramp in pairs(ramps) do
        local part = (now - ramp.begin) / (ramp.finish - ramp.begin)
        sim.set(dataref, part < 1 and ramp.from + (ramp.to - ramp.from) * part or ramp.to)
        if part >= 1 then ramps[dataref] = nil end
    end
end

function crew.step()
    moveValues(sim.time())
    crew.step_world(sim.time())
    sim.frames(1)
    for _, text in ipairs(sim.said()) do
        said[#said + 1] = text
        quietAt = crew.is_aloud and sim.time() + PAUSE or math.max(quietAt, sim.time()) + 1 + #text / 10
    end
    if crew.is_aloud and sim.loudness() > 0.003 then quietAt = sim.time() + PAUSE end
end

function crew.fly(seconds)
    local finish = sim.time() + seconds
    while sim.time() < finish do crew.step() end
end

crew.at_once = {on_ground = true, gear_lever = true} -- of which there is nothing between

-- Takes values somewhere, step by step: {seconds, {name in ref = where it is taken}, what is heard ...}.
function crew.go(steps)
    for _, step in ipairs(steps) do
        for name, to in pairs(step[2]) do
            if crew.at_once[name] then sim.set(crew.ref[name], to) else crew.move(crew.ref[name], to, step[1]) end
        end
        crew.fly(step[1])
        for i = 3, #step do crew.hears(step[i]) end
    end
end

-- ---- The conversation ----

-- Waits until she says something that contains the text, at most 40 s. Gives all she said there.
local function hear(text)
    local latest = sim.time() + 40
    while true do
        while cursor < #said do
            cursor = cursor + 1
            if said[cursor]:find(text, 1, true) then return said[cursor] end
            unheard[#unheard + 1] = said[cursor]
        end
        check.that(sim.time() < latest, 'she never said "' .. text .. '", but last: ' .. tostring(said[#said]))
        crew.step()
    end
end

-- The same for several texts, one after the other. Gives what she said at the last.
function crew.hears(text, ...)
    local heard = hear(text)
    if ... then return crew.hears(...) end
    return heard
end

-- She has said nothing that was not waited for.
function crew.heard_all()
    check.list({table.unpack(said, cursor + 1)}, {}, "said last, and not waited for")
    check.list(unheard, {}, "said, and not waited for")
end

-- Push-to-talk held while he speaks, and until a pause shows that he has finished.
function crew.speak(text, voice, rate)
    sim.press(BUTTON)
    crew.fly(0.2)
    crew.fly(sim.speak(text, voice, rate) + PAUSE)
    sim.release(BUTTON)
    crew.fly(0.1)
end

-- The same, and again, at another pace, when she neither understands it nor goes on.
local function speakUntilHeard(text)
    local before = #said
    for attempt, rate in ipairs(RATES) do
        sim.understood()
        crew.speak(text, "man", rate)
        local latest = sim.time() + PATIENCE
        repeat
            for _, heard in ipairs(sim.understood()) do
                if heard == text then return end
            end
            if #said > before then return end
            crew.step()
        until sim.time() > latest
        if attempt < #RATES then crew.repeats = crew.repeats + 1 end
    end
end

-- The captain lets her finish, thinks, and speaks.
function crew.captain(text)
    while sim.time() < quietAt do crew.step() end
    crew.fly(0.3)
    if crew.is_aloud then speakUntilHeard(text) else sim.hear(text) end
end

function crew.answers(challenge, answer)
    crew.hears(challenge)
    crew.captain(answer)
end

-- He speaks, and hears these texts.
function crew.ask(text, ...)
    crew.captain(text)
    return crew.hears(...)
end

-- Calls for a checklist, unless it runs already; each of its challenges gets an answer: {challenge, answer}.
function crew.read(phrase, items, done)
    if phrase then crew.captain(phrase) end
    for _, item in ipairs(items) do crew.answers(item[1], item[2]) end
    crew.hears(done)
end

-- She finishes, and says nothing more for so long.
function crew.silence(seconds)
    while sim.time() < quietAt do crew.step() end
    local before = #said
    crew.fly(seconds)
    check.that(#said == before, "she said: " .. tostring(said[#said]))
end

-- ---- Checks ----

function crew.is(dataref, wanted, index)
    check.near(sim.get(dataref, index), wanted, 0.01, dataref)
end

-- Name in ref = value; of an array the first element.
function crew.are(values)
    for name, wanted in pairs(values) do
        local value = sim.get(crew.ref[name])
        check.near(type(value) == "table" and value[1] or value, wanted, 0.01, name)
    end
end

-- A command was begun so many times, and ended as often unless said otherwise.
function crew.fired(command, begun, ended)
    check.equal(sim.fired(command).begun, begun, command .. " begun")
    check.equal(sim.fired(command).ended, ended or begun, command .. " ended")
end

function crew.said()
    return said
end

return crew
