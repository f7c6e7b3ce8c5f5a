// How each person can look: one row for each of the three looks of woman and man.
#pragma once

#include <string>

#include "tools/figure/surfaces.h"

namespace figure_maker {

enum class HairStyle { Knot, Bob, Short, Receding, Cropped };

struct Tone {
    const char *name; // in the names of charts
    Vec skin, blood;  // and where blood shines through
};

struct Look {
    Tone tone;
    Vec hair, brow, iris, lip;
    HairStyle style;
    double age;     // 0 smooth to 1: lines of the forehead, beside the eyes and the mouth
    double stubble; // 0 shaved to 1: a short beard
    Vec glasses;    // the frame's colour
    double rim;     // its radius, millimetres
};

const Look &LookOf(const Body &body, int look);

// What the chart of a look's own part is called.
std::string ChartOf(const Body &body, int look, const std::string &part);

// The looks that have a tone of the skin, as bits.
int LooksWith(const Body &body, const Tone &tone);
const Tone &LightTone();
const Tone &DarkTone();

} // namespace figure_maker
