// Writes surfaces as an object of the simulator (text, version 800), driven by the figure's datarefs.
#pragma once

#include <string>
#include <vector>

#include "tools/figure/atlas.h"

namespace figure_maker {

// The object's text. Parts without a joint of their own, such as a seat, stand still when isFigure is false.
std::string ObjectText(const std::vector<Surface> &surfaces, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap, bool isFigure);

} // namespace figure_maker
