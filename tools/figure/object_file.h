// Writes surfaces as an object of the simulator (text, version 800), driven by the figure's datarefs.
#pragma once

#include <string>
#include <vector>

#include "tools/figure/atlas.h"

namespace figure_maker {

// A person, near by and as seen from outside the aircraft.
struct Figure {
    const Body *body;
    std::vector<Surface> surfaces, afar;
};

// The text of an object that carries all figures, and shows the one that "kv/fo/_gender" says: 0 the first.
std::string FigureText(const std::vector<Figure> &figures, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap);

// The text of an object that stands still, such as a seat. The normal map's name may be empty.
std::string ObjectText(const std::vector<Surface> &surfaces, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap);

} // namespace figure_maker
