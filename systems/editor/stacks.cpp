// The panels of the selected logic block: its calculations with limits and graph, or its actions.
#include "systems/editor/panels.h"

#include <algorithm>
#include <string>

#include "gfx/fonts.h"
#include "systems/body_parser.h"
#include "systems/editor/fields.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "systems/trace.h"
#include "util/numbers.h"

namespace {

click_zone_class ItemZone(int action, const char *name, int item, int element = -1) {
    click_zone_class zone = Zone(action, name);
    zone.item = item;
    zone.element = element;
    return zone;
}

// The rows of a list below its heading.
struct Rows {
    Area list;
    int first, end, right;

    Area At(int row) const {
        const int top = list.top - (row - first) * RowHeight;
        return {list.left + 2, top, right, top - RowHeight + 1};
    }
};

Rows BeginRows(const Area &area, int list, int count) {
    const int rows = std::max(1, (area.top - area.bottom) / RowHeight);
    const Area frame = {area.left, area.top, area.right, area.top - rows * RowHeight};
    FrameArea(frame, ColourBoard, 1.0);
    const int barWidth = AddScroll(parZones, frame, list, rows, count, scroll[list]);
    return {frame, scroll[list], std::min(count, scroll[list] + rows), area.right - barWidth - 2};
}

// Text with no memory of its own.
std::string_view Named(const char *word, int number) {
    static std::string text; // kept for its memory
    text.assign(word).append(int2string(number));
    return text;
}

std::string_view OperandText(const calcStack_class &element) {
    static std::string text; // kept for its memory
    text.clear();
    AddOperand(text, element, ShownNumber);
    return text;
}

int LinkColour(int kind) {
    return kind == LinkUnresolved ? ColourRed : kind == LinkDeleted ? ColourOrange : ColourWhite;
}

// Red when it names what does not exist, or would say "UNKNOWN"; orange when it says something deleted.
int TextColour(const structExecute &action) {
    int colour = action.notFound ? ColourRed : ColourWhite;
    for (const sysLink_struct &link : action.spokenLinks)
        if (colour != ColourRed && link.kind != LinkLive) colour = LinkColour(link.kind);
    return colour;
}

// What an action names may have come since it was loaded: it is looked for when its block is shown.
void LookForMissing(logicblock_struct &block) {
    const BlockPlace place = SelectedBlock();
    const bool isSame = editorState.searched == place && editorState.searchedChangeCount == modelChangeCount;
    if (editorState.isSearched && isSame) return;
    editorState.isSearched = true;
    editorState.searched = place;
    editorState.searchedChangeCount = modelChangeCount;
    for (structExecute &action : block.executes) action.notFound = isMissing(action) ? 1 : 0;
}

// Columns of a calculation's row: CALC n, operator, operand, its value, the result so far, ADD, DEL.
void DrawElement(const Area &area, int calculation, int index, const calcStack_class &element,
                 const ElementTrace &told) {
    const int top = area.top, buttons = BoardWidth("ADD") + BoardWidth("DEL") + 2 * NarrowGap;
    const int valueWidth = 74;
    const bool isSelected = calculation == selCalc && index == selDraw;
    if (isSelected) FillArea(area, ColourGreen, 0.3);
    click_zone_class zone = ItemZone(ActionEdit, "", calculation, index);
    zone.field = FieldCalculation;
    zone.area = {area.left, top, area.left + 62, area.bottom};
    if (index == 0) {
        AddClickZone(parZones, zone);
        DrawCut(Named("CALC ", calculation), area.left + 3, top, 58, ColourCyan);
    }
    int x = area.left + 66;
    zone = ItemZone(ActionSelectItem, "", calculation, index);
    zone.area = {x, top, x + 36, area.bottom};
    AddClickZone(parZones, zone);
    const bool isKnown = element.operType != 0 || element.oper.empty();
    DrawCut(isKnown ? std::string_view(Operators[element.operType].label) : std::string_view(element.oper),
            x + 3, top, 32, isKnown ? ColourWhite : ColourRed);
    x += 40;
    const int right = area.right - buttons - 2 * (valueWidth + NarrowGap);
    DrawField({x, top, right, area.bottom}, FieldOperand, calculation, index, LinkColour(element.link.kind),
              OperandText(element));
    DrawNumberRight(told.operand, right + valueWidth, top, valueWidth, ColourCyan);
    DrawNumberRight(told.result, right + 2 * valueWidth + NarrowGap, top, valueWidth, ColourGreen);
    x = AddBoard(parZones, ItemZone(ActionAddElement, "ADD", calculation, index), area.right - buttons, top);
    AddBoard(parZones, ItemZone(ActionDeleteElement, "DEL", calculation, index), x, top);
}

// A calculation without elements: the block's constant.
void DrawConstant(const Area &area, int calculation, double constant) {
    DrawCut(Named("CALC ", calculation), area.left + 3, area.top, 58, ColourCyan);
    const int buttons = BoardWidth("DEL") + NarrowGap;
    DrawField({area.left + 66, area.top, area.right - buttons, area.bottom}, FieldCalculation, calculation,
              -1, ColourWhite, SignificantDigits(constant));
    AddBoard(parZones, ItemZone(ActionDeleteElement, "DEL", calculation, 0), area.right - buttons, area.top);
}

void DrawPoint(const Area &area, int index, const graf_struct &point) {
    const int half = (area.right - area.left) / 2, label = 24;
    click_zone_class zone = ItemZone(ActionSelectPoint, "", index);
    zone.area = {area.left, area.top, area.left + label, area.bottom};
    if (index == selPoint) FillArea(area, ColourGreen, 0.3);
    AddClickZone(parZones, zone);
    DrawCut("X: ", area.left + 3, area.top, label, ColourCyan);
    DrawField({area.left + label, area.top, area.left + half - NarrowGap, area.bottom}, FieldPointX, index,
              -1, ColourWhite, SignificantDigits(point.x));
    DrawCut("Y: ", area.left + half, area.top, label, ColourCyan);
    DrawField({area.left + half + label, area.top, area.right, area.bottom}, FieldPointY, index, -1,
              ColourWhite, SignificantDigits(point.y));
}

void DrawAction(const Area &area, int index, const structExecute &action) {
    // Columns stand below the words of the heading.
    const int typeWidth = LenFontIdS(fnt_Main, "TYPE             ");
    const int valueWidth = LenFontIdS(fnt_Main, "VALUE        ") - NarrowGap;
    const int buttons = BoardWidth("ADD") + BoardWidth("DEL") + 2 * NarrowGap;
    if (index == selDraw) FillArea(area, ColourGreen, 0.3);
    click_zone_class zone = ItemZone(ActionSelectItem, "", index);
    zone.area = {area.left, area.top, area.left + typeWidth, area.bottom};
    AddClickZone(parZones, zone);
    const ActionKind *kind = ActionKindOf(action.type);
    DrawCut(kind ? kind->label : "unknown", area.left + 3, area.top, typeWidth - 6, ColourYellow);
    int x = area.left + typeWidth;
    DrawField({x, area.top, x + valueWidth, area.bottom}, FieldActionValue, index, -1, ColourWhite,
              SignificantDigits(action.value));
    x += valueWidth + NarrowGap;
    DrawField({x, area.top, area.right - buttons - NarrowGap, area.bottom}, FieldActionText, index, -1,
              TextColour(action), action.text);
    x = AddBoard(parZones, ItemZone(ActionAddAction, "ADD", index), area.right - buttons, area.top);
    AddBoard(parZones, ItemZone(ActionDeleteAction, "DEL", index), x, area.top);
}

} // namespace

