-- Makes the pictures of the README's film, docs/pictures/demo.gif: a before-start procedure and the beginning of
-- its checklist in an airliner, as the captain sees them from where his head is.
--
--     ./fennic film
--
-- flies this, with the folder that the pictures go to as the argument, ten for a second of flight.

local frames = 0

local function film(seconds)
    for _ = 1, math.floor(seconds * 10 + 0.5) do
        sim.run(0.1)
        frames = frames + 1
        sim.screenshot(("%s/%03d.png"):format(arg[1], frames))
    end
end

-- Answers when she has asked.
local function answer(question, text)
    local finish = sim.time() + 20
    repeat
        film(0.1)
        assert(sim.time() < finish, "she never asked " .. question)
        local isAsked = false
        for _, said in ipairs(sim.said()) do isAsked = isAsked or said:find(question, 1, true) end
    until isAsked
    film(0.8 + #question / 14) -- she speaks, and he looks
    sim.hear(text)
end

sim.screen(640, 360)
sim.set("sim/cockpit2/controls/parking_brake_ratio", 1)
sim.set("sim/flightmodel/weight/m_fuel_total", 62000)
sim.start()
sim.run(3)
require("lib.list_aside")()
sim.set("kv/fo/_glass", 0)
sim.show("cockpit")
sim.run(0.5)
sim.said()

film(1)
sim.hear("before start procedure")
answer("Before start checklist, Sir?", "yes")
answer("Cockpit preparation?", "completed")
answer("Signs?", "on")
answer("Fuel quantity?", "checked")
answer("Altimeters?", "set")
film(1.5)
