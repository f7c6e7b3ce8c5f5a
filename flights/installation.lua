-- From the first start of a new aircraft to taking the figure out of it again, in every type: what is asked,
-- when she works, and which bytes each step leaves in the aircraft.
--
-- With a folder as the first argument, pictures of the dialogs go there.
local check = require "lib.check"

local folder, plugin = sim.dir("aircraft"), sim.dir("plugin")
local PROPERTIES = check.read(plugin .. "data/obj/acf.txt")

-- ---- The types ----

local function acf(description, objects)
    return "I\n1200 Version\nACF\n\nPROPERTIES_BEGIN\nP acf/_descrip " .. description .. "\n" .. objects .. "PROPERTIES_END\n"
end
local function own(name) return "A\n800\nOBJ\n# the aircraft's " .. name .. "\n" end
local function shipped(name) return check.read(plugin .. "data/obj/" .. name) end

-- One table of files over another, as a new one.
local function with(files, changes)
    local result = {}
    for _, list in ipairs {files, changes} do
        for name, bytes in pairs(list) do result[name] = bytes end
    end
    return result
end

local FIGURE = {["objects/kvfennic.obj"] = shipped("kvfennic.obj"), ["objects/kvfennic.png"] = shipped("kvfennic.png"),
                ["objects/kvfennic_nml.png"] = shipped("kvfennic_nml.png")}
local UPDATE = {["objects/kvfennic.obj"] = own("new figure")}

-- first: what the aircraft has beside its .acf; setUp, out: what the setup and taking it out leave;
-- update: what an update of the aircraft puts there.
local seated = {first = {}, setUp = with(FIGURE, {}), update = UPDATE}
for _, name in ipairs {"kvfennic", "seats", "seats_Std"} do
    local path = "objects/" .. name .. ".obj"
    seated.first[path], seated.setUp[path .. ".backup"] = own(name), own(name)
    seated.setUp[path] = shipped(name == "kvfennic" and "kvfennic.obj" or "seats.obj")
end
seated.out = seated.first
local boeing = {first = {["objects/kvfennic.obj"] = own("figure"), ["objects/kvfennic.png"] = own("picture")},
                setUp = FIGURE, update = UPDATE, out = with(UPDATE, {["objects/kvfennic.png"] = own("picture")})}
local file767, empty767 = "767-300ER_xp11.acf", acf("Boeing 767 300ER", "P _obja/count 2\n")
local full767 = acf("Boeing 767 300ER", PROPERTIES:gsub("_obja/0/", "_obja/2/") .. "P _obja/count 3\n"):gsub("\n", "\r\n")
local b767 = {first = {[file767] = empty767}, setUp = with(FIGURE, {[file767] = full767, [file767 .. ".backup"] = empty767}),
              update = {[file767] = empty767}, out = {[file767] = empty767}}

local types = {
    {172, "Cessna_172SP.acf", "Cessna 172 SP Skyhawk - 180HP", {first = {}, setUp = {}, out = {}}},
    {319, "a319.acf", "A319 with high fidelity system modelling", seated},
    {321, "a321.acf", "A321 with high fidelity system modelling", seated},
    {737, "b738_4k.acf", "Boeing 737-800X", boeing},
    {739, "737_80NG.acf", "Boeing 737-900ER", boeing},
    {767, file767, "Boeing 767 300ER", b767},
}

-- ---- What a pilot sees ----

local QUESTION = "    Fennic plugin ready for|               for setup.|[Setup]|[Later]"
local SET_UP = "    Fennic plugin was set up|       Please reload aircraft|[OK]"
local UNINSTALL = "    Do you want to uninstall|       Fennic plugin now?|[Yes]|[No]"
local GONE = "    Plugin was deactivated|     Please reload aircraft.|[OK]"
local pictures = {[QUESTION] = "setup_question", [SET_UP] = "set_up", [UNINSTALL] = "uninstall_question", [GONE] = "deactivated"}
local step

