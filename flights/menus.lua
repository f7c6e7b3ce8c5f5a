-- The menu: what it holds for which aircraft and which author, and what each of its items does.
local check = require "lib.check"

local plugin, aircraft = sim.dir("plugin"), sim.dir("aircraft")
local VOICE = "com.apple.speech.synthesis.voice."

check.systems {CREW = "sys=CREW\n"
    .. check.device("dev=TALK", {"hello|good day", "0,Hello; Captain", "1,#Done"},
                    {"count", "0,One", "0,Two", "0,Three"}, {"strike the new pose", "2,new,1", "8,test/int,1"})
    .. check.device("devstack=LIST", {"list", "12,roger; wilco,5"}, {"yes", "9,list"})}
check.settings {volume = "85", rate = "93"}
check.write(plugin .. "data/voicelist_mac.txt", VOICE .. "Anna\r\n" .. VOICE .. "Fred\r\nown voice\r\n")

-- Poses for the female figure, in two groups. A name that is in both belongs to the first, which so comes back.
for _, name in ipairs {"positions-w", "presets"} do assert(sim.remove(plugin .. "custom/" .. name)) end
check.folder(plugin .. "custom/positions-w/a")
check.folder(plugin .. "custom/positions-w/b")
check.folder(plugin .. "custom/presets")
local function pose(path, text) check.write(plugin .. "custom/" .. path, text) end
pose("positions-w/top.txt", "2,neck,25,0,0,\r\n")
pose("positions-w/a/both.txt", "2,neck,8,0,0,\r\n")
pose("positions-w/b/alone.txt", "2,neck,30,0,0,\r\n")
pose("positions-w/b/both.txt", "2,neck,99,0,0,\r\n")
pose("positions-w/b/own.txt", "2,neck,-20,0,0,\r\n")
pose("presets/l_point.txt", "7,l,20,21,22,\r\n25,r,30,31,32,\r\n")
pose("presets/r_point.txt", "7,l,40,41,42,\r\n25,r,50,51,52,\r\n")
pose("presets/notes.md", "no preset")

-- The menu as text: check marks, and two blanks more for each level.
local function tree(items, indent)
    local text = ""
    for _, item in ipairs(items) do
        local mark = item.checked == nil and "" or item.checked and "[x] " or "[ ] "
        text = text .. indent .. mark .. (item.separator and "----" or item.text) .. "\n"
            .. tree(item.items or {}, indent .. "  ")
    end
    return text