void DrawCalculationStack(const Area &area) {
    DrawCut("CALCULATION STACK:", area.left, area.top, 190, ColourCyan);
    logicblock_struct *block = BlockAt(SelectedBlock());
    if (!block) return;
    static BlockTrace trace; // kept for its memory
    TraceBlock(selection, selDrawStack, trace);
    size_t traced = 0; // elements of the calculations so far
    int x = AddBoard(parZones, ItemZone(ActionAddCalculation, "ADD", selCalc), area.left + 190, area.top)
            + 2 * NarrowGap;
    for (int oper = 0; oper < CalculationOperators; oper++) {
        click_zone_class zone = ItemZone(ActionSetOperator, Operators[oper].label, selCalc, selDraw);
        zone.value = oper;
        x = AddBoard(parZones, zone, x, area.top);
    }
    int count = 0;
    for (const calcBlock_struct &calculation : block->calcs)
        count += std::max(1, static_cast<int>(calculation.stack.size()));
    const Rows rows =
        BeginRows({area.left, area.top - RowHeight - 2, area.right, area.bottom}, ListCalc, count);
    int row = 0;
    for (size_t c = 0; c < block->calcs.size(); c++) {
        const calcBlock_struct &calculation = block->calcs[c];
        const int index = static_cast<int>(c);
        if (calculation.stack.empty() && row >= rows.first && row < rows.end)
            DrawConstant(rows.At(row), index, block->constant);
        if (calculation.stack.empty()) row++;
        for (size_t e = 0; e < calculation.stack.size(); e++, row++, traced++)
            if (row >= rows.first && row < rows.end)
                DrawElement(rows.At(row), index, static_cast<int>(e), calculation.stack[e],
                            trace.elements[traced]);
    }
}

