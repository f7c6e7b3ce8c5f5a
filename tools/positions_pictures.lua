-- Makes docs/pictures/positions_w.png, positions_m.png and presets.png: all shipped positions of both figures
-- from the captain's seat, in the order of docs/positions.md, and the presets of the right hand. ImageMagick
-- puts them together.
--
--     ./fennic sim --aircraft KV340-500 --screen 230x200 tools/positions_pictures.lua docs/pictures/

local GROUPS = {
    {"rest", "rest_thighs", "rest_knees", "rest_lap", "rest_window", "rest_captain", "rest_instruments"},
    {"reach", "reach_panel", "reach_throttle", "reach_flaps", "reach_trim", "reach_pedestal", "reach_radios",
     "reach_gear", "reach_glareshield", "reach_overhead", "reach_overhead_aft", "reach_switches", "reach_handle",
     "reach_yoke"},
    {"look", "look_left", "look_right", "look_captain", "look_instruments", "look_overhead", "look_down",
     "look_outside"},
    {"work", "tablet_hold", "writing"},
    {"signs", "thumbs_up", "point_ahead", "hand_up"},
    {"", "tablet"},
}
local HANDS = {"relaxed", "open", "fist", "point", "grip", "thumb_up", "pen"}

local custom = sim.dir("plugin") .. "custom/"

-- The channels as a file has them, at once: the plug-in itself moves nothing in the first seconds of a flight.
-- With a name's beginning, the channels alone that are named so.
local function pose(path, beginning)
    for line in io.lines(custom .. path) do
        local name, x, y, z = line:match("^%d+,([^,]+),([^,]+),([^,]+),([^,]+),")
        if name:find("^" .. (beginning or "")) then
            sim.set("kv/fo/" .. name .. "_x", tonumber(x))
            sim.set("kv/fo/" .. name .. "_y", tonumber(y))
            sim.set("kv/fo/" .. name .. "_z", tonumber(z))
        end
    end
end

local folder = sim.dir("xplane")
local taken = {}

local function take()
    taken[#taken + 1] = ("'%spicture_%02d.png'"):format(folder, #taken + 1)
    sim.screenshot(taken[#taken]:sub(2, -2))
end

-- What was taken since the last sheet.
local function sheet(name, columns)
    assert(os.execute(("montage %s -tile %dx -geometry +0+0 'png24:%s%s.png'"):format(
        table.concat(taken, " "), columns, arg[1], name)))
    taken = {}
end

sim.start()
sim.run(1)
sim.tap("kv/fennic/widget") -- the list would cover what is to be seen
sim.frames(1)
sim.set("kv/fo/_glass", 0)
sim.set("kv/fo/_face", 0) -- or she may be blinking
sim.show("cockpit")
for gender, letter in ipairs {"w", "m"} do
    sim.set("kv/fo/_gender", gender - 1)
    for _, group in ipairs(GROUPS) do
        for i = 2, #group do
            pose(("positions-%s/%s/%s.txt"):format(letter, group[1], group[i]))
            sim.set("kv/fo/_planshet", group[i]:find("tablet") and 1 or 0)
            sim.set("kv/fo/_pad", group[i] == "writing" and 1 or 0)
            take()
        end
    end
    sheet("positions_" .. letter, 8)
end
sim.set("kv/fo/_gender", 0)
pose("positions-w/signs/hand_up.txt")
sim.show("hand")
for _, hand in ipairs(HANDS) do
    pose("presets/r_" .. hand .. ".txt", "r_f")
    take()
end
sheet("presets", 7)
