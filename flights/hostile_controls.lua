-- Controls that fight back: endless menus and lists, names of thousands of bytes that are no text, answers that
-- go away, clicks at odd moments, and a plug-in that is restarted under the pilot's hand.
local check = require "lib.check"
local overlay = require "lib.overlay"

local plugin = sim.dir("plugin")
local SELECT = "kv/fennic/select"
local PHRASES = 10000
local LONG = ("n\xff\xc3("):rep(1250) -- 5,000 bytes, and no UTF-8

sim.publish("kv/fennic/click_snd", "int", 0)
sim.publish("test/phase", "int", 0)

local menu = {"sys=MENU", "dev=ENDLESS"}
for i = 1, PHRASES do
    menu[#menu + 1] = ("out=P%d,execute,,0,,,,,,,,0\nlogic:\ninstring=phrase %d\nexecute=0,Said %d,0"):format(i, i, i)
end
local list = {"sys=LIST", "dev=" .. LONG, "out=LIST,integer,,0,,,,,,,,0", "logic:", "[LIST.W.PHASE]==[1]"}
for i = 1, 300 do list[#list + 1] = "execute=9,item " .. i .. ",0" end
list[#list + 1] = "execute=9," .. LONG .. ",0"
list[#list + 1] = "dev=W\nout=PHASE,integer,,0,,,test/phase,exist,,,,0\n"
    .. check.device("dev=TIMERS", {"[LIST.W.PHASE]==[2]", "12,first,60", "12,second,60", "12," .. LONG .. ",60"},
                    {"[LIST.W.PHASE]==[3]", "12,second,0", "12," .. LONG .. ",0"})
    .. check.device("dev=TALK", {"say it", "0,Said " .. LONG}, {"first", "0,First"})
check.systems({MENU = table.concat(menu, "\n"), LIST = table.concat(list, "\n")}, {"MENU", "LIST"})
check.write(plugin .. "data/voicelist_mac.txt", LONG .. "\r\n\r\nVictoria\r\n")
check.write(plugin .. "version.txt", LONG .. "\r\n")

local function phase(value)
    sim.set("test/phase", value)
    sim.frames(2)
end
local function start()
    check.start(3.5)
    check.forget()
end
start()

-- ---- Endless ----

local function items(...)
    local list = sim.menu()
    for _, place in ipairs {...} do list = list[place].items end
    return list
end
check.equal(#items(1, 1, 1), PHRASES, "phrases in the menu")
local first = {}
for _, item in ipairs(items(1)) do first[item.text] = item.items and item.items[1] end
check.equal(first["Select Voice"].text, LONG, "a voice's name")
check.equal(first["Update"].text, "Version " .. LONG, "the version")
sim.choose("Commands/ENDLESS/phrase " .. PHRASES)
check.says(1, {"Said " .. PHRASES}, "the last phrase")
sim.sent()
sim.choose("Select Voice/" .. LONG)
check.list(check.messages(), {"setvoice>" .. LONG}, "a voice")

-- What stands above the screen is not drawn, but the rest is, unfolded too; and the bytes arrive as they are.
phase(1)
overlay.click(LONG .. " (301)")
local drawn = 0
for _, text in ipairs(sim.screen_text()) do
    check.that(text.y <= 1080, "drawn above the screen")
    if text.text:find("^item") then drawn = drawn + 1 end
end
check.that(drawn > 50, "lines of the endless list: " .. drawn)
check.asks("say it", 1, {"Said " .. LONG}, "a long text")
check.equal(overlay.line("Said " .. LONG).y, 10 + 3 * 15, "on the screen")
sim.screen(1, 1)
sim.frames(2)
sim.screen(1920, 1080)
sim.frames(2)
check.that(overlay.line("Said " .. LONG), "after a screen of one pixel")
phase(0)

-- ---- Answers that go away ----

-- The answer that is highlighted, or about to be confirmed, goes away; one that is still there is not taken for it.
local function step()
    sim.tap(SELECT)
    sim.run(0.6)
end
for _, holds in ipairs {false, true} do
    phase(2)
    step()
    step()
    if holds then sim.press(SELECT) end
    phase(3)
    check.that(overlay.line("first") and not overlay.line("second"), "the second answer is gone")
    sim.run(0.5)
    if holds then sim.release(SELECT) end
    check.says(1, {holds and "First" or nil}, "a hold with nothing highlighted takes the first")
end

-- ---- Clicks at odd moments ----

-- On a line that is gone, or hidden, since the last frame; with the other button; outside the screen.
phase(2)
local x = overlay.place()
local y = overlay.line("first").y + 5
phase(3)
sim.click(x, y + 15)
sim.frames(2)
sim.tap("kv/fennic/widget")
sim.click(x, y)
sim.frames(2)
sim.tap("kv/fennic/widget")
sim.frames(2)
check.list({overlay.place()}, {x, 10}, "the list")
sim.mouse_down(x, y, "right")
sim.mouse_up(x, y)
sim.click(-5000, 60000)
sim.wheel(x, y, 3)
sim.type("abc")
sim.run(1)

-- During a drag the list grows, is hidden, and the screen shrinks below the mouse.
for _, disturb in ipairs {
    function() phase(2) end, function() sim.tap("kv/fennic/widget") end, function() sim.screen(1, 1) end,
    function() sim.choose("Commands/ENDLESS/phrase 1") end, function() sim.hear("abort") end,
    function() sim.vr(true) end, function() sim.new_flight() end, function() sim.press(SELECT) end} do
    sim.mouse_down(x, 15)
    sim.mouse_drag(x + 5, 20)
    disturb()
    sim.mouse_drag(x + 10, 30)
    sim.frames(2)
    sim.mouse_up(x + 10, 30)
    sim.frames(2)
    sim.screen(1920, 1080)
    sim.vr(false)
    if not overlay.place() then sim.tap("kv/fennic/widget") end
    sim.frames(2)
    check.that(overlay.place(), "the list is still there")
end
sim.release(SELECT)

-- ---- Restarted under the pilot's hand ----

for _, again in ipairs {sim.restart, function() sim.stop() sim.frames(3) sim.start() end} do
    sim.press(SELECT)
    sim.press("kv/fennic/rec")
    sim.run(0.2)
    local left, bottom = overlay.place()
    sim.mouse_down(left, bottom + 5)
    sim.mouse_drag(left + 20, bottom + 20)
    sim.frames(1)
    again()
    sim.mouse_drag(left + 40, bottom + 40)
    sim.frames(1)
    sim.mouse_up(left + 40, bottom + 40)
    sim.release(SELECT)
    sim.release("kv/fennic/rec")
    sim.run(4)
    check.list({overlay.place()}, {1920 / 2 - 50, 10}, "at its place")
    overlay.check_window()
    phase(0)
    phase(2)
    check.forget()
    overlay.click("first")
    check.says(1, {"First"}, "as before")
end
