// The logic stack: a parameter's blocks and their comparisons, with what they compared in the last frame. Of
// the blocks that are seen the trace is asked for it.
#include "systems/editor/panels.h"

#include <algorithm>
#include <string>
#include <vector>

#include "systems/editor/fields.h"
#include "systems/editor/kept.h"
#include "systems/editor/state.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "systems/trace.h"
#include "util/numbers.h"

namespace {

const int StateWidth = 66;

// TRUE and FALSE for the chain; a block that fired calculates; one that is true and did not fire waits behind
// another one, and all wait that are not evaluated, whatever they were when they last were.
const char *StateOf(const BlockTrace &trace) {
    if (!trace.isEvaluated) return "WAIT";
    if (trace.hasFired) return "CALC";
    if (trace.comparisons.empty()) return "DEFAULT";
    return trace.isTrue ? "WAIT" : "FALSE";
}

int StateColour(const char *state) {
    switch (*state) {
    case 'C':
    case 'T': return ColourGreen;
    case 'W': return ColourYellow;
    default: return ColourGrey;
    }
}

void DrawState(const char *state, int x, int top) {
    DrawCut(state, x, top, StateWidth, StateColour(state));
}

int LinkColour(const sysLink_struct &link) {
    if (link.kind == LinkUnresolved) return ColourRed;
    return link.kind == LinkDeleted ? ColourOrange : ColourWhite;
}

click_zone_class BlockZone(int action, const char *name, int block, int item) {
    click_zone_class zone = Zone(action, name);
    zone.place.block = block;
    zone.item = item;
    return zone;
}

// An operand, and behind it the value that its parameter had.
void DrawOperand(const Area &area, int block, int item, int field, const sysLink_struct &link,
                 std::string_view text, double value) {
    click_zone_class zone = BlockZone(ActionEdit, "", block, item);
    zone.field = field;
    zone.area = area;
    FillArea(area, ColourBlack, 0.5);
    FrameArea(area, ColourBoard, 0.6);
    AddClickZone(parZones, zone);
    int width = area.right - area.left - 6;
    if (link.kind == LinkLive || link.kind == LinkDeleted) {
        const int valueWidth = std::min(66, width / 3);
        DrawNumberRight(value, area.right - 3, area.top, valueWidth, ColourCyan);
        width -= valueWidth + NarrowGap;
    }
    DrawCut(text, area.left + 3, area.top, width, LinkColour(link));
}

std::string_view LeftText(const compare_block_class &comparison) {
    static std::string text; // kept for its memory
    text.clear();
    AddOperand(text, comparison.a, comparison.aValue, ShownNumber);
    return text;
}

std::string_view RightText(const compare_block_class &comparison) {
    static std::string text; // kept for its memory
    text.clear();
    AddRightOperand(text, comparison, ShownNumber);
    return text;
}

void DrawComparison(const Area &area, int block, int item, const compare_block_class &comparison,
                    const BlockTrace &trace) {
    const bool isSpeech = comparison.a.kind == LinkSpeech;
    const ComparisonTrace &told = trace.comparisons[static_cast<size_t>(item)];
    const bool isUnheard = isSpeech && !trace.isEvaluated; // what was said is heard by what is evaluated
    const int top = area.top;
    const int buttons = BoardWidth("ADD") + BoardWidth("DEL") + 2 * NarrowGap;
    const int operatorWidth = 34, joinWidth = BoardWidth(JoinKeys[0]) + NarrowGap,
              kindWidth = BoardWidth("SPEECH") + NarrowGap;
    AddBoard(parZones, BlockZone(ActionSwitchJoin, JoinKeys[comparison.joinOp == 1], block, item), area.left,
             top);
    int x = area.left + joinWidth;
    AddBoard(parZones, BlockZone(ActionSwitchSpeech, isSpeech ? "SPEECH" : "VALUE", block, item), x, top);
    x += kindWidth;
    const int right = area.right - buttons - StateWidth - NarrowGap;
    const int width = (right - x - operatorWidth - NarrowGap) / 2;
    const auto field = [&](int left, int end) { return Area{left, top, end, top - RowHeight + 1}; };
    if (isSpeech) {
        DrawOperand(field(x, right), block, item, FieldLeft, {}, comparison.phrase, 0.0);
    } else {
        DrawOperand(field(x, x + width), block, item, FieldLeft, comparison.a, LeftText(comparison), told.a);
        AddBoard(parZones, BlockZone(ActionSwitchComparator, comparison.cmpText.c_str(), block, item),
                 x + width + 2, top);
        const bool isList = !comparison.bList.empty();
        DrawOperand(field(right - width, right), block, item, FieldRight,
                    isList ? sysLink_struct() : comparison.b, RightText(comparison), told.b);
    }
    DrawState(isUnheard ? "WAIT" : told.isTrue ? "TRUE" : "FALSE", right + NarrowGap, top);
    x = AddBoard(parZones, BlockZone(ActionAddComparison, "ADD", block, item), area.right - buttons, top);
    AddBoard(parZones, BlockZone(ActionDeleteComparison, "DEL", block, item), x, top);
}

// "B 2": names a block in the panel.
std::string_view BlockName(int block) {
    static std::string text; // kept for its memory
    text.assign("BLOCK ").append(int2string(block));
    return text;
}

void DrawBlockHead(const Area &area, int index, const logicblock_struct &block, const char *state) {
    const int top = area.top;
    click_zone_class zone = BlockZone(ActionSelectBlock, "", index, -1);
    zone.area = {area.left, top, area.left + 90, top - RowHeight + 1};
    if (index == selDrawStack) FillArea({area.left, top, area.right, top - RowHeight + 1}, ColourGreen, 0.3);
    AddClickZone(parZones, zone);
    DrawCut(BlockName(index), area.left + 3, top, 90, index == selDrawStack ? ColourYellow : ColourWhite);
    DrawState(state, area.left + 100, top);
    int x = area.left + 100 + StateWidth + NarrowGap;
    if (!block.calcs.empty() || block.executes.empty())
        x = AddBoard(parZones, BlockZone(ActionShowCalc, "CALCULATE", index, -1), x, top);
    if (!block.executes.empty())
        x = AddBoard(parZones, BlockZone(ActionShowExecute, "EXECUTE", index, -1), x, top);
    DrawKeptMark({selection, index}, x + 40, top);
    x = area.right - BoardWidth("ADD") - BoardWidth("DEL") - 2 * NarrowGap;
    x = AddBoard(parZones, BlockZone(ActionAddComparison, "ADD", index, -1), x, top);
    AddBoard(parZones, BlockZone(ActionDeleteBlock, "DEL", index, -1), x, top);
}

} // namespace

