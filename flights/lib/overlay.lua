-- The first officer's list on the screen, as a pilot sees it and clicks on it.
local check = require "lib.check"

local overlay = {}

local LINE = 15     -- from one line to the next
local HEADING = -30 -- headings stand left of the list's place

-- Where the list is: the place that its lines start from.
function overlay.place()
    for _, text in ipairs(sim.screen_text()) do
        if text.text == "(MOVABLE)" then return text.x - HEADING, text.y end
    end
end

-- The list as text, a row for each 15 pixels, lines indented. Empty when it is not drawn.
function overlay.picture()
    local x, y = overlay.place()
    local rows, highest = {}, 0
    for _, text in ipairs(sim.screen_text()) do
        local row, rest = (text.y - y) // LINE, (text.y - y) % LINE
        local indents = {[HEADING] = "", [0] = "  ", [30] = " "}
        local indent = indents[text.x - x]
        check.that(rest == 0 and indent, ("%q stands at %d, %d"):format(text.text, text.x - x, text.y - y))
        rows[row] = (rows[row] or "") .. indent .. text.text
        highest = math.max(highest, row)
    end
    local lines = {}
    for row = rows[0] and highest or -1, 0, -1 do lines[#lines + 1] = (rows[row] or "") .. "\n" end
    return table.concat(lines)
end

-- The drawn line of that text. The newest and highest, when there are several.
function overlay.line(wanted)
    local found
    for _, text in ipairs(sim.screen_text()) do
        if text.text == wanted then found = text end
    end
    return found
end

-- The drawn texts that match, in the order drawn.
function overlay.lines(pattern)
    local texts = {}
    for _, line in ipairs(sim.screen_text()) do
        if line.text:find(pattern) then texts[#texts + 1] = line.text end
    end
    return texts
end

function overlay.colour(text)
    local line = overlay.line(text)
    check.that(line, text .. " is not drawn")
    return ("%.2f %.2f %.2f"):format(line.r, line.g, line.b)
end

-- Clicks on a line, so many pixels above its base, and lets the frame pass.
function overlay.click(text, above)
    local line = overlay.line(text)
    check.that(line, text .. " is not drawn")
    local x = overlay.place()
    sim.click(x, line.y + (above or 5))
    sim.frames(1)
end

-- The window that takes the clicks lies around the list, of which so many lines are above the screen.
function overlay.check_window(cut)
    local x, y = overlay.place()
    local windows = sim.windows()
    check.equal(#windows, 1, "windows")
    local window = windows[1]
    check.list({window.left, window.bottom, window.right}, {x - 50, y, x + 200}, "the window's place")
    local _, lines = overlay.picture():gsub("\n", "")
    check.equal(window.top - window.bottom, (lines + (cut or 0)) * LINE + 30, "the window's height")
end

return overlay
