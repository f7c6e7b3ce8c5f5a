-- What the first officer can do, one action after the other: speak, wait, move, press buttons, write
-- datarefs, read values out. And what she does when a name in her files does not exist.
local check = require "lib.check"

local FRAME = 1 / 60 + 1e-3 -- and what single precision loses
local plugin = sim.dir("plugin")

sim.publish("test/int", "int", 1)
sim.publish("test/float", "float", 1)
sim.publish("test/double", "double", 1)
sim.publish("test/ints", "int[20]", 7)
sim.publish("test/few", "int[2]", 7)
sim.publish("test/floats", "float[4]", 7)
sim.publish("test/text", "string", "abc")
sim.publish("test/quantity", "double", 120.7)
for _, name in ipairs {"once", "hold", "begin", "end"} do sim.add_command("test/" .. name, name) end

-- A position that moves one channel, in a folder with the others.
check.write(plugin .. "custom/positions-w/wave.txt", "23,r_arm2,10,-20,30,\r\n")

-- Each phrase runs one list of actions.
local scripts = {
    ["sentences"] = {"0,Alpha", "7,,2", "0,Bravo", "1,Charlie delta", "0,Echo"},
    ["alternatives"] = {"1,one#three#seventeen letters", "0,After"},
    ["announcements"] = {"0,#Lights on", "1,#Lights off", "0,", "0,Done"},
    ["moves"] = {"2,wave,1", "0,Waved", "2,wave,0", "0,Still waving", "2,no such pose,1", "0,No pose"},
    ["buttons"] = {"4,test/once", "5,test/hold", "7,,1.5", "6,test/hold", "4,test/unknown", "0,Pressed"},
    ["hold it"] = {"5,test/end", "7,,60", "0,Never"},
    ["let go"] = {"11,test/end", "10,"},
    ["values"] = {"8,test/int,-3.9", "8,test/float,2.5", "8,test/double,0.1", "8,test/ints[2],8.7",
                  "8,test/floats[3],-0.5", "8,test/ints[15],15", "8, test/ints[1] ,4", "8,test/few,5", "0,Set"},
    ["bad values"] = {"8,test/nothing,1", "8,test/ints[16],1", "8,test/text,1", "0,Survived"},
    ["names"] = {"0,[NAME] for [USER] and [SIR] with <&TANK.LEFT.QUANTITY>; [TORW] stays"},
    ["stop here"] = {"0,First", "3,", "0,Second"},
    ["timer"] = {"12,ready,3", "12,steady,5"},
    ["timer again"] = {"12,ready,3"},
    ["no timer"] = {"12,ready,0"},
    ["nonsense"] = {"77,what,0", "0,Sense"},
}

