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

local function each_refuses(rows)
    for _, row in ipairs(rows) do refuses(table.unpack(row)) end
end

for _, call in ipairs {"hear", "stop", "restart", "reply"} do
    refuses(call, "start", "before the start")
end
sim.start()
each_refuses {
    {"start", "already"},
}
for _, call in ipairs {"dir", "frames", "run", "pause", "vr", "screen", "locale", "publish", "get", "set",
                       "exists", "add_command", "fired", "press", "release", "tap", "hear", "reply", "note",
                       "dataref_browser", "world"} do
    refuses(call, 'argument "')
    refuses(call, 'argument "', {})
end
each_refuses {
    {"dir", '"what"', "home"}, {"point_at", '"title"', "no window"},
    {"screenshot", "in the headset", sim.dir("xplane") .. "none.png", "no window"}, {"speak", '"text"', ""},
    {"speak", '"voice"', "hello", "child"}, {"speak", '"rate"', "hello", "man", 5},
    {"speak", "fennic_speech", "hello"}, {"speak", "none.wav", "none.wav"}, {"noise", '"below"', 200},
    {"record", '"path"', ""}, {"record", "/nowhere/", "/nowhere/talk.wav"}, {"frames", '"n"', -1},
    {"run", '"seconds"', -1}, {"run", '"seconds"', 1 / 0}, {"pause", '"on"', 1}, {"screen", '"h"', 800},
    {"screen", '"w"', 0, 600}, {"locale", '"name"', "xx_YY.nowhere"}, {"publish", '"type"', "t/new", "bool", 1},
    {"publish", '"type"', "t/new", "int[0]", 1}, {"publish", '"name"', "", "int", 1},
    {"publish", '"name"', "probe/seven", "int", 1}, {"publish", '"value"', "t/new", "int", 0.5},
}
assert(not sim.exists("t/new"), "a refused publish publishes nothing")
each_refuses {
    {"publish", '"value"', "t/list", "int[2]", {1, 2, 3}},
    {"publish", '"value[2]"', "t/list", "int[2]", {1, "2"}}, {"get", '"index"', "t/ints", 4},
    {"get", '"index"', "t/int", 1}, {"get", '"index"', "t/ints[1]", 1}, {"set", '"name"', "t/none", 1},
    {"set", '"value"', "t/int", "1"}, {"set", '"value"', "t/int", 0.5}, {"set", '"value"', "t/int", 2 ^ 31},
    {"set", '"value"', "t/float", {1}}, {"set", '"value"', "t/string", ("x"):rep(2000)},
    {"set", '"index"', "t/ints", 1}, {"set", '"index"', "t/ints", {1}, 0},
    {"set", '"value"', "t/ints", {1, 2, 3, 4, 5}}, {"set", '"value[4]"', "t/ints", {9, 9, 9, "9"}},
    {"set", "probe/seven", "probe/seven", 8}, {"press", "t/none", "t/none"}, {"release", '"name"', "t/none"},
    {"tap", '"name"', "t/none"}, {"world", '"latitude"', 91, 0}, {"screenshot", '"path"'},
    {"screenshot", "/nowhere/a.png", "/nowhere/a.png"},
}
for _, call in ipairs {"mouse", "mouse_down", "click", "double_click", "wheel"} do
    refuses(call, '"x"')
    refuses(call, '"x"', 1e9, 1)
    refuses(call, '"y"', 1, 0.5)
end
each_refuses {
    {"wheel", '"clicks"', 1, 1}, {"mouse_down", '"button"', 1, 1, "middle"}, {"mouse_up", "mouse_down", 1, 1},
    {"mouse_drag", "mouse_down", 1, 1},
}
sim.mouse_down(1, 1)
each_refuses {
    {"mouse_down", "mouse_up", 1, 1}, {"click", "mouse_up", 1, 1},
}
sim.mouse_up(1, 1)
each_refuses {
    {"key", '"key"'}, {"key", '"key"', "enter twice"}, {"key", '"key"', "\xE4"}, {"key", '"key"', 0},
    {"key", '"flags"', "a", "shift+alt"}, {"type", '"text"'}, {"type", '"text"', "na\xC3\xAFve"},
    {"choose", '"path"'}, {"choose", "No/Such", "No/Such"},
    {"push", 'there is no visible button "OK"; there is none at all', "OK"},
}

assert(sim.get("t/int") == 1 and sim.get("t/float") == 1 and sim.get("t/string") == "x")
assert(table.concat(sim.get("t/ints"), " ") == "1 2 3 4")
assert(sim.get("t/list", 0) == 0)
