-- Aircraft that "data/aircraft.txt" describes: an invented one is served, with what its row says; what is wrong in
-- the file costs its line alone; the aircraft that she knows are hers first.
--
-- With a folder as the first argument, pictures of the figure in her seat go there.
local check = require "lib.check"

local folder, plugin = sim.dir("aircraft"), sim.dir("plugin")
check.systems {S = "sys=S\ndev=D\nout=LOADED,integer,,1,,,,,test/loaded,new,,0\n"}

local RUNWAYS = "kv/fnc/orvik/to_rwy/dist_m"

-- Starts an aircraft with this file and description and a list of aircraft; the log of the start.
local isAboard
local function start(name, description, list, objects)
    if isAboard then sim.stop() end
    isAboard = true
    check.aircraft(name, description, objects)
    check.write(plugin .. "data/aircraft.txt", list)
    check.settings {installation = "0"}
    sim.log()
    check.start(2)
    return check.log()
end

local function tells(log, ...)
    for _, text in ipairs {...} do check.equal(check.count(log, text), 1, text .. " in\n" .. table.concat(log, "\n")) end
end

-- ---- What a row says, through line ends, blanks, comments and mistakes ----

local LIST = "\xEF\xBB\xBF# mine\r\nseat=1,2,3\r\naircraft = Zephyr Nine\rfile= zephyr.acf \n  runways=1 # of its own\n"
    .. "clicksound=yes\nsetup\nwings=2\nfile=other.acf\nseat=1,75,1,2,11,5\nseat=1,2,3\n\naircraft=Zephyr\nfile=../zephyr.acf\nsetup=acf\n"
local log = start("zephyr.acf", "Zephyr Nine-A", LIST)
tells(log, "Aircraft detected: Zephyr Nine, by data/aircraft.txt line 3",
      "data/aircraft.txt line 2: it stands before the first \"aircraft=\" - line dropped: seat=1,2,3",
      "data/aircraft.txt line 6: \"clicksound=\" is 0 or 1 - line dropped: clicksound=yes",
      "data/aircraft.txt line 7: neither a comment nor key=value - line dropped: setup",
      "data/aircraft.txt line 8: the keys are aircraft, file, setup, seat, runways and clicksound - line dropped: wings=2",
      "data/aircraft.txt line 9: the aircraft has a line \"file=\" already - line dropped: file=other.acf",
      "data/aircraft.txt line 10: \"seat=\" is three numbers with commas between them, x,y,z in feet - line dropped",
      "data/aircraft.txt line 11: a seat counts with setup=acf alone, by which the figure comes into the aircraft's file",
      "data/aircraft.txt line 14: \"file=\" is the name of an aircraft's file, which ends in .acf - line dropped")
