-- How the first officer and the speech server get to know each other: which voice, how loud, how fast, and
-- the settings that decide it.
local check = require "lib.check"

local plugin = sim.dir("plugin")
local settings = plugin .. "data/settings_mac.txt"
local FRAME = 1 / 60
local NORA = "com.apple.speech.synthesis.voice.woman"
local JONAS = "com.apple.speech.synthesis.voice.man"

-- The list of the last sixteen messages, numbered from the first one on, shows those that were sent.
local function check_listed(texts)
    local number = math.max(#texts - 16, 0)
    for line in sim.get("kv/speech/messages"):gmatch("[^\n]+") do
        number = number + 1
        check.equal(line, number .. " " .. texts[number], "listed")
    end
    check.equal(number, #texts, "messages listed")
end

-- Starts the plug-in at this flight time, flies for some seconds and stops; the messages on the way.
local function fly(at, seconds)
    sim.set("sim/time/total_flight_time_sec", at)
    sim.start()
    sim.sent()
    sim.log()
    sim.run(seconds)
    local sent = sim.sent()
    local texts = {}
    for i, message in ipairs(sent) do texts[i] = message.text end
    check_listed(texts)
    sim.stop()
    sim.sent()
    return texts, sent
end

-- A fresh flight: the context at once, the voice after 3 s, and the server keeps its own volume and rate.
local texts, sent = fly(0, 40)
check.list(texts, {"contextpath>" .. plugin, "initvoice>" .. NORA}, "fresh flight")
check.near(sent[1].t, FRAME, 1e-4, "the context is read in the first frame")
check.near(sent[2].t, 3 + FRAME, 1e-4, "the voice comes in the first frame after 3 s")

-- Late in a flight the voice comes at once, then volume and rate, a frame each.
texts, sent = fly(31, 5)
check.list(texts, {"contextpath>" .. plugin, "initvoice>" .. NORA, "volume>100", "rate>50"}, "late start")
for i = 2, 4 do
    check.near(sent[i].t - sent[i - 1].t, FRAME, 1e-4, "one message a frame, message " .. i)
end

-- The limit of 30 s is looked at once for each: here the volume misses it by a frame.
texts = fly(30 - 3.5 * FRAME, 5)
check.list(texts, {"contextpath>" .. plugin, "initvoice>" .. NORA, "rate>50"}, "start around 30 s")

-- The other gender has a voice of its own. It is looked for whole, and with single blanks.
check.settings {gender = "m", volume = "70", rate = "35"}
check.list(fly(40, 1), {"contextpath>" .. plugin, "initvoice>" .. JONAS, "volume>70", "rate>35"}, "gender m")
check.settings {["APLvoice-m"] = "two  blanks"}
check.write(plugin .. "data/voicelist_mac.txt", "x two blanks\r\ntwo   blanks\r\ntwo blanks\r\n")
check.list(fly(40, 1), {"contextpath>" .. plugin, "initvoice>two blanks", "volume>70", "rate>35"}, "blanks")

-- A voice that is not in the list, or no list, or no gender: the server's own voice.
check.settings {["APLvoice-m"] = "blanks"}
local unvoiced = {"contextpath>" .. plugin, "volume>70", "rate>35"}
check.list(fly(40, 1), unvoiced, "voice not in the list")
check.settings {["APLvoice-m"] = "two blanks", gender = "x"}
check.list(fly(40, 1), unvoiced, "no gender")
check.settings {gender = "m"}
os.remove(plugin .. "data/voicelist_mac.txt")
check.list(fly(40, 1), unvoiced, "no voice list")

-- Numbers that are none leave the defaults and a line in the log; the lines after them are read.
check.settings {volume = "loud", rate = "", user = "Anna", gender = "x"}
sim.start()
local log = check.log()
check.equal(check.count(log, 'volume= "loud" is no number'), 1, "log of the volume")
check.equal(check.count(log, 'rate= "" is no number'), 1, "log of the rate")
check.equal(check.count(log, "data/settings_mac.txt line 6"), 1, "place of the volume")
check.equal(check.count(log, 'line 1: the gender is "w" or "m" - line dropped'), 1, "a wrong choice")
sim.stop()
check.that(check.read(settings):find("\r\nvolume=100\r\nrate=50\r\n", 1, true), "defaults for malformed numbers")
check.that(check.read(settings):find("\r\nuser=Anna\r\n", 1, true), "the lines behind a malformed one")

-- What is read is written back: every key, blanks, the offset put back to its default, 11 read as 1.
check.write(settings, "name-w=Too early\ngender=w\nAPLvoice-m=Jon\nIBMvoice-w=a\nIBMvoice-m=b\nunknown=1\n\n"
    .. "volume=55\nrate=45\nsize-w=99\nsize-m=101\nsign=Ma'am\nuser=John   Smith\ncheckdrf=\ntxtoffset=250\n"
    .. "installation=11")
sim.start()
sim.stop()
check.equal(check.read(settings), table.concat({
    "gender=w", "APLvoice-w=", "APLvoice-m=Jon", "IBMvoice-w=a", "IBMvoice-m=b", "volume=55", "rate=45",
    "name-w=Too early", "name-m=", "size-w=99", "size-m=101", "sign=Ma'am", "user=John Smith", "checkdrf=",
    "txtoffset=10", "installation=1", "", ""}, "\r\n"), "settings written back")

-- A control dataref that appears late: until then the first officer looks once a second and does nothing.
check.settings {checkdrf = "test/control", installation = "2"}
sim.new_flight()
sim.start()
sim.sent()
sim.run(4.5)
check.list(check.messages(), {}, "nothing before the control dataref exists")
sim.publish("test/control", "int", 0)
sim.run(1)
sent = sim.sent()
check.equal(sent[1].text, "contextpath>" .. plugin, "the work begins")
check.near(sent[1].t, 5 + FRAME, 1e-3, "at the next look, a whole second after the last")
sim.stop()

-- Without the other system's file beside it a settings file does not count: first the one in custom/, then
-- the defaults, which say that the figure is not installed; nothing runs.
os.remove(plugin .. "data/settings_win.txt")
check.write(plugin .. "custom/settings_mac.txt", "gender=m\nvolume=20\ninstallation=2\n")
check.write(plugin .. "custom/settings_win.txt", "")
check.list(fly(40, 1), {"contextpath>" .. plugin, "volume>20", "rate>50"}, "settings in custom/")
check.that(check.read(settings):find("^gender=m\r\n"), "written to data/")
os.remove(plugin .. "custom/settings_win.txt")
check.list(fly(40, 1), {}, "not installed")
check.equal(check.read(settings), "gender=\r\nAPLvoice-w=\r\nAPLvoice-m=\r\nIBMvoice-w=\r\nIBMvoice-m=\r\n"
    .. "volume=100\r\nrate=50\r\nname-w=\r\nname-m=\r\nsize-w=\r\nsize-m=\r\nsign=\r\nuser=\r\ncheckdrf=\r\n"
    .. "txtoffset=10\r\ninstallation=0\r\n\r\n", "defaults")

-- Stopping tells the server to go.
check.write(plugin .. "data/settings_win.txt", "")
sim.start()
sim.sent()
sim.stop()
check.list(check.messages(), {"exit>"}, "the last message")
