-- A 737 leaves Seattle-Tacoma by runway 16L and comes back to 34R, the same pavement from its other end. What
-- the first officer computes of it: distances, headings, the runways' names; and the altimeter, and whether
-- the pilot looks at her.
--
-- Thresholds, length (11,901 ft) and magnetic headings are the FAA's, as in its airport data for KSEA.
local check = require "lib.check"

local THRESHOLD_16L = {47 + 27.828120 / 60, -(122 + 18.465058 / 60)}
local THRESHOLD_34R = {47 + 25.870537 / 60, -(122 + 18.483233 / 60)}
local LENGTH_M = 11901 * 0.3048
local VARIATION = -16 -- 16 degrees east: true bearing plus this is magnetic
local ALONG_34R = 344.36 -- magnetic, from one threshold to the other
local METRES_A_DEGREE = 111175 -- of latitude, at 47.45 degrees north on the WGS84 ellipsoid
local METRES_A_DEGREE_EAST = 75400 -- of longitude

local FMS, PFD, OUT = "laminar/B738/fms/", "laminar/B738/pfd/", "kv/fnc/orvik/"
local RADIO_ALTITUDE = "sim/cockpit2/gauges/indicators/radio_altimeter_height_ft_pilot"
local HEADING = "sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot"

check.aircraft("b738_4k.acf", "Boeing 737-800X")
check.systems {S = "sys=S\n" .. check.device("dev=D", {"which runway", "0,Runway [TORW]; go", "0,Runway [LDRW]; land",
                                                    "0,Both [TORW] and [LDRW]", "0,That is all"})}

-- The aircraft, metres along runway 34R from its threshold and to the right of it.
local function place(along, right, heading, height)
    local north = along * math.cos(math.rad(ALONG_34R - VARIATION)) - right * math.sin(math.rad(ALONG_34R - VARIATION))
    local east = along * math.sin(math.rad(ALONG_34R - VARIATION)) + right * math.cos(math.rad(ALONG_34R - VARIATION))
    sim.set("sim/flightmodel/position/latitude", THRESHOLD_34R[1] + north / METRES_A_DEGREE)
    sim.set("sim/flightmodel/position/longitude", THRESHOLD_34R[2] + east / METRES_A_DEGREE_EAST)
    sim.set(HEADING, heading)
    sim.set(RADIO_ALTITUDE, height)
    sim.frames(1)
end
local function expect(what, departure, departureTurn, arrival, arrivalTurn)
    check.near(sim.get(OUT .. "to_rwy/dist_m"), departure, departure < 0 and 0 or 3, what .. ": to the threshold")
    check.near(sim.get(OUT .. "to_rwy/delta_hdg_deg"), departureTurn, 0.01, what .. ": turn to the departure")
    check.near(sim.get(OUT .. "ldg_rwy/dist_m"), arrival, arrival < 0 and 0 or 2 + arrival * 2e-3, what .. ": arrival")
    check.near(sim.get(OUT .. "ldg_rwy/delta_hdg_deg"), arrivalTurn, arrivalTurn < 0 and 0 or 0.2, what .. ": turn")
end
local function announced()
    sim.said()
    check.hear("which runway", 3)
    return sim.said()
end

local DEPARTURE = {"Runway 1 6 Left, go", "Both 1 6 Left and [LDRW]", "That is all"}
local BOTH = {"Runway 1 6 Left, go", "Runway 3 4 Right, land", "Both 1 6 Left and [LDRW]", "That is all"}

sim.world(47.45, -122.31)
sim.set("sim/flightmodel/position/magnetic_variation", VARIATION)
place(0, 0, 170, 0)
check.start(4)

-- ---- On the ground ----

-- Nothing is known before the aircraft has published its runways, and nothing is said of them.
expect("no runways", -1, -1, -1, -1)
check.list(announced(), {"That is all"}, "no runways")