local calls = {}
for phrase, actions in pairs(scripts) do calls[#calls + 1] = {phrase, table.unpack(actions)} end
check.systems({CREW = "sys=CREW\n" .. check.device("dev=SCRIPTS", table.unpack(calls)),
               TANK = "sys=TANK\ndev=LEFT\nout=QUANTITY,double,kg,0,,,test/quantity,exist,,,,0\n"}, {"CREW", "TANK"})
check.settings {["name-w"] = "Nora", user = "John Smith", sign = "Sir"}

check.start(3.5)

-- Runs a script for some seconds. What was said, and all messages with their times.
local function run(phrase, seconds)
    check.forget()
    check.hear(phrase, seconds)
    return sim.said(), sim.sent()
end

local function time_of(sent, text)
    for _, message in ipairs(sent) do
        if message.text == "say>" .. text then return message.t end
    end
    error("not said: " .. text, 2)
end

-- ---- Speaking ----

local _, sent = run("sentences", 9)
local alpha = time_of(sent, "Alpha")
check.near(time_of(sent, "Bravo") - alpha, 0.5 + 2, 2 * FRAME, "a sentence and a pause of 2 s")
check.near(time_of(sent, "Charlie delta") - time_of(sent, "Bravo"), 0.5, FRAME, "a plain sentence")
check.near(time_of(sent, "Echo") - time_of(sent, "Charlie delta"), 13 * 0.1 + 1, FRAME, "say and wait")

-- One of the alternatives, each in its turn, and the wait is that one's.
local seen = {}
for _ = 1, 60 do
    local said
    said, sent = run("alternatives", 4)
    check.equal(#said, 2, "one alternative only")
    local choice = said[1]
    check.near(time_of(sent, "After") - time_of(sent, choice), #choice * 0.1 + 1, FRAME, "its own length")
    check.equal(check.count(check.log(), "Send to speech server: " .. choice), 1, "the log names it")
    seen[choice] = true
end
check.that(seen.one and seen.three and seen["seventeen letters"], "all alternatives come up")

-- Announcements are said on request only, and cost no time when they are not.
for _, comments in ipairs {"absent", 0, 1, 2} do
    if comments == 0 then sim.publish("kv/fennic/comments", "int") end
    if comments ~= "absent" then sim.set("kv/fennic/comments", comments) end
    local hearing = sim.time()
    local said
    said, sent = run("announcements", 4)
    local wait = time_of(sent, "Done") - hearing
    if comments == 1 then
        check.near(time_of(sent, "Lights off") - time_of(sent, "Lights on"), 0.5, FRAME, "announcements")
        check.near(time_of(sent, "Done") - time_of(sent, "Lights off"), 2, 2 * FRAME, "announcements")
    else
        check.that(wait < 8 * FRAME, "no time is lost without announcements")
        check.list(said, {"Done"}, "no announcements, comments " .. comments)
    end
end

check.list(run("names", 1), {"Nora for John Smith and Sir with 1 2 0 , [TORW] stays"}, "names")
check.list(run("stop here", 3), {"First"}, "a break drops the rest")
check.list(run("nonsense", 1), {"Sense"}, "an action of no known type")

-- ---- Moving ----

-- A smooth move takes 0.8 s, one at once a frame or two; the next action waits for its end. A pose that does
-- not exist takes no time.
check.forget()
sim.hear("moves")
check.equal(check.count(check.log(), "EXECUTE RUN: dotypePos wave"), 1, "the move has begun")
check.that(sim.get("kv/fo/r_arm2_z") < 10, "not at once")
local moving = check.wait(2, function() return #sim.said() > 0 end, "the end of the move") + 1 / 60
check.near(moving, 0.8, 3 * FRAME, "a smooth move")
check.near(sim.get("kv/fo/r_arm2_z"), 30, 0.01, "the pose")
local still = check.wait(2, function() return #sim.said() > 0 end, "the move at once")
check.near(still, 0.5, 4 * FRAME, "at once")
local none = check.wait(2, function() return #sim.said() > 0 end, "the move to no pose")
check.near(none, 0.5, 4 * FRAME, "no pose")

-- ---- Buttons ----

run("buttons", 0)
local function is_held()
    return sim.fired("test/hold").begun == 1 and sim.fired("test/hold").ended == 0
end
check.wait(1, is_held, "held")
check.equal(sim.fired("test/once").begun .. sim.fired("test/once").ended, "11", "fired once")
check.near(check.wait(3, function() return not is_held() end, "let go"), 1.5, 2 * FRAME, "held for the pause")
check.says(1, {"Pressed"}, "a button that does not exist")

-- A held button is let go at once where the file says so, past everything that is still queued.
run("hold it", 1)
check.equal(sim.fired("test/end").begun .. sim.fired("test/end").ended, "10", "held")
sim.hear("let go")
check.equal(sim.fired("test/end").ended, 1, "let go at once")
sim.reply("abort")
sim.run(1)

-- ---- Datarefs ----

check.list(run("values", 1), {"Set"}, "values")
check.equal(sim.get("test/int"), -3, "int")
check.equal(sim.get("test/float"), 2.5, "float")
check.equal(sim.get("test/double"), 0.1, "double")
check.list({sim.get("test/ints", 0), sim.get("test/ints", 1), sim.get("test/ints", 2),
            sim.get("test/ints", 15), sim.get("test/ints", 16)}, {7, 4, 8, 15, 7}, "int array")
check.list(sim.get("test/floats"), {7, 7, 7, -0.5}, "float array")
check.list(sim.get("test/few"), {5, 7}, "the first element, where none is named")

check.list(run("bad values", 1), {"Survived"}, "bad values")
check.equal(check.count(check.log(), "Error in script - "), 2, "each that cannot be done is named")
check.equal(sim.get("test/ints", 0) + sim.get("test/ints", 16), 14, "elements untouched")
check.equal(sim.get("test/text"), "abc", "text untouched")

-- ---- Answer timers ----

local waits_for = check.waits_for
run("timer", 0)
check.equal(waits_for(), "ready, steady", "both are waited for")
check.near(check.wait(4, function() return waits_for() == "steady" end, "the first runs out"), 3, 6 * FRAME,
           "after 3 s")
check.near(check.wait(4, function() return waits_for() == "none" end, "the second runs out"), 2, 3 * FRAME,
           "after 5 s")
run("timer again", 2)
check.equal(waits_for(), "ready", "started")
run("timer again", 2)
check.equal(waits_for(), "ready", "starting it again gives it its full time")
run("no timer", 0)
check.equal(waits_for(), "none", "no time takes it back")

-- In a pause timers go too when their time is over, one a frame: the one behind it is passed over once.
run("timer", 0)
check.equal(waits_for(), "ready, steady", "both are waited for")
sim.set("sim/time/total_flight_time_sec", sim.time() + 10)
sim.pause(true)
for _, answer in ipairs {"ready", "steady", "none"} do
    sim.frames(1)
    check.equal(waits_for(), answer, "over")
end
