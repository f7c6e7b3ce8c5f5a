// What stands behind the figure where the aircraft brings nothing of its own: a sky, and a plain cockpit with
// a seat, in the coordinates of the right-hand seat (object_drawing.h's objects; the origin is the middle of
// the cushion's top).
#pragma once

#include "simhost/drawing/object_drawing.h"

namespace simhost {

DrawnObject MakeSeat();
DrawnObject MakeCockpitRoom(); // floor, side wall with its window, panel

// Fills the bound surface, in the state of RestoreGraphicsState; horizon as HorizonHeight tells it.
void DrawSky(float horizon, int width, int height);

} // namespace simhost
