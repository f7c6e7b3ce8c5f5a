// Zones do not overlap, so each can be lit when it is added.
#include "systems/editor/zones.h"

#include <algorithm>

#include "gfx/fonts.h"
#include "systems/editor/state.h"
#include "systems/links.h"

ZonesState zonesState;

namespace {

const int BoardMargin = 4, BoardGap = 4;
const int ScrollWidth = 12;

} // namespace

void BeginZones(int x, int y) {
    parZones.clear();
    vectorZones.clear();
    std::fill(std::begin(zonesState.lists), std::end(zonesState.lists), Area());
    activeZone = activeVectorZone = -1;
    zonesState.mouseX = x;
    zonesState.mouseY = y;
}

void AddClickZone(std::vector<click_zone_class> &zones, const click_zone_class &zone) {
    zones.push_back(zone);
    if (!zone.isHit(zonesState.mouseX, zonesState.mouseY)) return;
    (&zones == &vectorZones ? activeVectorZone : activeZone) = static_cast<int>(zones.size()) - 1;
    FillArea(zone.area, ColourCyan, 0.25);
    FrameArea(zone.area, ColourCyan, 0.8);
}

int BoardWidth(std::string_view name) {
    return LenFontIdS(fnt_Main, name) + 2 * BoardMargin;
}

int AddBoard(std::vector<click_zone_class> &zones, click_zone_class zone, int x, int top, bool isOn) {
    zone.area = {x, top, x + BoardWidth(zone.name), top - RowHeight + 1};
    FillArea(zone.area, isOn ? ColourGreen : ColourBoard, isOn ? 0.5 : 0.7);
    FrameArea(zone.area, ColourGrey, 1.0);
    AddClickZone(zones, zone);
    DrawCut(zone.name, x + BoardMargin, top, zone.area.right - x, ColourWhite);
    return zone.area.right + BoardGap;
}

int AddScroll(std::vector<click_zone_class> &zones, const Area &area, int list, int rows, int count,
              int &first) {
    rowsSeen[list] = rows;
    zonesState.lists[list] = area;
    first = std::clamp(first, 0, std::max(0, count - rows));
    if (count <= rows) return 0;
    click_zone_class zone;
    zone.action = ActionScroll;
    zone.list = list;
    zone.count = count;
    zone.rows = rows;
    zone.area = {area.right - ScrollWidth, area.top, area.right, area.bottom};
    FillArea(zone.area, ColourBoard, 0.4);
    const int height = area.top - area.bottom;
    const int thumb = std::max(10, height * rows / count);
    const int above = (height - thumb) * first / (count - rows);
    FillArea({zone.area.left + 2, area.top - above, zone.area.right - 2, area.top - above - thumb},
             ColourGrey, 1.0);
    AddClickZone(zones, zone);
    return ScrollWidth + 2;
}

int ListAt(int x, int y) {
    for (int list = 0; list < EditorLists; list++)
        if (zonesState.lists[list].isHit(x, y)) return list;
    return -1;
}

const click_zone_class *ZoneUnderMouse() {
    const click_zone_class *zone = RecordAt(parZones, activeZone);
    return zone ? zone : RecordAt(vectorZones, activeVectorZone);
}

const click_zone_class *ZoneAt(int x, int y) {
    for (const auto *zones : {&parZones, &vectorZones})
        for (const click_zone_class &zone : *zones)
            if (zone.isHit(x, y)) return &zone;
    return nullptr;
}
