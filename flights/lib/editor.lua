-- The systems editor as an author sees it: where its panels stand, so that flights can click what is in them.
-- Its texts are pictures, so places are worked out from the layout and the widths of the font's letters.
local editor = {}

local ROW, MARGIN, GAP = 18, 8, 4
local advance = {}

local function text_width(text)
    local width = 0
    for i = 1, #text do width = width + (advance[text:byte(i)] or 0) end
    return width
end

local function board_width(name) return text_width(name) + 8 end

-- Switches developer mode on and starts on a screen of that size.
function editor.start(width, height)
    local folder = sim.dir("plugin") .. "data/"
    for line in io.lines(folder .. "fnt/verd_17.fnt") do
        local id, wide = line:match("^char id=(%d+).*xadvance=(%d+)")
        if id then advance[tonumber(id)] = tonumber(wide) end
    end
    local file = assert(io.open(folder .. "developer.txt", "w"))
    file:write("editor=1\n")
    file:close()
    sim.screen(width, height)
    editor.w, editor.h = width, height
    sim.start()
    sim.run(4)
    editor.show()
end

function editor.show()
    sim.click(editor.w - board_width("EDITOR") - MARGIN + 4, editor.h - 3 * ROW - 9)
    sim.frames(1)
end

-- Clicks the middle of a button of a row of buttons that begins at x.
local function click_board(x, top, names, name)
    for _, each in ipairs(names) do
        if each == name then
            sim.click(x + board_width(each) // 2, top - ROW // 2)
            sim.frames(2)
            return
        end
        x = x + board_width(each) + GAP
    end
    error("no button " .. name, 3)
end

local function top() return editor.h - 24 - 2 * ROW - 6 end
local function right_panel() return math.tointeger(editor.w * 0.41 // 1) end
local function column_left(column)
    local width = (right_panel() - 2 * MARGIN - 12) // 3
    return MARGIN + (column - 1) * (width + 6), width
end

function editor.title(name)
    local names, width = {"<---", "--->", "SAVE", "AUTO", "UNDO", "HIDE"}, 0
    for _, each in ipairs(names) do width = width + board_width(each) + GAP end
    click_board(editor.w - MARGIN - width, editor.h - 24, names, name)
end

-- Columns 1 to 3: systems, devices, parameters; rows from 1.
function editor.column(column, name)
    local left = column_left(column)
    local first = column == 1 and {"New..", "DEL"} or {"New..", "DEL", "COPY"}
    for _, each in ipairs(first) do
        if each == name then return click_board(left, top(), first, name) end
    end
    click_board(left, top() - ROW - 2, {"PASTE", "MOVE", "CLONE"}, name)
end

local function row_place(column, row)
    return column_left(column) + 20, top() - 2 * (ROW + 2) - 2 - (row - 1) * ROW - ROW // 2
end

function editor.select(column, row)
    sim.click(row_place(column, row))
    sim.run(0.6) -- the next click is not a double one
end

local function list_place(column)
    local list_top = top() - 2 * (ROW + 2) - 2
    local bottom = MARGIN + ROW + 13 * ROW + 4 -- above usage and value graph
    local rows = (list_top - bottom - ROW - 4) // ROW
    local left, width = column_left(column)
    return list_top, list_top - rows * ROW, left, left + width, rows
end

-- How many rows of a column are seen at once.
function editor.rows() return select(5, list_place(1)) end

function editor.page(column, name)
    local _, bottom, left, right = list_place(column)
    sim.click(name == "< PAGE" and left + 10 or right - 10, bottom - 2 - 9)
    sim.frames(2)
end

-- Drags the scroll bar of a column from its upper end to its lower one.
function editor.drag_bar(column)
    local list_top, bottom, _, right = list_place(column)
    sim.mouse_down(right - 5, list_top - 3)
    sim.mouse_drag(right - 5, bottom + 3)
    sim.mouse_up(right - 5, bottom + 3)
    sim.frames(2)
end

-- Turns the wheel over a column.
function editor.wheel(column, clicks)
    local x, y = row_place(column, 2)
    sim.wheel(x, y, clicks)
    sim.frames(2)
end

-- The first row of the list below the columns.
function editor.first_use()
    sim.click(MARGIN + 20, MARGIN + ROW + 13 * ROW - ROW - 9)
    sim.frames(2)
end

local function open_box(x, y)
    sim.double_click(x, y)
    sim.frames(2)
    if not editor.box() then error("no edit box opened", 3) end
end

-- Opens the box of a row of a column.
function editor.open(column, row) open_box(row_place(column, row)) end

-- Types into the box that a double click has opened.
function editor.type_into(x, y, text)
    open_box(x, y)
    sim.type(text)
    sim.key(13)
    sim.frames(2)
end

function editor.rename(column, row, text)
    local x, y = row_place(column, row)
    editor.type_into(x, y, text)
end

-- The text of the box, nil when there is none.
function editor.box()
    for _, widget in ipairs(sim.widgets()) do
        if widget.class == "text_field" and widget.visible then return widget.text end
    end
end

-- The details' lines: "parameter", "text", "unit", "init", "min", "max", "input", "output".
local LINES = {parameter = 1, text = 2, unit = 3, init = 4, min = 5, max = 5, input = 6, output = 7, switch = 8}

local function detail_place(name)
    local left, right = right_panel(), editor.w - MARGIN
    local isRight = name == "max" or name == "type" or name == "serial"
    local line = LINES[name] or (name == "type" and 3) or 8
    local x = (isRight and (left + right) // 2 + 6 or left) + 150
    return x + 15, top() - line * (ROW + 2) - ROW // 2
end

function editor.detail(name, text)
    local x, y = detail_place(name)
    editor.type_into(x, y, text)
end

-- Switches "type", "save" or "serial".
function editor.switch(name)
    sim.click(detail_place(name))
    sim.frames(2)
end

local function stacks_top() return top() - 10 * (ROW + 2) end
local function logic_bottom()
    return stacks_top() - math.tointeger((stacks_top() - MARGIN) * 0.46 // 1)
end

function editor.add_block()
    sim.click(right_panel() + 120 + 10, stacks_top() - 9)
    sim.frames(2)
end

-- A row of the logic stack, from 1: blocks and comparisons as they stand below each other.
local function logic_row(row)
    return stacks_top() - ROW - 2 - (row - 1) * ROW - 9
end

-- "ADD" or "DEL" at the end of a row; scroll when the list has a scroll bar.
function editor.logic_end(row, name, scroll)
    local x = editor.w - MARGIN - (scroll and 14 or 0) - board_width("ADD") - board_width("DEL") - 2 * GAP
    click_board(x, logic_row(row) + 9, {"ADD", "DEL"}, name)
end

local function comparison_left() return right_panel() + 2 + 12 end

-- "join", "kind", "left", "operator" or "right" of a comparison's row.
local function comparison_place(row, part)
    local x = comparison_left()
    if part == "join" then return x + 8, logic_row(row) end
    x = x + board_width("&&") + GAP
    if part == "kind" then return x + 8, logic_row(row) end
    x = x + board_width("SPEECH") + GAP
    if part == "left" then return x + 8, logic_row(row) end
    local right = editor.w - MARGIN - board_width("ADD") - board_width("DEL") - 2 * GAP - 66 - GAP
    local width = (right - x - 34 - GAP) // 2
    if part == "operator" then return x + width + 8, logic_row(row) end
    return right - width + 8, logic_row(row)
end

function editor.comparison(row, part, text)
    local x, y = comparison_place(row, part)
    if text then return editor.type_into(x, y, text) end
    sim.click(x, y)
    sim.frames(2)
end

function editor.panel(name)
    click_board(right_panel(), logic_bottom() - 2, {"CALCULATE", "EXECECUTE"}, name)
end

local function panel_top() return logic_bottom() - 2 - ROW - 4 end

function editor.execute(name) click_board(right_panel() + 150, panel_top(), {"ADD", "COPY", "PASTE"}, name) end

local TYPES = {"SAY", "SAY&WAIT", "POSITION", "PAUSE", "COMONCE", "COMBEG", "COMEND", "BREAK", "SET", "INPUT",
               "PASS", "ANSWER"}

-- Walks along the buttons as they were laid out: into a second line where the first is full.
function editor.action_type(name)
    local x, y = right_panel(), panel_top() - ROW - 2
    for _, each in ipairs(TYPES) do
        if x + board_width(each) > editor.w - MARGIN then x, y = right_panel(), y - ROW - 2 end
        if each == name then return click_board(x, y, {name}, name) end
        x = x + board_width(each) + GAP
    end
end

local function type_lines()
    local x, lines = right_panel(), 1
    for _, each in ipairs(TYPES) do
        if x + board_width(each) > editor.w - MARGIN then x, lines = right_panel(), lines + 1 end
        x = x + board_width(each) + GAP
    end
    return lines
end

-- An action's "type", "value" or "text", rows from 1.
function editor.action(row, part, text)
    local y = panel_top() - (type_lines() + 2) * (ROW + 2) - (row - 1) * ROW - 9
    local x = right_panel() + (part == "type" and 10 or part == "value" and 100 or 200)
    if text then return editor.type_into(x, y, text) end
    sim.click(x, y)
    sim.run(0.6)
end

-- The calculations' "ADD" button, and the operand of an element.
function editor.add_calculation()
    sim.click(right_panel() + 190 + 10, panel_top() - 9)
    sim.frames(2)
end

function editor.operand(row, text)
    editor.type_into(right_panel() + 2 + 66 + 40 + 10, panel_top() - ROW - 2 - (row - 1) * ROW - 9, text)
end

return editor
