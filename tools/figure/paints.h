// Colours and small relief of skin and cloth.
#pragma once

#include "tools/figure/looks.h"

namespace figure_maker {

// Of 0 to 255 each.
inline Vec Color(int red, int green, int blue) {
    return Vec{static_cast<double>(red), static_cast<double>(green), static_cast<double>(blue)} * (1.0 / 255);
}

const Vec ShirtWhite = Color(233, 236, 240), UniformNavy = Color(27, 31, 46), TieNavy = Color(20, 25, 44),
          Gold = Color(204, 163, 74), ShoeBlack = Color(22, 21, 22);

// Skin with its blotches and pores; redness 0 to 1 where blood shines through.
Texel Skin(const SkinPoint &point, const Tone &tone, double redness);
// Folds run across the direction; their depth in metres.
Texel Cloth(const SkinPoint &point, Vec color, Vec across, double foldDepth);

// Darkens where little sky is seen, the red less by the warmth: light that comes through skin, or off it, has
// its colour.
Vec Shaded(Vec color, double openness, double warmth = 0);

} // namespace figure_maker
