// The parameter's details, where it is used, and its value over the last seconds.
#include "systems/editor/panels.h"

#include <algorithm>
#include <string>

#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "systems/editor/fields.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/editor/usage.h"
#include "systems/links.h"
#include "systems/program.h"
#include "util/clock.h"
#include "util/numbers.h"

namespace {

const int LabelWidth = 150;
const int Line = RowHeight + 2;

// ---- The value graph ----

const double GraphSeconds = 24.0;

ValueGraph &graph = panelsState.graph;

double GraphValue(int age) {
    return graph.value[(graph.next - 1 - age + 2 * GraphValues) % GraphValues];
}

void ForgetGraphValues() {
    graph.count = graph.next = 0;
    graph.lastTime = -1.0;
}

// ---- Details ----

// A label and, right of it, a field that a double click edits.
void DrawLabelled(const char *label, const Area &area, int field, std::string_view text,
                  int C = ColourWhite) {
    DrawCut(label, area.left, area.top, LabelWidth - Gap, ColourCyan);
    DrawField({area.left + LabelWidth, area.top, area.right, area.top - RowHeight}, field, -1, -1, C, text);
}

// A label and, right of it, a button that switches.
void DrawSwitch(const char *label, const Area &area, int action, const char *state) {
    DrawCut(label, area.left, area.top, LabelWidth - Gap, ColourCyan);
    AddBoard(parZones, Zone(action, state), area.left + LabelWidth, area.top);
}

void DrawDataref(const char *label, const Area &area, int field, int action, const dataref_class &dataref) {
    const int board = BoardWidth("CREATE");
    DrawLabelled(label, {area.left, area.top, area.right - board - 2 * Gap, area.bottom}, field,
                 dataref.fullName, isDatarefMissing(dataref) ? ColourRed : ColourWhite);
    if (dataref.fullName.empty()) return;
    AddBoard(parZones, Zone(action, dataref.mode == BindingNew ? "CREATE" : "EXIST"),
             area.right - board - Gap, area.top);
}

std::string Limit(bool has, double limit) {
    return has ? ShortDecimal(limit) : "non";
}

const char *KindOfUse(const out_usage_struct &usage) {
    const char *const words[] = {"COMPARE", "CALC", "SAY"};
    return words[usage.kind];
}

} // namespace

void DrawField(const Area &area, int field, int item, int element, int C, std::string_view text) {
    click_zone_class zone = Zone(ActionEdit);
    zone.field = field;
    zone.item = item;
    zone.element = element;
    zone.area = area;
    FillArea(area, ColourBlack, 0.5);
    FrameArea(area, ColourBoard, 0.6);
    AddClickZone(parZones, zone);
    DrawCut(text, area.left + 3, area.top, area.right - area.left - 6, C);
}

void DrawDetails(const Area &area) {
    DrawCut("OUT PARAMETER DETAILS:", area.left, area.top, area.right - area.left, ColourCyan);
    const device_struct *device = DeviceAt(selection);
    if (!device) return;
    const int middle = (area.left + area.right) / 2;
    const int last = area.top - 8 * Line; // of the device, which has it before its first parameter
    DrawSwitch("SERIAL STACK:", {middle + Gap, last, area.right, last - RowHeight}, ActionSwitchSerial,
               device->serialStack ? "YES" : "NO");
    if (!ParameterAt(selection)) return;
    const out_parameter_struct &parameter = *ParameterAt(selection);
    if (parameter.deleted || device->deleted || SystemAt(selection)->deleted)
        DrawCutRight("deleted: gone with the next load", area.right, area.top, 300, ColourOrange);
    int top = area.top - Line;
    const auto row = [&](bool isRight) {
        return Area{isRight ? middle + Gap : area.left, top, isRight ? area.right : middle - Gap,
                    top - RowHeight};
    };
    DrawLabelled("PARAMETER:", {area.left, top, area.right, top - RowHeight}, FieldName, parameter.name);
    top -= Line;
    DrawLabelled("TEXT:", {area.left, top, area.right, top - RowHeight}, FieldFreeText, parameter.text);
    top -= Line;
    DrawLabelled("UNIT:", row(false), FieldUnit, parameter.unit);
    DrawSwitch("TYPE:", row(true), ActionSwitchType, parameter.type == TypeDouble ? "DOUBLE" : "INTEGER");
    top -= Line;
    DrawLabelled("INIT VALUE:", row(false), FieldInit, ShortDecimal(parameter.initValue));
    DrawCut("ACTUAL VALUE:", middle + Gap, top, LabelWidth, ColourCyan);
    DrawCut(SignificantDigits(LiveValue(selection)), middle + Gap + LabelWidth + 3, top,
            area.right - middle - LabelWidth, ColourGreen);
    top -= Line;
    DrawLabelled("MIN LIMIT:", row(false), FieldMin, Limit(parameter.hasMin, parameter.minLimit));
    DrawLabelled("MAX LIMIT:", row(true), FieldMax, Limit(parameter.hasMax, parameter.maxLimit));
    top -= Line;
    DrawDataref("INPUT DATAREF:", {area.left, top, area.right, top - RowHeight}, FieldInDataref,
                ActionSwitchInMode, parameter.inDataref);
    top -= Line;
    DrawDataref("OUTPUT DATAREF:", {area.left, top, area.right, top - RowHeight}, FieldOutDataref,
                ActionSwitchOutMode, parameter.outDataref);
    top -= Line;
    DrawSwitch("SAVE ON EXIT:", row(false), ActionSwitchSaveOnExit, parameter.saveOnExit ? "YES" : "NO");
}