check.equal(sim.get("test/loaded"), 1, "its systems")
check.equal(sim.get(RUNWAYS), -1, "its runways")
check.that(check.works(), "without a figure she works at once")
check.equal(#sim.widgets(), 0, "and asks for nothing")

log = start("zephyr.acf", "Zephyr One", LIST)
tells(log, "Aircraft detected: Zephyr, by data/aircraft.txt line 13")
check.that(not sim.exists(RUNWAYS), "another row, other traits")
check.that(not check.works() and #sim.widgets() > 0, "a figure is asked for")

-- ---- Another aircraft, another file, one that she knows ----

log = start("zephyr.acf", "A Zephyr", LIST)
tells(log, "This aircraft is not described in data/aircraft.txt: its description is \"A Zephyr\"")
check.that(not sim.exists("test/loaded"), "a stranger has no systems")

log = start("mistral.acf", "Zephyr Nine", "aircraft=Zephyr\nfile=zephyr.acf\n")
tells(log, "data/aircraft.txt line 1: there is no zephyr.acf in the aircraft's folder, so no systems are read for it")
check.that(not sim.exists("test/loaded"), "nor has one of another file")

local KNOWN = "Boeing 737-800X"
log = start("b738_4k.acf", KNOWN, "aircraft=\nsetup=none\nrunways=0\n")
tells(log, "Aircraft detected: O737X", "data/aircraft.txt line 1 is not used: she knows this aircraft without it")
check.equal(sim.get(RUNWAYS), -1, "what she knows herself comes first")
log = start("b738_4k.acf", KNOWN, "aircraft=Zephyr\n")
tells(log, "Aircraft detected: O737X", "data/aircraft.txt describes other aircraft than this one: " .. KNOWN)
log = start("mine.acf", KNOWN, "aircraft=\n") -- whose file she does not know
tells(log, "Aircraft detected: any aircraft, by data/aircraft.txt line 1")
check.equal(sim.get("test/loaded"), 1, "its systems")

-- ---- The figure at the row's seat, and moved from there ----

local SEATS = "P _obja/0/_v10_att_file_stl seats.obj\nP _obja/0/_v10_att_x_acf_prt_ref 1.600000000\n"
    .. "P _obja/0/_v10_att_y_acf_prt_ref 0.900000000\nP _obja/0/_v10_att_z_acf_prt_ref 8.000000000\n"
local PLACED = "# mine\raircraft=Zephyr\rseat=1.4,0.6,7.25\rsetup=acf\r"

-- The numbers of an object's place in a text of properties.
local function place(text, object)
    local numbers = {}
    for i, axis in ipairs {"x", "y", "z"} do
        numbers[i] = tonumber(text:match("_obja/" .. object .. "/_v10_att_" .. axis .. "_acf_prt_ref ([^\r\n]+)"))
    end
    return numbers
end
local function acf() return check.read(folder .. "zephyr.acf") end
local function is_at(wanted, actual, what)
    for i = 1, 3 do check.near(actual[i], wanted[i], 1e-5, what .. ", axis " .. i) end
end
local function show(name)
    if not arg[1] then return end
    sim.show("front")
    sim.frames(1)
    sim.screenshot(arg[1] .. name .. ".png")
    sim.show("none")
end

check.write(plugin .. "data/developer.txt", "editor=1\n")
check.write(folder .. "objects/seats.obj", check.read(plugin .. "data/obj/seats.obj"))
start("zephyr.acf", "Zephyr", PLACED, SEATS .. "P _obja/count 1\n")
sim.push("Setup")
sim.push("OK")
is_at({1.4, 0.6, 7.25}, place(acf(), 1), "set up at the row's seat")
is_at({1.75, 1.2, 11.5}, place(check.read(plugin .. "data/obj/acf.txt"), 0), "which is not that of acf.txt")
check.restart(2)
check.that(check.works(), "she works")
show("seat_first")

-- In the position creator: twice, since he who sees her sit well saves, and then sees a little more.
sim.choose("Fennic/Editor")
for _, moved in ipairs {{0.03048, 0.03048, 0.1524}, {0.06096, 0.09144, 0.2286}} do
    for i, axis in ipairs {"x", "y", "z"} do sim.set("kv/fo/xyz_" .. axis, moved[i]) end
    check.forget()
    sim.choose("Fennic/Save Seat")
    check.list(sim.said(), {"My seat is saved. Please reload the aircraft."}, "she tells")
    check.equal(check.count(check.log(), "Seat saved: "), 1, "so does the log")
    local seat = {1.4 + moved[1] / 0.3048, 0.6 + moved[2] / 0.3048, 7.25 + moved[3] / 0.3048}
    is_at(seat, place(acf(), 1), "the aircraft's file")
    is_at(seat, place(check.read(plugin .. "data/obj/acf.txt"), 0), "acf.txt")
end
is_at({1.6, 0.9, 8}, place(acf(), 0), "her neighbour")
check.equal(check.read(plugin .. "data/aircraft.txt"), PLACED:gsub("1.4,0.6,7.25", "1.6,0.9,8"), "her row")
check.restart(2)
check.list({sim.get("kv/fo/xyz_x"), sim.get("kv/fo/xyz_y"), sim.get("kv/fo/xyz_z")}, {0, 0, 0}, "no offset any more")
show("seat_saved")

-- Where she is not in the file, nothing is written.
check.write(folder .. "zephyr.acf", (acf():gsub("kvfennic.obj", "nobody.obj")))
local before = acf()
sim.choose("Fennic/Save Seat")
check.equal(check.count(check.log(), "Seat not saved: "), 1, "why, in the log")
check.equal(acf(), before, "the aircraft's file")
sim.stop()
