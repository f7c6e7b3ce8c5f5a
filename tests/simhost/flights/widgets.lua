-- Widgets as the pilot uses them. The probe logs every notice that it gets.
sim.screen(800, 600)
sim.start()
sim.frames(1)
sim.log()

local function noted(...)
    local found, expected = table.concat(sim.log(), "; "), table.concat({...}, "; ")
    if found ~= expected then error("noted: " .. found .. "\nexpected: " .. expected, 2) end
end
local function widget(caption)
    for _, each in ipairs(sim.widgets()) do
        if each.caption == caption then return each end
    end
end
local function refuses(caption, why)
    local ok, message = pcall(sim.push, caption)
    assert(not ok and message:find(why, 1, true), tostring(message))
end

-- Buttons.
sim.push("Push me")
noted('pushed "Push me" 0')
sim.push("Check")
sim.push("Check")
sim.push("Captain")
sim.push("Captain") -- a radio button that is on stays on
noted('state of "Check" 1', 'state of "Check" 0', 'state of "Captain" 1')
assert(widget("Captain").state and widget("Captain").behavior == "radio" and not widget("Check").state)
refuses("Not me", "disabled")
refuses("Nobody", 'no visible button "Nobody"; there is "Push me"')

-- The other window, over a button and moved away again by its title bar.
sim.mouse_down(550, 290)
sim.mouse_drag(250, 430)
sim.mouse_up(250, 430)
assert(widget("Lit on dark").left == 160, "what lies in a window moves along")
refuses("Push me", "covers it")
sim.mouse_down(250, 430)
sim.mouse_drag(550, 290)
sim.mouse_up(550, 290)
noted()

-- Text fields.
sim.click(180, 345)
assert(widget("Velmora").focus)
sim.key("home")
sim.type("F")
noted('text "FVelmora" 0')
sim.click(300, 490) -- beside it
sim.type("nobody")
noted()

-- Scroll bars: an arrow, the track and the thumb.
sim.click(392, 235)
sim.click(392, 260)
noted('scrolled "" 99', 'scrolled "" 74')
sim.mouse_down(220, 312)
sim.mouse_drag(900, 312)
sim.mouse_up(900, 312)
noted('scrolled "" 100')

-- Closing one, whose plug-in destroys it in its own callback.
sim.push("Push me")
sim.mouse_down(110, 490)
sim.mouse_up(300, 490) -- let go beside the box
noted('pushed "Push me" 0')
sim.click(110, 490)
noted('closed "All classes" 0')
assert(not widget("Push me") and #sim.widgets() == 3 and #sim.windows() == 1)
sim.frames(1)

-- The other one is dropped with the plug-in.
sim.stop()
assert(#sim.widgets() == 0 and #sim.windows() == 0)
