-- An airliner from take-off thrust to taxi speed: what she calls, in order, and what she says when it goes
-- wrong.
local check = require "lib.check"
local airliner = require "lib.airliner"
local ref, move, fly, go = airliner.ref, airliner.move, airliner.fly, airliner.go
local captain, ask, hears, silence = airliner.captain, airliner.ask, airliner.hears, airliner.silence
local set = airliner.set

local hasFlapDetents = not airliner.name:find("7%d7") -- which compare and call other speeds
local CHECKED, ROLLING = hasFlapDetents and "100 knots." or "80 knots.", hasFlapDetents and "70 knots." or "60 knots."

local field = airliner.field_feet
local function above(feet) return field + feet end

airliner.park()
for i = 0, airliner.engines - 1 do
    sim.set(ref.fuel_levers, 1, i)
    sim.set(ref.running, 1, i)
end
set {parking_brake = 0, minimum = 200, selected_altitude = 5000}
fly(12)
captain("take off speeds")
local rotate = tonumber(hears("rotate"):match("rotate (%d+)"))
captain("landing speed")
local reference = tonumber(hears("V ref"):match("(%d+)"))

-- ---- Take-offs that are none ----

local THRUST = {5, {throttle = 0.95, airspeed = 30}}
go {THRUST}
hears("Flaps! Stop, Sir!")
go {{2, {throttle = 0, airspeed = 0}}}
set {flaps = 0.3, parking_brake = 1}
go {THRUST}
hears("Parking brake! Stop, Sir!")
go {{2, {throttle = 0, airspeed = 0}}}
sim.set(ref.parking_brake, 0)
go {THRUST, {3, {airspeed = 60}, "Thrust set."}, {1, {throttle = 0}, "Rejected take-off."}, {5, {airspeed = 0}}}
silence(3)
ask("call outs off", "Call-outs off, Sir.")
go {THRUST, {10, {airspeed = rotate + 10}}}
silence(1)
go {{3, {throttle = 0, airspeed = 0}}}
ask("call outs on", "Call-outs on.")

-- ---- Take-off and climb ----

go {
    THRUST,
    {12, {airspeed = 105}, "Thrust set.", CHECKED},
    {8, {airspeed = rotate + 2}, "V one.", "Rotate."},
    {1, {on_ground = 0, vertical_speed = 1800, airspeed = rotate + 15}},
    {3, {altitude = above(120)}, "Positive climb."},
}
captain("gear up")
go {
    {20, {altitude = above(1400), airspeed = 180}, "Gear up."},
    {10, {altitude = above(2000), airspeed = 230}, "Acceleration altitude."},
}
captain("flaps up")
go {
    {6, {}, "Flaps up.", "After take-off checklist, Sir?"},
    {20, {altitude = 4300}, "One thousand to go."},
    {8, {altitude = 5000, vertical_speed = 0}, "Level."},
}

-- ---- Three approaches ----

-- Too high and fast, without the gear.
go {
    {8, {altitude = above(2400), airspeed = 190, vertical_speed = -1000}, "Radio altimeter alive."},
    {15, {altitude = above(950)}, "One thousand. Gear, Sir!"},
    {8, {altitude = above(420), airspeed = 170}, "Five hundred, not stable. Go around, Sir!"},
}
captain("go around")
go {
    {4, {throttle = 1, vertical_speed = 1500}, "Going around.", "Positive climb."},
    {15, {altitude = above(2900)}},
}

-- Stable, until there is nothing to see at the minimum.
ask("gear down", "Three green.")
sim.set(ref.flaps, 1)
local FINAL = {
    {10, {throttle = 0.4, altitude = above(2400), vertical_speed = -800, airspeed = reference + 5},
     "Radio altimeter alive.", "Landing checklist, Sir?"},
    {20, {altitude = above(950)}, "One thousand, stable."},
    {12, {altitude = above(450)}, "Five hundred, stable."},
    {12, {altitude = above(280)}, "Approaching minimums."},
    {4, {altitude = above(190)}, "Minimums."},
}
go(FINAL)
captain("going around")
go {
    {3, {vertical_speed = 1500}, "Going around.", "Positive climb."},
    {15, {altitude = above(2900)}},
}
sim.set(ref.flaps, 1)

-- And down.
go(FINAL)
move(ref.vertical_speed, -1300, 1)
hears("Sink rate.")
go {
    {1, {vertical_speed = -700}},
    {5, {altitude = above(0), throttle = 0}},
    {0.1, {on_ground = 1, vertical_speed = 0}},
    {1, {reverser = 1}, "Speed brakes up.", "Reverse normal."},
    {4, {airspeed = reference - 30}, "Decel."},
    {8, {airspeed = 55}, ROLLING},
    {5, {airspeed = 25, reverser = 0}, "Taxi speed."},
}
ask("clear of the runway", "Flaps up, APU starting. After landing checklist, Sir?")

-- Some things are called once, and some not at all.
check.equal(check.count(airliner.said(), "Flaps! Stop"), 1, "calls to stop")
local calls = {}
for _, text in ipairs(airliner.said()) do
    if text:find("^Engine") or text:find("^Gear is up") or text:find("UNKNOWN") then calls[#calls + 1] = text end
end
check.list(calls, {}, "calls out of place")
check.no_problems()
