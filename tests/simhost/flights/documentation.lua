-- The pages for pilots, authors and developers: every example does what the page says, every link leads
-- somewhere. Examples are told apart by the word behind the three backticks:
--   lua [NAME]        a flight: it must end well, in the aircraft that the page has made so far. A NAME with a
--                     folder is where it is kept
--   transcript [PATH] lines that the last flight has printed, in one piece, or the one of that path
--   systems NAME      a systems file of the page's aircraft; "+ NAME": its continuation
--   systems           a part of a systems file: the checker must find nothing
--   check             the errors and warnings that the checker finds in the page's aircraft now
--   position          a position
--   aircraft          a list of aircraft: the checker must find nothing in one of its first row
--   file NAME         what a file of the page's plug-in holds
--   sh                commands, run where the page's aircraft are; "aircraft/" is that of the sources. One that
--                     makes a new aircraft makes it the page's
-- The page that begins with "new --empty" must come to the same files as "new" without it.
-- Any other block needs a comment "not run: why" above it.
local root, program = arg[1], arg[2]
local scratch = sim.dir("xplane")
local speech = program:match("^.*/") .. "plugins/fennic_speech"
local shipped = program:match("^.*/") .. "aircraft/Cessna_172SP"

local function run(command)
    local pipe = assert(io.popen(("cd '%s' && %s 2>&1"):format(scratch, command)))
    local output = pipe:read("a")
    return output, (pipe:close())
end
local function read(path)
    local file = io.open(path)
    if not file then return nil end
    local text = file:read("a")
    file:close()
    return text
end
local function write(path, text, mode)
    local file = assert(io.open(path, mode or "w"))
    file:write(text)
    file:close()
end

local function fresh_aircraft(name)
    assert(select(2, run(("rm -rf %s && cp -r '%s' %s && rm %s/plugins/fennic/64/systems/*"):format(
        name, shipped, name, name))))
    return scratch .. name .. "/plugins/fennic/64/"