void DrawUsage(const Area &area) {
    RefreshUsage(selection);
    DrawCut("ACTUAL USAGE:", area.left, area.top, area.right - area.left, ColourCyan);
    const int listTop = area.top - RowHeight;
    const int rows = std::max(1, (listTop - area.bottom) / RowHeight);
    const int count = static_cast<int>(usageVector.size());
    const Area list = {area.left, listTop, area.right, listTop - rows * RowHeight};
    FillArea(list, ColourBlack, 0.5);
    const int barWidth = AddScroll(parZones, list, ListUsage, rows, count, scroll[ListUsage]);
    static std::string name; // kept for its memory
    for (int i = scroll[ListUsage]; i < std::min(count, scroll[ListUsage] + rows); i++) {
        const out_usage_struct &usage = usageVector[static_cast<size_t>(i)];
        const out_parameter_struct *user = ParameterAt(usage.place);
        if (!user) continue;
        click_zone_class zone = Zone(ActionGoToUsage);
        zone.item = i;
        const int top = listTop - (i - scroll[ListUsage]) * RowHeight;
        zone.area = {area.left, top, area.right - barWidth, top - RowHeight};
        AddClickZone(parZones, zone);
        const int kindWidth = 76;
        name.assign(SystemAt(usage.place)->name).append(".");
        name.append(DeviceAt(usage.place)->name).append(".").append(user->name);
        DrawCut(name, area.left + 3, top, zone.area.right - area.left - kindWidth - Gap, ColourWhite);
        DrawCut(KindOfUse(usage), zone.area.right - kindWidth, top, kindWidth, ColourGrey);
    }
}

void TakeGraphValue() {
    if (graph.place != selection || FlightTimeSEC < graph.lastTime) ForgetGraphValues();
    graph.place = selection;
    if (!ParameterAt(selection)) return;
    actualGraphValue = LiveValue(selection);
    if (graph.lastTime >= 0.0 && FlightTimeSEC - graph.lastTime < GraphSeconds / GraphValues) return;
    graph.lastTime = FlightTimeSEC;
    graph.value[graph.next] = actualGraphValue;
    graph.next = (graph.next + 1) % GraphValues;
    graph.count = std::min(graph.count + 1, GraphValues);
}

// The newest value stands at the right edge; the scale is that of the values that are seen.
void DrawValueGraph(const Area &area) {
    DrawCut("ACTUAL VALUE GRAPH:", area.left, area.top, area.right - area.left, ColourCyan);
    const Area frame = {area.left, area.top - RowHeight, area.right, area.bottom};
    FillArea(frame, ColourBlack, 0.5);
    FrameArea(frame, ColourBoard, 1.0);
    if (graph.count == 0) return;
    double least = GraphValue(0), most = GraphValue(0);
    for (int age = 1; age < graph.count; age++) {
        least = std::min(least, GraphValue(age));
        most = std::max(most, GraphValue(age));
    }
    const int labels = RowHeight + 2;
    DrawCut(SignificantDigits(most), frame.left + 4, frame.top, 120, ColourGrey);
    DrawCut(SignificantDigits(least), frame.left + 4, frame.bottom + RowHeight, 120, ColourGrey);
    DrawNumberRight(actualGraphValue, frame.right - 4, frame.top, 120, ColourGreen);
    const double bottom = frame.bottom + labels, height = frame.top - labels - bottom;
    const auto y = [&](double value) {
        return bottom + (most > least ? (value - least) / (most - least) : 0.5) * height;
    };
    const double step = static_cast<double>(frame.right - frame.left - 6) / (GraphValues - 1);
    for (int age = 1; age < graph.count; age++) {
        const double x = frame.right - 3 - age * step;
        DrawLineCT(x, y(GraphValue(age)), x + step, y(GraphValue(age - 1)), ColourGreen, 1, 1);
    }
}
