-- The first flight of a new aircraft: fennic-sim FOLDER/flight.lua
local function say(text)
    sim.hear(text)
    sim.run(5)
end

local function click(text)
    for _, drawn in ipairs(sim.screen_text()) do
        if drawn.text == text then
            sim.click(drawn.x + 5, drawn.y + 5)
            sim.run(0.5)
            return
        end
    end
    error("not on the screen: " .. text)
end

sim.set("sim/cockpit2/controls/parking_brake_ratio", 0)
sim.set("sim/cockpit2/engine/actuators/mixture_ratio_all", 1)
sim.start()
sim.run(6)

sim.note("The checklist, called with the mouse.")
click("CHECKLISTS (1)")
click("before start checklist")
sim.run(6)
say("fastened")
say("both")
say("set") -- but it is not
sim.set("sim/cockpit2/controls/parking_brake_ratio", 1)
sim.press("kv/fennic/select") -- held: the answer that is expected
sim.run(1)
sim.release("kv/fennic/select")
sim.run(4)
say("off")
say("down")
say("up")
say("idle")
say("rich")
say("on") -- but it is not

sim.note("The flow.")
say("prepare the cockpit")
sim.run(4)
say("on")
say("on")
assert(sim.get("sim/cockpit2/switches/beacon_on") == 1)

sim.note("The guard, and the call-out.")
say("gear up") -- on the ground
sim.set("sim/cockpit2/gauges/indicators/airspeed_kts_pilot", 45)
sim.run(5)
sim.set("sim/flightmodel/failures/onground_any", 0)
say("gear up")
assert(sim.get("sim/cockpit2/controls/gear_handle_down") == 0)

local said = table.concat(sim.said(), "\n")
for _, text in ipairs {
    "I do not see it set, Sir", "I do not see it on, Sir", "Battery and lights are on",
    "Before start checklist complete, Sir", "We are on the ground, Sir", "Airspeed alive", "Gear up",
} do
    assert(said:find(text, 1, true), "she has not said: " .. text)
end
