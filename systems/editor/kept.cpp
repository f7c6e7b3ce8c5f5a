// There are few of these lines or none, so each mark is counted from the list of all of them.
#include "systems/editor/kept.h"

#include <algorithm>

#include "gfx/fonts.h"
#include "systems/editor/panels.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/links.h"
#include "util/make_fresh.h"
#include "util/numbers.h"

namespace {

struct {
    std::vector<KeptPlace> places;
    unsigned changeCount = 0; // of the model that they were collected from
    bool isWhole = false;
} collected;

void Collect(const KeptLines &lines, const BlockPlace &place) {
    for (const kept_line_struct &kept : lines)
        collected.places.push_back({place, kept.line, kept.text, kept.reason});
}

void CollectParameter(const out_parameter_struct &parameter, const ParameterAddress &place) {
    Collect(parameter.kept, {place, -1});
    for (size_t block = 0; block < parameter.logic.size(); block++)
        Collect(parameter.logic[block].kept, {place, static_cast<int>(block)});
}

void CollectDevice(const device_struct &device, const ParameterAddress &place) {
    Collect(device.kept, {place, -1});
    for (ParameterAddress at{place.sys, place.dev, 0}; ParameterAt(at); at.out++) {
        const out_parameter_struct &parameter = *ParameterAt(at);
        if (!parameter.deleted) CollectParameter(parameter, at);
        Collect(parameter.keptBehind, {place, -1});
    }
}

void CollectSystem(const system_class &system, int sys) {
    if (!system.deleted) {
        Collect(system.kept, {{sys}, -1});
        for (ParameterAddress at{sys, 0}; DeviceAt(at); at.dev++)
            if (!DeviceAt(at)->deleted) CollectDevice(*DeviceAt(at), at);
    }
    Collect(system.keptInList, {});
}

bool isWithin(const BlockPlace &place, const BlockPlace &whole) {
    return place.sys == whole.sys && (whole.dev < 0 || place.dev == whole.dev)
           && (whole.out < 0 || place.out == whole.out) && (whole.block < 0 || place.block == whole.block);
}

std::string_view LineName(int line) {
    static std::string name; // kept for its memory
    return name.assign("line ").append(int2string(line));
}

} // namespace

const std::vector<KeptPlace> &KeptPlaces() {
    if (collected.isWhole && collected.changeCount == modelChangeCount) return collected.places;
    collected = {.places = {}, .changeCount = modelChangeCount, .isWhole = true};
    Collect(keptBeforeSystems.inList, {});
    Collect(keptBeforeSystems.lines, {});
    for (ParameterAddress at{0}; SystemAt(at); at.sys++) CollectSystem(*SystemAt(at), at.sys);
    return collected.places;
}

void ForgetKeptPlaces() {
    MakeFresh(collected);
}

int DrawKeptMark(const BlockPlace &place, int right, int top) {
    const std::vector<KeptPlace> &all = KeptPlaces();
    const auto count = std::count_if(all.begin(), all.end(),
                                     [&](const KeptPlace &kept) { return isWithin(kept.place, place); });
    if (count == 0) return 0;
    const std::string mark = int2string(static_cast<int>(count)) + "?";
    const int width = LenFontIdS(fnt_Main, mark);
    DrawCutRight(mark, right, top, width + 1, ColourOrange);
    return width + Gap;
}

void DrawKept(const Area &area) {
    const std::vector<KeptPlace> &all = KeptPlaces();
    DrawCut("NOT UNDERSTOOD:", area.left, area.top, area.right - area.left, ColourOrange);
    const int listTop = area.top - RowHeight;
    const int rows = std::max(1, (listTop - area.bottom) / RowHeight), count = static_cast<int>(all.size());
    const Area list = {area.left, listTop, area.right, listTop - rows * RowHeight};
    FillArea(list, ColourBlack, 0.5);
    const int barWidth = AddScroll(parZones, list, ListKept, rows, count, scroll[ListKept]);
    for (int i = scroll[ListKept]; i < std::min(count, scroll[ListKept] + rows); i++) {
        const KeptPlace &kept = all[static_cast<size_t>(i)];
        click_zone_class zone = Zone(ActionGoToKept);
        zone.item = i;
        const int top = listTop - (i - scroll[ListKept]) * RowHeight;
        zone.area = {area.left, top, area.right - barWidth, top - RowHeight};
        AddClickZone(parZones, zone);
        const int width = zone.area.right - area.left, nameWidth = 76;
        DrawCut(LineName(kept.line), area.left + 3, top, nameWidth - Gap, ColourGrey);
        DrawCut(kept.text, area.left + 3 + nameWidth, top, width - nameWidth - 6, ColourWhite);
    }
}