sim.publish(FMS .. "ref_runway_start_lat", "float", 0)
sim.publish(FMS .. "ref_runway_start_lon", "float", 0)
sim.publish(FMS .. "ref_runway_crs", "float", 0)
sim.publish(FMS .. "des_runway_start_lat", "double", 0) -- an aircraft may choose the type
sim.publish(FMS .. "des_runway_start_lon", "double", 0)
sim.publish(FMS .. "des_runway_crs", "int", 0)
sim.publish(PFD .. "ils_runway0", "string", "")
sim.publish(PFD .. "ils_runway", "string", "")
sim.run(2)
expect("no flight plan", -1, -1, -1, -1)

sim.set(FMS .. "ref_runway_start_lat", THRESHOLD_16L[1])
sim.set(FMS .. "ref_runway_start_lon", THRESHOLD_16L[2])
sim.set(FMS .. "ref_runway_crs", 164)
sim.set(PFD .. "ils_runway0", "16L")
place(0, 0, 170, 0)
expect("a whole runway away", LENGTH_M, 6, -1, -1)
place(LENGTH_M - 300, 400, 354, 0)
expect("three to four", 500, 170, -1, -1)
place(LENGTH_M - 100, 0, 164, 0)
expect("lined up", 100, 0, -1, -1)
check.list(announced(), DEPARTURE, "departure")

-- ---- In the air ----

sim.set(FMS .. "des_runway_start_lat", THRESHOLD_34R[1])
sim.set(FMS .. "des_runway_start_lon", THRESHOLD_34R[2])
sim.set(FMS .. "des_runway_crs", 344)
sim.set(PFD .. "ils_runway", "34R")

-- The departure keeps what it was.
place(1000, 0, 164, 2.9)
expect("rolling", LENGTH_M - 1000, 0, -1, -1)
place(900, 0, 164, 3)
expect("airborne", LENGTH_M - 1000, 0, -1, -1)
local dist, turn = LENGTH_M - 1000, 0

place(-20000, 0, 344, 1500)
expect("20 km out", dist, turn, -1, -1)
place(-15100, 0, 344, 1500)
expect("just too far", dist, turn, -1, -1)
check.list(announced(), DEPARTURE, "too far")
place(-14800, 0, 344, 1500)
expect("in range", dist, turn, 14800, 0.36)
check.list(announced(), BOTH, "approach")
for height, seen in pairs {[100] = false, [101] = true, [1999] = true, [2000] = false} do
    place(-8000, 0, 100, height)
    expect("at " .. height .. " ft", dist, turn, seen and 8000 or -1, seen and 0.36 or -1)
end
place(-10000, 1600, 344, 500)
expect("right of the centre line", dist, turn, math.sqrt(10000 ^ 2 + 1600 ^ 2), math.deg(math.atan(1600, 10000)) - 0.36)
place(-10000, -1600, 344, 500)
expect("left of it", dist, turn, math.sqrt(10000 ^ 2 + 1600 ^ 2), math.deg(math.atan(1600, 10000)) + 0.36)
place(-10000, 2000, 344, 500)
expect("too far right", dist, turn, -1, -1)
place(2000, 0, 344, 500)
expect("behind", dist, turn, -1, -1)
sim.set(FMS .. "des_runway_crs", 0)
place(-8000, 0, 344, 500)
expect("no course", dist, turn, -1, -1)
sim.set(FMS .. "des_runway_crs", 344)

-- ---- Touchdown and roll-out ----

-- Across the runway is no landing: she takes the aircraft as still flying.
place(300, 0, 344 + 16, 2)
place(400, 0, 344 + 16, 0)
expect("across", dist, turn, -1, -1)
place(300, 0, ALONG_34R, 0)
place(300, 0, ALONG_34R, 0)
expect("touched down", LENGTH_M - 300, 180 - 0.36, 0, 16)
check.list(announced(), BOTH, "landed")
place(1500, 0, ALONG_34R, 0)
expect("rolling out", LENGTH_M - 1500, 180 - 0.36, 0, 16)