-- The one dialog on the screen, or none for nil: its lines, and its buttons in brackets.
local function sees(expected)
    sim.frames(1)
    local texts = {}
    for _, widget in ipairs(sim.widgets()) do
        if widget.visible and widget.class == "main_window" then
            check.list({widget.left, widget.bottom, widget.right, widget.top}, {860, 465, 1060, 615}, step .. ": its place")
        elseif widget.visible then
            texts[#texts + 1] = widget.class == "button" and "[" .. widget.caption .. "]" or widget.caption
        end
    end
    check.equal(table.concat(texts, "|"), expected or "", step .. ": dialog")
    if expected and arg[1] then sim.screenshot(arg[1] .. pictures[expected] .. ".png") end
end

-- Whether she answers, and the state in the settings file, which is written at once.
local function is(works, state)
    check.equal(check.works(), works, step .. ": works")
    check.equal(check.read(plugin .. "data/settings_mac.txt"):match("installation=(%-?%d+)"), tostring(state), step)
end

local function aircraft_files()
    local found = {}
    for _, path in ipairs(sim.list(folder)) do if not path:find("^plugins/") then found[#found + 1] = path end end
    return found
end

-- Every file of the aircraft but the plug-in's, byte for byte.
local function holds(expected)
    local found = {}
    for _, path in ipairs(aircraft_files()) do found[path] = check.read(folder .. path) end
    for name in pairs(with(found, expected)) do check.equal(found[name], expected[name], step .. ": " .. name) end
end

local function put(files)
    for _, path in ipairs(aircraft_files()) do sim.remove(folder .. path) end
    for name, bytes in pairs(files) do check.write(folder .. name, bytes) end
end

-- ---- The life of an installation ----

for _, aircraft in ipairs(types) do
    local type, file, description, files = table.unpack(aircraft)
    local first = with({[file] = acf(description, "P _obja/count 0\n")}, files.first)
    local setUp = with(first, files.setUp)
    local function at(what) step = type .. ", " .. what end
    put(first)
    check.settings {installation = "0"}

    at "a new aircraft"
    sim.start()
    sees(QUESTION)
    is(false, 0)
    at "later"
    sim.push("Later")
    sees(nil)
    is(false, 1)
    sim.restart()
    sees(nil)
    is(false, 1)
    holds(first)

    at "set up"
    sim.choose("Fennic/Setup Fennic")
    sees(SET_UP)
    is(false, 2) -- not before the aircraft is loaded again
    sim.push("OK")
    sees(nil)
    holds(setUp)
    check.equal(check.count(check.log(), "was not complete"), 0, step)
    sim.restart()
    sees(nil)
    is(true, 2)

    if files.update then
        at "an update of the aircraft"
        sim.stop()
        put(with(setUp, files.update))
        sim.start()
        sees(QUESTION)
        is(false, 2)
        sim.push("Setup")
        sees(SET_UP)
        sim.push("OK")
        holds(setUp)
        sim.restart()
        is(true, 2)
    end

    at "not out"
    sim.choose("Fennic/UnInstall Fennic")
    sees(UNINSTALL)
    sim.push("No")
    sees(nil)
    is(true, 2)
    holds(setUp)
    at "out"
    sim.choose("Fennic/UnInstall Fennic")
    sim.push("Yes")
    sees(GONE)
    is(true, -1)
    sim.push("OK")
    holds(with(setUp, files.out))
    sim.restart()
    sees(nil)
    is(false, -1)
    check.equal(sim.menu()[1].items[1].text, "Setup Fennic", step)
    sim.stop()
end

-- ---- What cannot be done ----

-- The main windows on the screen, from front to back: their captions one after the other.
local function windows()
    sim.frames(1)
    local list, widgets = {}, sim.widgets()
    for i, root in ipairs(widgets) do
        if root.visible and root.class == "main_window" then
            local texts = {}
            for _, widget in ipairs(widgets) do
                if widget.parent == i then texts[#texts + 1] = widget.caption end
            end
            list[#list + 1] = table.concat(texts, "|")
        end
    end
    return list
end

step = "a setup that fails"
put {["b738_4k.acf"] = acf("Boeing 737-800X", "")}
check.folder(folder .. "objects/kvfennic.png") -- where the picture should go
check.settings {installation = "0"}
sim.start()
sim.push("Setup")
local seen = table.concat(windows(), "\n")
check.that(seen:find("Fennic plugin was set up", 1, true), seen)
for _, text in ipairs {"objects/kvfennic.png could not be replaced", "Make room on the disk", "Try again", "Close"} do
    check.that(seen:find(text, 1, true), step .. ": " .. text .. "\n" .. seen)
end
if arg[1] then sim.screenshot(arg[1] .. "set_up_with_failures.png") end
check.equal(check.read(folder .. "objects/kvfennic.obj"), shipped("kvfennic.obj"), step)
sim.remove(folder .. "objects/kvfennic.png")
sim.push("Try again")
check.equal(#windows(), 1, step .. ": windows")
sim.push("OK")
check.equal(#windows(), 0, step .. ": windows")
check.equal(check.read(folder .. "objects/kvfennic.png"), shipped("kvfennic.png"), step)
sim.stop()

-- The aircraft that carries the figure itself is never asked about.
step = "345"
put {["a340.acf"] = acf("KV340-500", "")}
check.settings {installation = "0"}
sim.start()
sees(nil)
is(true, 0)
for _, item in ipairs(sim.menu()[1].items) do check.that(not item.text:find("Fennic$"), item.text) end
