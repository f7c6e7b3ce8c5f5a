// What can be clicked in the systems editor. The zones are collected anew by every drawing, so what is seen
// and what is clicked are the same.
#pragma once

#include <string_view>
#include <vector>

#include "systems/editor/blocks.h"
#include "systems/editor/canvas.h"
#include "systems/editor/state.h"

// What a zone stands for. Each number has one meaning, whatever the action; -1: none.
struct ZoneContext {
    int action = 0;   // an EditorAction
    BlockPlace place; // the record, as deep as the action goes
    int item = -1;    // a comparison, calculation, action or point of the block; an entry of another list
    int element = -1; // of calculation item
    int field = 0;    // an EditorField
    int list = -1;    // an EditorList
    int value = -1;   // what is to be set: a CalculationOperator, a type of action
    int rows = 0;     // of a list, that are seen; by as many a page is turned, back when negative
    int count = 0;    // of a list, all
    bool operator==(const ZoneContext &) const = default;
};

class click_zone_class : public ZoneContext {
public:
    const char *name = "";
    Area area;

    bool isHit(int x, int y) const { return area.isHit(x, y); }

    // Whether both stand for the same thing, wherever it was drawn.
    bool isSame(const ZoneContext &other) const { return *this == other; }
};

struct ZonesState {
    std::vector<click_zone_class> ofParameter; // details and stacks of the parameter
    std::vector<click_zone_class> ofTable;     // the table of systems, devices and parameters
    int active = -1, activeOfTable = -1;       // under the mouse; -1: none
    int mouseX = 0, mouseY = 0;
    Area lists[EditorLists]; // where each was drawn
};
extern ZonesState zonesState;
inline std::vector<click_zone_class> &parZones = zonesState.ofParameter;
inline std::vector<click_zone_class> &vectorZones = zonesState.ofTable;
inline int &activeZone = zonesState.active, &activeVectorZone = zonesState.activeOfTable;

// Forgets the zones; where the mouse is from now on.
void BeginZones(int mouseX, int mouseY);

// Adds a zone, lit while the mouse is over it.
void AddClickZone(std::vector<click_zone_class> &zones, const click_zone_class &zone);

// A button with its name, right of x; returns where the next one begins. A lit one is switched on.
int AddBoard(std::vector<click_zone_class> &zones, click_zone_class zone, int x, int top, bool isOn = false);
int BoardWidth(std::string_view name);

// A list's area, and a scroll bar at its right edge, when count is more than the rows that are seen. Brings
// first into its range, 0 to count - rows. Returns the width that it takes.
int AddScroll(std::vector<click_zone_class> &zones, const Area &area, int list, int rows, int count,
              int &first);

// The list drawn with AddScroll at a place, an EditorList; -1 where none is.
int ListAt(int x, int y);

// The zone under the mouse, or null.
const click_zone_class *ZoneUnderMouse();
const click_zone_class *ZoneAt(int x, int y);
