-- The panel of the position creator, on the monitor and in the headset, in its own coordinates: from its upper left
-- corner, whatever size the window has.
local check = require "lib.check"

local creator = {side = 512, title = "Velmora Fennic Position Creator", pad_x = 256, pad_y = 390}

check.write(sim.dir("plugin") .. "data/developer.txt", "editor=1\r\n")
check.settings {gender = "w", installation = "2"}

function creator.window()
    for _, candidate in ipairs(sim.windows()) do
        if candidate.title == creator.title then return candidate end
    end
end

function creator.axes(channel)
    local name = "kv/fo/" .. channel
    return sim.get(name .. "_x"), sim.get(name .. "_y"), sim.get(name .. "_z")
end

-- Where the mouse, or the beam, must point.
function creator.at(x, y)
    local w, side = creator.window(), creator.side
    if w.vr then return math.ceil(x * w.vr_width / side), math.ceil((side - y) * w.vr_height / side) end
    return math.ceil(w.left + x * (w.right - w.left) / side), math.ceil(w.bottom + (side - y) * (w.top - w.bottom) / side)
end

function creator.click(x, y)
    sim.click(creator.at(x, y))
    sim.frames(1)
end

-- The button whose lower left corner is there.
function creator.press(button) creator.click(button[1] + 4, button[2] - 4) end

return creator
