// The title and the table: three columns to choose a system, a device and a parameter. Only the rows that are
// seen are looked at.
#include "systems/editor/panels.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "gfx/fonts.h"
#include "systems/editor/fields.h"
#include "systems/editor/kept.h"
#include "systems/editor/model.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/links.h"
#include "systems/program.h"
#include "util/numbers.h"

PanelsState panelsState;

namespace {

const int ButtonRows = 2; // above each column

// A column of the table: its records and how they are chosen.
template <typename Records> struct Column {
    const Records &records;
    int level; // ListSys, ListDev or ListOut
    int selected;
    int field; // of the name

    // Where the record at an index stands, below what is selected.
    ParameterAddress At(int index) const {
        if (level == ListSys) return {index};
        return level == ListDev ? ParameterAddress{selSys, index} : ParameterAddress{selSys, selDev, index};
    }
};

click_zone_class ColumnZone(int action, const char *name, int list) {
    click_zone_class zone = Zone(action, name);
    zone.place.block = -1;
    zone.list = list;
    return zone;
}

int NameColour(bool isDeleted, bool hasError, bool isSelected) {
    if (isDeleted) return ColourGrey;
    if (hasError) return ColourRed;
    return isSelected ? ColourYellow : ColourWhite;
}

// New.. DEL COPY over PASTE MOVE CLONE.
void DrawButtons(const Area &area, int list) {
    int x = AddBoard(vectorZones, ColumnZone(ActionNew, "New..", list), area.left, area.top);
    x = AddBoard(vectorZones, ColumnZone(ActionDelete, "DEL", list), x, area.top);
    if (list == ListSys) return;
    AddBoard(vectorZones, ColumnZone(ActionCopy, "COPY", list), x, area.top);
    const int second = area.top - RowHeight - 2;
    x = AddBoard(vectorZones, ColumnZone(ActionPaste, "PASTE", list), area.left, second);
    x = AddBoard(vectorZones, ColumnZone(ActionMove, "MOVE", list), x, second);
    if (list == ListDev) AddBoard(vectorZones, ColumnZone(ActionClone, "CLONE", list), x, second);
}

// "< PAGE  2/7  PAGE >" below a column.
void DrawPages(const Area &area, int list, int rows, int count) {
    if (count <= rows) return;
    click_zone_class zone = ColumnZone(ActionPage, "< PAGE", list);
    zone.rows = -rows;
    const int x = AddBoard(vectorZones, zone, area.left, area.top);
    zone.name = "PAGE >";
    zone.rows = rows;
    const int right = area.right - BoardWidth(zone.name);
    AddBoard(vectorZones, zone, right, area.top);
    const int page = (scroll[list] + rows - 1) / rows;
    if (list == ListOut) SysTablePage = page;
    char text[32];
    char *end = std::to_chars(text, text + 12, page + 1).ptr;
    *end++ = '/';
    end = std::to_chars(end, end + 12, (count + rows - 1) / rows).ptr;
    DrawCut(std::string_view(text, static_cast<size_t>(end - text)), x + 2, area.top, right - x - 4,
            ColourGrey);
}

template <typename Records> void DrawColumn(const Area &area, const Column<Records> &column) {
    DrawButtons(area, column.level);
    const int count = static_cast<int>(column.records.size());
    const int listTop = area.top - ButtonRows * (RowHeight + 2) - 2;
    const int rows = std::max(1, (listTop - area.bottom - RowHeight - 4) / RowHeight);
    const Area list = {area.left, listTop, area.right, listTop - rows * RowHeight};
    FillArea(list, ColourBlack, 0.5);
    FrameArea(list, ColourBoard, 1.0);
    const int barWidth = AddScroll(vectorZones, list, column.level, rows, count, scroll[column.level]);
    for (int i = scroll[column.level]; i < std::min(count, scroll[column.level] + rows); i++) {
        const auto &record = column.records[static_cast<size_t>(i)];
        const int top = listTop - (i - scroll[column.level]) * RowHeight;
        click_zone_class zone;
        zone.action = ActionEdit;
        zone.field = column.field;
        zone.place = {column.At(i), -1};
        zone.list = column.level;
        zone.area = {area.left, top, area.right - barWidth, top - RowHeight};
        if (i == column.selected) FillArea(zone.area, ColourGreen, 0.3);
        AddClickZone(vectorZones, zone);
        int width = zone.area.right - zone.area.left - Gap;
        if (column.level == ListOut) {
            const int valueWidth = width / 3;
            DrawNumberRight(LiveValue(zone.place), zone.area.right - 3, top, valueWidth, ColourCyan);
            width -= valueWidth + Gap;
        }
        width -= DrawKeptMark(zone.place, area.left + 3 + width, top);
        DrawCut(record.name, area.left + 3, top, width,
                NameColour(record.deleted, record.hasError, i == column.selected));
    }
    DrawPages({list.left, list.bottom - 2, list.right, area.bottom}, column.level, rows, count);
}

} // namespace

