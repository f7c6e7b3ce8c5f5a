-- Makes docs/pictures/checklist.png: the list on the screen in the middle of a checklist.
--
--     ./fennic sim --screen 560x330 tools/checklist_picture.lua docs/pictures/checklist.png

local function line(wanted)
    for _, text in ipairs(sim.screen_text()) do
        if text.text:sub(1, #wanted) == wanted then return text end
    end
end
local function click(text)
    sim.click(line(text).x + 30, line(text).y + 5)
    sim.frames(1)
end

sim.start()
sim.run(4)
click("CHECKLISTS")
click("before start checklist")
sim.run(4.5)
sim.hear("locked")
sim.run(2.7)
sim.tap("kv/fennic/select")
sim.run(0.7)
for _ = 1, 60 do
    if line("set").b > 0.25 then sim.frames(1) end -- until its pulse is at its yellowest
end
sim.screenshot(arg[1])