void DrawLimitsAndGraph(const Area &area) {
    DrawCut("LIMITS:", area.left, area.top, 70, ColourCyan);
    logicblock_struct *block = BlockAt(SelectedBlock());
    if (!ParameterAt(selection)) return;
    const out_parameter_struct &parameter = *ParameterAt(selection);
    static std::string limits; // kept for its memory
    limits.assign(parameter.hasMin ? SignificantDigits(parameter.minLimit) : "non").append(" .. ");
    limits.append(parameter.hasMax ? SignificantDigits(parameter.maxLimit) : "non");
    DrawCut(limits, area.left + 64, area.top, area.right - area.left - 64 - 66, ColourWhite);
    DrawNumberRight(LiveValue(selection), area.right - 3, area.top, 62, ColourGreen);
    int top = area.top - RowHeight - 2;
    DrawCut("GRAFIC DATA TABLE:", area.left, top, area.right - area.left, ColourCyan);
    if (!block) return;
    top -= RowHeight + 2;
    const int x = AddBoard(parZones, ItemZone(ActionAddPoint, "ADD DATA", selPoint), area.left, top);
    AddBoard(parZones, ItemZone(ActionDeletePoint, "DEL DATA", selPoint), x, top);
    const Rows rows = BeginRows({area.left, top - RowHeight - 2, area.right, area.bottom}, ListGraph,
                                static_cast<int>(block->graph.size()));
    for (int i = rows.first; i < rows.end; i++)
        DrawPoint(rows.At(i), i, block->graph[static_cast<size_t>(i)]);
}

void DrawExecuteStack(const Area &area) {
    DrawCut("EXECUTE STACK:", area.left, area.top, 150, ColourCyan);
    logicblock_struct *block = BlockAt(SelectedBlock());
    if (!block) return;
    LookForMissing(*block);
    int x = AddBoard(parZones, ItemZone(ActionAddAction, "ADD", selDraw), area.left + 150, area.top);
    x = AddBoard(parZones, ItemZone(ActionCopyAction, "COPY", selDraw), x, area.top);
    AddBoard(parZones, ItemZone(ActionPasteAction, "PASTE", selDraw), x, area.top);
    int top = area.top - RowHeight - 2;
    x = area.left;
    for (const ActionKind &kind : ActionKinds) {
        if (!kind.isOffered) continue;
        click_zone_class zone = ItemZone(ActionSetActionType, kind.label, selDraw);
        zone.value = kind.code;
        if (x + BoardWidth(zone.name) > area.right) {
            x = area.left;
            top -= RowHeight + 2;
        }
        x = AddBoard(parZones, zone, x, top);
    }
    top -= RowHeight + 2;
    DrawCut("TYPE             VALUE        TEXT/LINK/POSITION", area.left + 3, top, area.right - area.left,
            ColourCyan);
    const Rows rows = BeginRows({area.left, top - RowHeight - 2, area.right, area.bottom}, ListExecute,
                                static_cast<int>(block->executes.size()));
    for (int i = rows.first; i < rows.end; i++)
        DrawAction(rows.At(i), i, block->executes[static_cast<size_t>(i)]);
}
