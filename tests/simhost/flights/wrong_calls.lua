-- A wrong call is an error that names the call and the argument, and changes nothing.
sim.publish("t/int", "int", 1)
sim.publish("t/ints", "int[4]", {1, 2, 3, 4})
sim.publish("t/float", "float", 1)
sim.publish("t/string", "string", "x")
sim.add_command("t/command", "")

local function refuses(call, argument, ...)
    local ok, message = pcall(sim[call], ...)
    if ok then error("sim." .. call .. " took a wrong " .. argument, 2) end
    for _, part in ipairs {"sim." .. call .. ":", argument} do
        if not message:find(part, 1, true) then
            error("no " .. part .. " in: " .. message, 2)
        end
    end
end

for _, call in ipairs {"hear", "stop", "restart", "reply"} do
    refuses(call, "start", "before the start")
end
sim.start()
refuses("start", "already")
for _, call in ipairs {"dir", "frames", "run", "pause", "vr", "screen", "locale", "publish", "get", "set",
                       "exists", "add_command", "fired", "press", "release", "tap", "hear", "reply", "note",
                       "dataref_browser", "world"} do
    refuses(call, 'argument "')
    refuses(call, 'argument "', {})
end
refuses("dir", '"what"', "home")
refuses("frames", '"n"', -1)
refuses("frames", '"n"', 1.5)
refuses("frames", '"n"', "10")
refuses("run", '"seconds"', -1)
refuses("run", '"seconds"', 0 / 0)
refuses("run", '"seconds"', 1 / 0)
refuses("pause", '"on"', 1)
refuses("screen", '"h"', 800)
refuses("screen", '"w"', 0, 600)
refuses("locale", '"name"', "xx_YY.nowhere")
refuses("publish", '"type"', "t/new", "bool", 1)
refuses("publish", '"type"', "t/new", "int[0]", 1)
refuses("publish", '"type"', "t/new", "int[3", 1)
refuses("publish", '"type"', "t/new", "string[3]", "")
refuses("publish", '"name"', "", "int", 1)
refuses("publish", '"name"', "probe/seven", "int", 1)
refuses("publish", '"value"', "t/new", "int", 0.5)
refuses("publish", '"value"', "t/new", "string", 1)
assert(not sim.exists("t/new"), "a refused publish publishes nothing")
refuses("publish", '"value"', "t/list", "int[2]", {1, 2, 3})
refuses("publish", '"value[2]"', "t/list", "int[2]", {1, "2"})
refuses("get", '"index"', "t/ints", 4)
refuses("get", '"index"', "t/ints", -1)
refuses("get", '"index"', "t/ints[4]")
refuses("get", '"index"', "t/int", 1)
refuses("get", '"index"', "t/ints[1]", 1)
refuses("set", '"name"', "t/none", 1)
refuses("set", '"value"', "t/int")
refuses("set", '"value"', "t/int", "1")
refuses("set", '"value"', "t/int", true)
refuses("set", '"value"', "t/int", 0.5)
refuses("set", '"value"', "t/int", 2 ^ 31)
refuses("set", '"value"', "t/float", "1")
refuses("set", '"value"', "t/float", {1})
refuses("set", '"value"', "t/string", 1)
refuses("set", '"value"', "t/string", ("x"):rep(2000))
refuses("set", '"index"', "t/ints", 1)
refuses("set", '"index"', "t/ints", 1, 4)
refuses("set", '"index"', "t/ints", {1}, 0)
refuses("set", '"value"', "t/ints", {1, 2, 3, 4, 5})
refuses("set", '"value[4]"', "t/ints", {9, 9, 9, "9"})
refuses("set", "probe/seven", "probe/seven", 8)
refuses("press", "t/none", "t/none")
refuses("release", '"name"', "t/none")
refuses("tap", '"name"', "t/none")
refuses("world", '"latitude"', 91, 0)
refuses("screenshot", '"path"')
refuses("screenshot", '"path"', "")
refuses("screenshot", "/nowhere/a.png", "/nowhere/a.png")
for _, call in ipairs {"menu", "choose", "mouse", "mouse_down", "mouse_drag", "mouse_up",
                       "click", "double_click", "wheel", "key", "type", "windows", "widgets", "push",
                       "show"} do
    refuses(call, "later version")
end

assert(sim.get("t/int") == 1 and sim.get("t/float") == 1 and sim.get("t/string") == "x")
assert(table.concat(sim.get("t/ints"), " ") == "1 2 3 4")
assert(sim.get("t/list", 0) == 0)