void DrawLogicStack(const Area &area) {
    DrawCut("LOGIC STACK:", area.left, area.top, 200, ColourCyan);
    if (!ParameterAt(selection)) return;
    AddBoard(parZones, Zone(ActionAddBlock, "ADD"), area.left + 120, area.top);
    const std::vector<logicblock_struct> &logic = ParameterAt(selection)->logic;
    const int fired = isEvaluated(selection) ? FiredBlock(selection) : -1;
    static BlockTrace trace;              // kept for its memory
    if (fired >= 0 && logic.size() > 1) { // which may be far down
        click_zone_class zone = BlockZone(ActionGoToBlock, "", fired, -1);
        zone.area = {area.left + 190, area.top, area.left + 350, area.top - RowHeight + 1};
        FrameArea(zone.area, ColourGrey, 1.0);
        AddClickZone(parZones, zone);
        DrawCut(BlockName(fired), zone.area.left + 3, area.top, 90, ColourWhite);
        DrawState("CALC", zone.area.left + 100, area.top);
    }
    int count = 0;
    for (const logicblock_struct &block : logic) count += 1 + static_cast<int>(block.compares.size());
    const int listTop = area.top - RowHeight - 2;
    const int rows = std::max(1, (listTop - area.bottom) / RowHeight);
    const Area list = {area.left, listTop, area.right, listTop - rows * RowHeight};
    FrameArea(list, ColourBoard, 1.0);
    const int barWidth = AddScroll(parZones, list, ListLogic, rows, count, scroll[ListLogic]);
    const int first = scroll[ListLogic], end = first + rows;
    int row = 0;
    for (size_t b = 0; b < logic.size() && row < end; b++) {
        const logicblock_struct &block = logic[b];
        const int index = static_cast<int>(b), blockEnd = row + 1 + static_cast<int>(block.compares.size());
        if (blockEnd <= first) {
            row = blockEnd;
            continue;
        }
        TraceBlock(selection, index, trace);
        const auto place = [&] {
            const int top = listTop - (row - first) * RowHeight;
            return Area{area.left + 2, top, area.right - barWidth, top - RowHeight};
        };
        if (row >= first) DrawBlockHead(place(), index, block, StateOf(trace));
        row++;
        for (size_t c = 0; c < block.compares.size() && row < end; c++, row++)
            if (row >= first) {
                Area indented = place();
                indented.left += 12;
                DrawComparison(indented, index, static_cast<int>(c), block.compares[c], trace);
            }
    }
}