end
local function check_menu(expected, what)
    local function lines(text)
        local list = {}
        for line in text:gmatch("[^\n]+") do list[#list + 1] = line end
        return list
    end
    check.list(lines(tree(sim.menu(), "")), lines(expected), what)
end

local function choose(path)
    sim.choose(path)
    sim.frames(2)
end

local function setting(key)
    return check.read(plugin .. "data/settings_mac.txt"):match("\n" .. key .. "=([^\r]*)")
end

-- ---- What it holds ----

local PILOTS_PART = [[
Fennic
  Commands
    TALK
      hello
      good day
      count
      strike the new pose
    LIST
      list
      yes
  Options
    [x] Announce SOP procedures
    [ ] Announce ALL procedures
    [ ] Execute PM (fennic) job only
    [x] Execute PM and PF (both) job
  Select Voice
    Anna
    Fred
    own voice
  Look
    Brown hair in a knot
    Fair bob, in her fifties
    Dark, black hair in a knot
    A man in her place
    [x] Breathes, glances, reaches
  Voice Volume
    +10% Increase
    -10% Decrease
  Voice Rate
    +5% Increase
    -5% Decrease
  Restart Speech Engine
]]
assert(os.remove(plugin .. "version.txt")) -- an installation of one's own may have none
sim.start()
check_menu("Fennic", "before the first frame")
sim.frames(2)
check_menu(PILOTS_PART .. "  UnInstall Fennic\n  Update\n    Check Update", "a pilot, installed")

-- Restarts with these settings; returns when the menu is complete.
local function restart(settings)
    sim.stop()
    check.settings(settings)
    check.start(1)
    check.forget()
end
restart {installation = "0"}
check_menu("Fennic\n  Setup Fennic", "a pilot, not installed")
choose("Setup Fennic")
check.equal(setting("installation"), "2", "set up at once")

-- An aircraft that carries the figure, and an author.
check.write(plugin .. "data/developer.txt", "editor=1\r\n")
check.write(plugin .. "version.txt", "1.2.3\r\nnot this\r\n")
local acf = check.read(aircraft .. "Cessna_172SP.acf")
os.remove(aircraft .. "Cessna_172SP.acf")
check.write(aircraft .. "a340.acf", "PROPERTIES_BEGIN\nP acf/_descrip KV340-500\nPROPERTIES_END\n")
local AUTHORS_PART = [[
  Update
    Version 1.2.3
    Check Update
  Editor
  Save Position
  Save Preset L
  Save Preset R
  Reload Scripts
  Log ACF DataRefs
  Step-by-Step
  Log all phrases
  Positions
    top
    a
      both
    b
      alone
    a
      both
    b
      own
  Presets
    l_point.txt
    r_point.txt
]]
restart {}
check_menu(PILOTS_PART .. AUTHORS_PART, "an author, an A340")
os.remove(aircraft .. "a340.acf")
check.write(aircraft .. "Cessna_172SP.acf", acf)
restart {installation = "2", gender = "m"}
sim.choose("Positions/look/look_left") -- shipped, for the male figure
check.that(not pcall(sim.choose, "Positions/top"), "the male figure has no poses of the female one")
check.equal(sim.get("kv/fo/_gender"), 1, "the man is shown")
sim.choose("Look/Grey, near retirement")
check.equal(sim.get("kv/fo/_look"), 1, "another look")
sim.stop()
check.equal(setting("look%-m"), "2", "kept for next time")
check.start(1)
check.equal(sim.get("kv/fo/_look"), 1, "and next time")
-- The woman at once, with all that is hers.
sim.choose("Look/A woman in his place")
check.list({sim.get("kv/fo/_gender"), sim.get("kv/fo/_look")}, {0, 0}, "she is shown")
sim.choose("Look/A man in her place")
sim.choose("Look/A woman in his place")
check.that(pcall(sim.choose, "Look/Fair bob, in her fifties"), "with her looks")
sim.choose("Look/Brown hair in a knot")
sim.restart()
check.that(check.read(plugin .. "data/settings_mac.txt"):find("gender=w", 1, true), "kept for next time")
restart {gender = "w"}
check.list({sim.get("kv/fo/_gender"), sim.get("kv/fo/_look")}, {0, 0}, "the woman has a look of her own")

-- ---- The voice ----

-- In the first half minute a volume is kept only; a rate is sent at once.
sim.new_flight()
choose("Voice Volume/+10% Increase")
choose("Voice Rate/+5% Increase")
check.list(check.messages(), {"rate>98"}, "volume and rate in the first 30 s")
sim.run(30)
check.forget()
for _, item in ipairs {"+", "+", "-"} do
    choose("Voice Volume/" .. (item == "+" and "+10% Increase" or "-10% Decrease"))
    choose("Voice Rate/" .. (item == "+" and "+5% Increase" or "-5% Decrease"))
end
check.list(check.messages(), {"volume>100", "rate>100", "volume>100", "rate>100", "volume>90", "rate>95"},
           "to the upper limit, and back")
for _ = 1, 18 do
    choose("Fennic/Voice Volume/-10% Decrease")
    choose("Fennic/Voice Rate/-5% Decrease")
end
local messages = check.messages()
check.list({messages[15], messages[17], messages[34], messages[36]},
           {"volume>10", "volume>10", "rate>10", "rate>10"}, "to the lower limit")
choose("Restart Speech Engine")
choose("Select Voice/Fred")
check.list(check.messages(), {"restart>", "setvoice>" .. VOICE .. "Fred"}, "restart, voice")
sim.stop()
check.list({setting("volume"), setting("rate"), setting("APLvoice%-w"), setting("APLvoice%-m")},
           {"10", "10", VOICE .. "Fred", VOICE .. "man"}, "kept for next time")
check.start(1)
check.list(check.messages(), {"exit>", "contextpath>" .. plugin, "initvoice>" .. VOICE .. "Fred", "volume>10",
                              "rate>10"}, "next time")

-- ---- Options ----

check.forget()
local OPTIONS = {
    {"Announce ALL procedures", "comments", 1, "I will announce all my actions"},
    {"Announce SOP procedures", "comments", 0, "I will only announce the S O P actions"},
    {"Execute PM (fennic) job only", "realmode", 1, "I will only perform Pilot Monitoring actions"},
    {"Execute PM and PF (both) job", "realmode", 0, "I will perform all S O P actions"},
}
local function marks()
    local list = {}
    for _, item in ipairs(sim.menu()[1].items[2].items) do list[#list + 1] = item.checked and "x" or "-" end
    return table.concat(list)
end
for _, option in ipairs(OPTIONS) do choose("Options/" .. option[1]) end
check.list(check.messages(), {}, "an aircraft without options")
check.equal(marks(), "x--x", "an aircraft without options")

sim.publish("kv/fennic/comments", "int", 1)
sim.publish("kv/fennic/realmode", "int", 1)
restart {}
check.equal(marks(), "-xx-", "the aircraft's options")
for i, option in ipairs(OPTIONS) do
    choose("Options/" .. option[1])
    check.equal(sim.get("kv/fennic/" .. option[2]), option[3], option[1])
    check.list(check.messages(), {"say>" .. option[4]}, option[1])
    check.equal(marks(), ({"-xx-", "x-x-", "x-x-", "x--x"})[i], option[1])
end

-- ---- Phrases, step by step ----

check.forget()
choose("Commands/TALK/good day")
check.says(1, {"Hello, Captain"}, "a phrase from the menu")

choose("Step-by-Step")
choose("Commands/TALK/count")
check.says(5, {}, "step by step, the first step waits too")
for _, text in ipairs {"One", "Two"} do
    sim.tap("kv/fennic/step")
    check.says(5, {text}, "step by step")
end
choose("Step-by-Step")
check.says(1, {"Three"}, "no longer step by step")

-- ---- Poses ----

-- She is never quite still.
local function check_at(channel, wanted, what)
    check.near(sim.get("kv/fo/" .. channel .. "_x"), wanted, 3, what .. ", " .. channel)
end
for item, wanted in pairs {top = 25, ["b/own"] = -20, ["a/both"] = 8} do
    choose("Positions/" .. item)
    sim.run(0.9)
    check_at("neck", wanted, item)
end
choose("Presets/l_point.txt")
sim.run(0.9)
check_at("l_f11", 20, "a left hand")
check_at("r_f11", 0, "a left hand")
choose("Presets/r_point.txt")
sim.run(0.9)
check_at("r_f11", 50, "a right hand")

-- What she shows is saved, all of it; a script can use it once the scripts are read again.
for item, file in pairs {["Save Position"] = "positions-w/new.txt", ["Save Preset L"] = "presets/wl_new.txt",
                         ["Save Preset R"] = "presets/wr_new.txt"} do
    choose(item)
    local saved = check.read(plugin .. "custom/" .. file)
    check.that(saved, file)
    check.equal(select(2, saved:gsub("\r\n", "")), 47, "lines of " .. file)
    check.near(tonumber(saved:match("\n25,r_f11,([^,]+),")), 50, 3, file)
end
choose("Presets/l_point.txt")
choose("Positions/top")
sim.run(0.9)
local function strike()
    check.hear("strike the new pose", 2)
    return sim.get("kv/fo/l_f11_x")
end
pose("positions-w/new.txt", "7,l_f11,60,0,0,\r\n")
check.near(strike(), 20, 3, "a position that is not listed")
choose("Reload Scripts")
check.near(strike(), 60, 3, "a position that is listed")

-- ---- For authors ----

check.forget()
check.write(aircraft .. "b.obj", "I\n800\nOBJ\n\tANIM_rotate  1 0 0\t-20 20 sim/one\r\nANIM_show 0 1 sim/one\n"
    .. "ATTR_manip_toggle hand 1 0 sim/two[3] tip/top\nTRIS 0 3 not/this\nATTR_light_level 0 1 sim/one\n")
check.write(aircraft .. "c.acf~", "P DATAREF not/this\n")
os.rename(aircraft .. "Cessna_172SP.acf", aircraft .. "c.acf")
check.write(aircraft .. "c.acf", acf .. "P _obja/0/_obj_hide_DATAREF sim/hidden\n")
choose("Log ACF DataRefs")
check.list(check.log(), {("-"):rep(59), "DRF List from: " .. aircraft .. "b.obj", "DRF: sim/one", "DRF: sim/two[3]",
                         "DRF: tip/top", ("-"):rep(59), "DRF List from: " .. aircraft .. "c.acf",
                         "DRF: _obja/0/_obj_hide_DATAREF", "DRF: sim/hidden"}, "the aircraft's datarefs")
choose("Log all phrases")
check.list(sim.log(), {
    "", "************* Fennic Phrases List: *************",
    "say: Hello; Captain (CREW.TALK.P1)", "s&w: #Done (CREW.TALK.P1)",
    "say: One (CREW.TALK.P2)", "say: Two (CREW.TALK.P2)", "say: Three (CREW.TALK.P2)",
    "ans: roger; wilco (CREW.LIST.P1)", "inp: list (CREW.LIST.P2)",
    "*************Fennic Phrases List End*************"}, "the phrase log")
check.forget()
choose("Update/Version 1.2.3")
check.list(check.messages(), {}, "a label")
check.list(sim.log(), {}, "a label")

-- The tests provide a program that writes down what it is to open; elsewhere it would be a real one.
local opened = os.getenv("FENNIC_OPENED_PAGE")
if opened then
    os.remove(opened)
    local function named() return ((check.read(opened) or ""):gsub("\\", "/"):match('[^"\r\n]+')) end
    choose("Update/Check Update")
    for _ = 1, 6000 do
        if named() == plugin .. "CHANGELOG.txt" then break end
        os.execute(package.config:sub(1, 1) == "\\" and "ping -n 2 127.0.0.1 >NUL" or "sleep 0.1")
    end
    check.equal(named(), plugin .. "CHANGELOG.txt", "the file that is opened")
    check.list(check.log(), {"The changes are in " .. plugin .. "CHANGELOG.txt"}, "where the changes are")
    os.remove(plugin .. "CHANGELOG.txt")
    choose("Update/Check Update")
    check.list(check.log(), {"FileIO:Cant open file " .. plugin .. "CHANGELOG.txt"}, "no changes to show")
end

-- Without a model there are no phrases to log.
check.systems {}
restart {}
choose("Log all phrases")
check.list(sim.log(), {}, "no phrases")
