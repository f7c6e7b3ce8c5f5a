-- What the flights share: checks that say what was expected, the plug-in's files, and what it said and logged.
local check = {}

local function show(value)
    if type(value) ~= "string" then return tostring(value) end
    return #value <= 500 and string.format("%q", value)
        or string.format("%q (the first 500 of %d bytes)", value:sub(1, 500), #value)
end

function check.that(condition, what)
    if not condition then error(what, 2) end
end

function check.equal(actual, expected, what)
    if actual ~= expected then
        error(string.format("%s: %s instead of %s", what, show(actual), show(expected)), 2)
    end
end

function check.near(actual, expected, tolerance, what)
    if type(actual) ~= "number" or not (math.abs(actual - expected) <= tolerance) then
        error(string.format("%s: %s instead of %s, give or take %s", what, show(actual), show(expected),
                            show(tolerance)), 2)
    end
end

-- Two lists of plain values.
function check.list(actual, expected, what)
    for i = 1, math.max(#actual, #expected) do
        if actual[i] ~= expected[i] then
            error(string.format("%s: entry %d is %s instead of %s", what, i, show(actual[i]),
                                show(expected[i])), 2)
        end
    end
end

-- ---- Files ----

function check.write(path, text)
    local file = assert(io.open(path, "wb"))
    assert(file:write(text))
    assert(file:close())
end

-- The whole file, or nil when there is none.
function check.read(path)
    local file = io.open(path, "rb")
    if not file then return nil end
    local text = file:read("a")
    file:close()
    return text
end

-- A folder, with those above it.
function check.folder(path)
    sim.make_folder(path)
end

-- Replaces the shipped systems by these: name -> text, and their order.
function check.systems(texts, order)
    local folder = sim.dir("plugin") .. "systems/"
    local names = order or {}
    for name, text in pairs(texts) do
        if not order then names[#names + 1] = name end
        check.write(folder .. name .. ".txt", text)
    end
    check.write(folder .. "_systems.txt", table.concat(names, "\n") .. "\n")
end

local function block(condition, ...)
    local lines = {"logic:"}
    for join, line in ("|" .. (condition or "")):gmatch("([|&])([^|&]+)") do
        if #lines > 1 then lines[#lines + 1] = join:rep(2) end
        lines[#lines + 1] = line:find("^%[") and line or "instring=" .. line
    end
    for _, action in ipairs {...} do
        local _, commas = action:gsub(",", "")
        lines[#lines + 1] = "execute=" .. action .. (commas < 2 and ",0" or "")
    end
    return table.concat(lines, "\n") .. "\n"
end

-- The text of a device, whose line comes first, and of its parameters. Each is a block, or a list of blocks:
-- {what it waits for, action ...}. It waits for phrases and comparisons with "|" and "&" between them, or for
-- nothing (false); actions are written as in the files, and may leave out a value of 0.
function check.device(line, ...)
    local text = line .. "\n"
    for i, parameter in ipairs {...} do
        text = text .. ("out=P%d,execute,,0,,,,,,,,0\n"):format(i)
        if type(parameter[1]) ~= "table" then parameter = {parameter} end
        for _, each in ipairs(parameter) do text = text .. block(table.unpack(each)) end
    end
    return text
end

-- Changes settings of the plug-in's file: key -> value.
function check.settings(changes)
    local path = sim.dir("plugin") .. "data/settings_mac.txt"
    local lines = {}
    for line in check.read(path):gmatch("[^\r\n]+") do
        local key = line:match("^([^=]+)=")
        lines[#lines + 1] = changes[key] and key .. "=" .. changes[key] or line
    end
    check.write(path, table.concat(lines, "\r\n") .. "\r\n")
end

-- Puts another aircraft in place of the one that is there: the name of its file, its description, and what else
-- the file says.
function check.aircraft(name, description, more)
    local folder = sim.dir("aircraft")
    for _, file in ipairs(sim.list(folder)) do if file:find("%.acf$") then sim.remove(folder .. file) end end
    check.write(folder .. name, "I\n1200 Version\nACF\n\nPROPERTIES_BEGIN\nP acf/_descrip " .. description .. "\n"
        .. (more or "P _obja/count 0\n") .. "PROPERTIES_END\n")
end

-- ---- What the first officer did ----

-- Whether she does anything at all.
function check.works()
    sim.sent()
    sim.run(1)
    sim.hear("abort")
    return #check.messages() > 0
end

-- The texts of all messages to the speech server since the last call.
function check.messages()
    local texts = {}
    for i, message in ipairs(sim.sent()) do texts[i] = message.text end
    return texts
end

-- What she has said, sent and logged up to now is not looked at any more.
function check.forget()
    sim.said()
    sim.sent()
    sim.log()
end

-- Flies for so long. These texts she has said by then since the last look, and no others.
function check.says(seconds, expected, what)
    sim.run(seconds)
    check.list(sim.said(), expected, what)
end

-- The pilot says it, and so many seconds pass; in which she says these texts, and no others, since the last look.
function check.hear(text, seconds)
    sim.hear(text)
    sim.run(seconds)
end
function check.asks(text, seconds, expected, what)
    check.hear(text, seconds)
    check.list(sim.said(), expected, what or text)
end

-- The aircraft is loaded, or loaded again, and so many seconds pass.
function check.start(seconds)
    sim.start()
    sim.run(seconds)
end
function check.restart(seconds)
    sim.restart()
    sim.run(seconds)
end

-- The plug-in's log lines since the last call, without what stands at the start of each.
function check.log()
    local lines = {}
    for i, line in ipairs(sim.log()) do lines[i] = line:gsub("^KV FENNIC Plugin: %-?%d+ SEC TFT ", "") end
    return lines
end

-- What she waits for by now, as the log tells whenever it changes.
local waited = "none"
function check.waits_for()
    for _, line in ipairs(check.log()) do waited = line:match("^Expected answers: (.*)") or waited end
    return waited
end

-- Nothing went wrong since the last look at the log.
function check.no_problems()
    local problem = sim.problems()[1]
    if problem then error("in the log: " .. problem, 2) end
end

-- How many of the lines hold the text.
function check.count(lines, text)
    local count = 0
    for _, line in ipairs(lines) do
        if line:find(text, 1, true) then count = count + 1 end
    end
    return count
end

-- Flies frame by frame until condition() holds. Gives the seconds it took, which may not exceed the limit.
function check.wait(limit, condition, what)
    local start = sim.time()
    while not condition() do
        if sim.time() - start > limit then error(what .. ": not within " .. limit .. " s", 2) end
        sim.frames(1)
    end
    return sim.time() - start
end

return check