-- The turn counts with the variation, the distance sideways.
for _, right in ipairs {20, 60, 120} do
    place(1600, right, ALONG_34R + 90 - 360, 0)
    expect("turned off", math.sqrt((LENGTH_M - 1600) ^ 2 + right ^ 2), 90 - 0.36, right, 90 - 16)
end
place(1600, -80, ALONG_34R - 90, 0)
expect("turned off to the left", math.sqrt((LENGTH_M - 1600) ^ 2 + 80 ^ 2), 90 + 0.36, 80, 90 + 16)

-- The next take-off ends it; a radio altimeter without a number does so for everything.
place(1600, 0, ALONG_34R, 50)
expect("airborne again", math.sqrt((LENGTH_M - 1600) ^ 2 + 80 ^ 2), 90 + 0.36, -1, -1)
place(-8000, 0, 344, 1000)
check.near(sim.get(OUT .. "ldg_rwy/dist_m"), 8000, 20, "approach again")
place(-8000, 0, 344, 0 / 0)
expect("no radio altitude", -1, -1, -1, -1)
check.list(announced(), {"That is all"}, "no radio altitude")

-- ---- The altimeter ----

for _, case in ipairs {{29.92, 29.90, 28.00, 1, 2992}, {29.92, 29.80, 29.93, 1, 2992}, {29.92, 29.95, 29.50, 0, 2992},
                       {29.92, 29.50, 29.50, 0, 2992}, {29.92, 29.89, 29.94, 1, 2992},
                       {30.10, 30.13, 29.00, 0, 3010}, {30.10, 30.12, 29.00, 1, 3010}, {29.66, 28, 28, 0, 2966}} do
    sim.set("sim/cockpit/misc/barometer_setting", case[1])
    sim.set("sim/weather/barometer_current_inhg", case[2])
    sim.set("sim/weather/barometer_sealevel_inhg", case[3])
    sim.frames(1)
    check.equal(sim.get("kv/fo/baro_check"), case[4], "check of " .. table.concat(case, ", "))
    check.equal(sim.get("kv/fo/baro100"), case[5], "hundredths of " .. case[1])
end

-- ---- Where the pilot looks ----

check.equal(sim.get("kv/fo/delta_hdg2fo"), 360, "the aircraft has not said where she sits")
sim.publish("kv/fo/_pos_x", "float", 0.4)
sim.publish("kv/fo/_pos_y", "float", 0)
sim.publish("kv/fo/_pos_z", "float", -10)
sim.set("sim/graphics/view/pilots_head_x", -0.4)
sim.set("sim/graphics/view/pilots_head_z", -10 - 3.048)
sim.set("sim/aircraft/weight/acf_cgZ_original", 10) -- feet
local function looks(heading, difference, what)
    sim.set("sim/graphics/view/pilots_head_psi", heading)
    sim.frames(2)
    check.near(sim.get("kv/fo/delta_hdg2fo"), difference, 0.01, what)
end
looks(90, 0, "at her")
looks(0, 90, "ahead")
looks(110, 20, "behind her")
sim.set("sim/graphics/view/pilots_head_z", -10 - 3.048 + 0.8)
looks(0, 45, "ahead, from behind")
sim.set("sim/graphics/view/pilots_head_z", -10 - 3.048 - 0.8)
looks(0, 135, "ahead, from before her")
sim.set("sim/graphics/view/pilots_head_x", 0.4)
sim.set("sim/graphics/view/pilots_head_z", -10 - 3.048 + 2)
looks(350, 350, "a little left of her, across north: not wrapped")
sim.set("sim/graphics/view/pilots_head_z", -10 - 3.048)
sim.frames(2)
check.that(sim.get("kv/fo/delta_hdg2fo") == sim.get("kv/fo/delta_hdg2fo"), "in her place it is still a number")
