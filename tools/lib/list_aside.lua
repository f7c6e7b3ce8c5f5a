-- Drags the first officer's list to the left, where it hides nothing of her.
return function()
    local first = sim.screen_text()[1]
    sim.mouse_down(first.x + 10, first.y + 5)
    sim.mouse_drag(45, first.y + 5)
    sim.frames(1)
    sim.mouse_up(45, first.y + 5)
end
