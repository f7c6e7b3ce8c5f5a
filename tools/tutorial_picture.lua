-- Makes docs/pictures/tutorial.png: the list on the screen in the tutorial's aircraft, after a wrong answer.
--
--     ./fennic sim new Skylark
--     ./fennic sim --screen 560x330 --aircraft Skylark tools/tutorial_picture.lua docs/pictures/tutorial.png

local function click(text)
    for _, drawn in ipairs(sim.screen_text()) do
        if drawn.text:sub(1, #text) == text then sim.click(drawn.x + 30, drawn.y + 5) end
    end
    sim.frames(1)
end

sim.set("sim/cockpit2/controls/parking_brake_ratio", 0)
sim.start()
sim.run(6)
sim.hear("before start checklist")
sim.run(6)
sim.hear("fastened")
sim.run(4)
sim.hear("both")
sim.run(4)
sim.hear("set")
sim.run(1)
click("CHECKLISTS")
sim.screenshot(arg[1])