click_zone_class Zone(int action, const char *name) {
    click_zone_class zone;
    zone.name = name;
    zone.action = action;
    zone.place = SelectedBlock();
    return zone;
}

void DrawTitle(const Area &area) {
    const struct {
        int action;
        const char *name;
        bool isOn;
    } boards[] = {{ActionBack, "<---", false},
                  {ActionForward, "--->", false},
                  {ActionSave, "SAVE", hasUnsavedChanges()},
                  {ActionAuto, "AUTO", isAUTO != 0},
                  {ActionUndo, "UNDO", false},
                  {ActionHide, "HIDE", false}};
    int width = 0;
    for (const auto &board : boards) width += BoardWidth(board.name) + 4;
    int x = area.right - width;
    for (const auto &board : boards)
        x = AddBoard(vectorZones, ColumnZone(board.action, board.name, 0), x, area.top, board.isOn);
    const char *const heading = "SYSTEM - DEVICE - PARAMETER";
    DrawCut(heading, area.left, area.top, 400, ColourCyan);
    const int addressX = area.left + LenFontIdS(fnt_Main, heading) + 3 * Gap;
    static std::string address; // kept for its memory
    address.clear();
    if (const system_class *system = SystemAt(selection)) address += system->name;
    if (const device_struct *device = DeviceAt(selection)) address.append(" - ").append(device->name);
    if (const auto *parameter = ParameterAt(selection)) address.append(" - ").append(parameter->name);
    DrawCut(address, addressX, area.top, area.right - width - addressX - Gap, ColourYellow);
    DrawCut(editorMessage, area.left, area.top - RowHeight - 2, area.right - area.left,
            isEditorMessageBad ? ColourOrange : ColourGreen);
}

void DrawTable(const Area &area) {
    const int width = (area.right - area.left - 2 * Gap) / 3;
    ColumnX_Sys = area.left;
    ColumnX_DevPb = ColumnX_Sys + width + Gap;
    ColumnX_Out = ColumnX_DevPb + width + Gap;
    offsetY = area.top;
    static const std::vector<device_struct> noDevices;
    static const std::vector<out_parameter_struct> noOuts;
    DrawColumn({ColumnX_Sys, area.top, ColumnX_Sys + width, area.bottom},
               Column<std::vector<system_class>>{systems_vector, ListSys, selSys, FieldSystemName});
    const auto &devices = SystemAt(selection) ? SystemAt(selection)->devices : noDevices;
    DrawColumn({ColumnX_DevPb, area.top, ColumnX_DevPb + width, area.bottom},
               Column<std::vector<device_struct>>{devices, ListDev, selDev, FieldDeviceName});
    const auto &outs = DeviceAt(selection) ? DeviceAt(selection)->outs : noOuts;
    DrawColumn({ColumnX_Out, area.top, area.right, area.bottom},
               Column<std::vector<out_parameter_struct>>{outs, ListOut, selOut, FieldName});
}
