// What can be clicked in the systems editor. The zones are collected anew by every drawing, so what is seen
// and what is clicked are the same.
#pragma once

#include <string_view>
#include <vector>

#include "systems/editor/canvas.h"

enum ZoneContext {
    ZoneAction, // an EditorAction
    ZoneSys,
    ZoneDev,
    ZoneOut,
    ZoneBlock,
    ZoneItem,
    ZoneElement,
    ZoneField, // an EditorField
    ZoneList,  // an EditorList
    ZoneValue,
    ZoneContexts = 12
};

class click_zone_class {
public:
    const char *name = "";
    Area area;
    int context[ZoneContexts] = {};

    bool isHit(int x, int y) const { return area.isHit(x, y); }

    // Whether both stand for the same thing, wherever it was drawn.
    bool isSame(const click_zone_class &other) const;
};

extern std::vector<click_zone_class> parZones;    // details and stacks of the parameter
extern std::vector<click_zone_class> vectorZones; // the table of systems, devices and parameters
extern int activeZone, activeVectorZone;          // under the mouse; -1: none

// Forgets the zones; where the mouse is from now on.
void BeginZones(int mouseX, int mouseY);

// Adds a zone, lit while the mouse is over it. The context is that of the record that it stands for.
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