end
local function findings(name)
    local found = {}
    for line in run(("'%s' check %s"):format(program, name)):gmatch("[^\n]+") do
        if line:find(": error: ") or line:find(": warning: ") then found[#found + 1] = line .. "\n" end
    end
    return table.concat(found)
end
local function expect(page, what, actual, wanted)
    if actual ~= wanted then error(("%s: %s:\n%s\ninstead of\n%s"):format(page, what, actual, wanted), 0) end
end

-- What the parts of systems files refer to, and what they are parts of.
local context = "sys=ELEC\ndev=BATTERY\nout=volt,double,,0,,,,,,,,0\nout=switch,int,,0,,,,,,,,0\n"
    .. "sys=HYD\ndev=PUMP1\nout=press,double,,0,,,,,,,,0\ndev=PUMP2\nout=press,double,,0,,,,,,,,0\n"
    .. "sys=PART\ndev=PART\nout=value,double,,0,,,,,,,,0\nlogic:\n"
local function check_part(page, text)
    local plugin = fresh_aircraft("part")
    write(plugin .. "systems/_systems.txt", "PART\n")
    write(plugin .. "systems/PART.txt", text:find("^sys=") and text or context .. text:gsub("^logic:\n", ""))
    expect(page, "the checker finds", findings("part"), "")
end

local counts = {}
local function run_examples(page, text)
    local aircraft, plugin, output, is_template = "mine"
    for before, info, example in ("\n" .. text):gmatch("([^\n]*)\n```([^\n]*)\n(.-)```") do
        local kind, plus, name = info:match("^(%a*) ?(%+?) ?(%S*)$")
        counts[kind] = (counts[kind] or 0) + 1
        local is_aloud = kind == "lua" and example:find("sim.speak(", 1, true)
        if is_aloud and not read(speech .. "/settings.txt") then
            print("without her voice this is not flown:\n" .. example)
        elseif kind == "lua" then
            local flight = name:find("/") and name or "example.lua"
            write(scratch .. flight, example)
            local options = (plugin and flight ~= name and "--aircraft " .. aircraft or "") .. (is_aloud and (" --plugin '%s'"):format(speech) or "")
            local is_well
            output, is_well = run(("'%s' %s %s"):format(program, options, flight))
            assert(is_well, page .. ": this flight fails:\n" .. example .. output)
        elseif kind == "transcript" then
            if name ~= "" then output = run(("'%s' '%s/%s'"):format(program, root, name)) end
            assert(output, page .. ": a transcript before any flight")
            local untimed = "flown in [%d.]+ s"
            local printed = output:gsub(untimed, "")
            if not printed:find((example:gsub(untimed, "")), 1, true) then
                expect(page, "a flight prints", output, example)
            end
        elseif kind == "systems" and name ~= "" then
            plugin = plugin or fresh_aircraft(aircraft)
            write(plugin .. "systems/" .. name, example, plus == "+" and "a" or "w")
        elseif kind == "systems" then
            check_part(page, example)
        elseif kind == "check" then
            expect(page, "the checker finds", findings(aircraft), example)
        elseif kind == "file" then
            expect(page, name, read(plugin .. name), example)
        elseif kind == "sh" then
            local command = example:gsub("%f[%S]aircraft/", root .. "/aircraft/"):gsub("%./fennic sim", ("'%s'"):format(program))
            local complaint, is_well = run(command)
            assert(is_well, page .. ": this command fails:\n" .. example .. complaint)
            local options, made = example:match("sim new (.-)(%S+)\n")
            if made then
                aircraft, plugin, is_template = made, scratch .. made .. "/plugins/fennic/64/", options:find("--empty", 1, true)
            end
        elseif kind == "aircraft" then
            local folder = fresh_aircraft("part")
            write(folder .. "systems/_systems.txt", "")
            write(folder .. "data/aircraft.txt", example)
            run("rm part/*.acf")
            write(scratch .. "part/" .. (example:match("\nfile=([^\n]+)") or "any.acf"),
                  "P acf/_descrip " .. example:match("aircraft=([^\n]*)") .. "\nP _obja/count 0\n")
            expect(page, "the checker finds", findings("part"), "")
        elseif kind == "position" or kind == "places" then
            local folder = fresh_aircraft("part")
            write(folder .. "systems/_systems.txt", "")
            write(folder .. (kind == "places" and "systems/_places.txt" or "custom/positions-w/example.txt"), example)
            expect(page, "the checker finds", findings("part"), "")
        else
            assert(before:find("<!%-%- .*%-%->"), page .. ": say in a comment above it why this is not run:\n" .. example)
        end
    end
    if plugin then expect(page, "in the end the checker finds", findings(aircraft), "") end
    if is_template then
        local differences, is_same = run(("mkdir all && cd all && '%s' new %s && diff -r %s ../%s"):format(
            program, aircraft, aircraft, aircraft))
        assert(is_same, page .. ": the aircraft that fennic-sim makes at once differs:\n" .. differences)
    end
end

-- ---- Commands and options that a page mentions ----

local usage = {fennic = run(("'%s/fennic' help"):format(root)), sim = run(("'%s' --help"):format(program))}
local presets = read(root .. "/CMakePresets.json")
local function check_commands(page, text)
    for command in text:gmatch("%./fennic (%l+)") do
        assert(usage.fennic:find("\n  " .. command .. " "), page .. ": there is no ./fennic " .. command)
    end
    for line in text:gmatch("[^\n]+") do
        for option in (line:match("fennic[- ]sim (.*)") or ""):gmatch("%f[%S`]%-%-%l+") do
            assert(usage.sim:find(option, 1, true), page .. ": fennic-sim has no " .. option)
        end
        for preset in line:gmatch("%-%-preset (%l+)") do
            assert(presets:find('"name": "' .. preset .. '"', 1, true), page .. ": there is no preset " .. preset)
        end
    end
    for name in text:gmatch("%f[%w]sim%.([%a_]+)%(") do
        assert(sim[name], page .. ": sim." .. name .. " is not there")
    end
end

-- ---- Links ----

local function without_examples(text)
    return (("\n" .. text):gsub("\n```.-\n```", ""):gsub("`[^`\n]*`", function(code) return (code:gsub("[%[%]]", "")) end))
end
local function has_heading(text, anchor)
    for heading in without_examples(text):gmatch("\n#+ ([^\n]+)") do
        if heading:lower():gsub("[^%w%s_-]", ""):gsub(" ", "-") == anchor then return true end
    end
end
local mentioned = {}
local function check_links(page, text)
    for target in without_examples(text):gmatch("%]%(([^)]+)%)") do
        if not target:find("^%a+:") then
            local file, anchor = target:match("^([^#]*)#?(.*)$")
            file = file == "" and page or page:match("^.*/") .. file
            while file:find("[^/]+/%.%./") do file = file:gsub("[^/]+/%.%./", "", 1) end
            local content = read(file)
            assert(content, page .. ": a link to nowhere: " .. target)
            assert(anchor == "" or has_heading(content, anchor), page .. ": there is no heading for " .. target)
            mentioned[file] = true
        end
    end
end

local list = run(("ls '%s'/README.md '%s'/CHANGELOG.md '%s'/docs/*.md"):format(root, root, root))
for page in list:gmatch("[^\n]+") do
    local text = read(page)
    run_examples(page, text)
    check_commands(page, text)
    check_links(page, text)
end
for kind, least in pairs {lua = 10, transcript = 4, systems = 10, check = 1, position = 1, aircraft = 1, file = 1} do
    assert((counts[kind] or 0) >= least, ("examples of %s: %s"):format(kind, counts[kind]))
end

-- No page and no picture is left alone, and no call is left out.
for file in run(("ls '%s'/docs/*.md '%s'/docs/pictures/*"):format(root, root)):gmatch("[^\n]+") do
    assert(mentioned[file], file .. ": no page leads to it")
end
assert(read(root .. "/CHANGELOG.md"):find("\n## " .. read(root .. "/VERSION")), "CHANGELOG.md misses the version")
local flights = read(root .. "/docs/flights.md")
for name in pairs(sim) do assert(flights:find("sim." .. name, 1, true), name .. " is not documented") end
