// No noise from texel to texel: it would be lost in the simulator's smaller copies and make the files large.
#include "tools/figure/paints.h"

namespace figure_maker {

Vec Shaded(Vec color, double openness, double warmth) {
    const double light = 0.45 + 0.55 * openness;
    return {color.x * std::pow(light, 1 - warmth), color.y * light,
            color.z * std::pow(light, 1 + warmth / 3)};
}

Texel Skin(const SkinPoint &point, const Tone &tone, double redness) {
    Texel texel;
    const double blotch = Turbulence(point.position * 60, 3);
    Vec color = tone.skin * (1 + 0.05 * blotch);
    color = Mix(color, tone.blood, std::clamp(redness + 0.08 * blotch, 0.0, 1.0) * 0.6);
    texel.color = Shaded(color, point.openness, 0.15);
    texel.height = 0.00004 * Turbulence(point.position * 900, 2);
    texel.gloss = 0.28;
    return texel;
}

Texel Cloth(const SkinPoint &point, Vec color, Vec across, double foldDepth) {
    Texel texel;
    // Noise drawn out along the folds.
    const Vec p = point.position;
    const Vec stretched = across * (Dot(p, across) * 34) + (p - across * Dot(p, across)) * 9;
    const double warp = Noise(p * 14) * 0.8;
    const double fold = Turbulence(stretched + Vec{warp, warp, warp}, 3);
    texel.height = foldDepth * fold;
    texel.color = Shaded(color * (1 + 0.07 * fold), point.openness);
    texel.gloss = 0.05;
    return texel;
}

} // namespace figure_maker
