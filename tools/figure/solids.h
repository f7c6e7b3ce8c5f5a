// Solids described by the signed distance to their skin: negative inside, metres. Smoothly joined ellipsoids
// and cones make the body; surfaces.h finds the skin.
#pragma once

#include <functional>
#include <vector>

#include "figure/vectors.h"

namespace figure_maker {

using namespace rig; // the joints, and points in space

using Solid = std::function<double(Vec)>;

// Near its skin the distance to an ellipsoid is about right; far inside it is only a sign.
double Ellipsoid(Vec p, Vec centre, Vec radii);

// Two balls and all between them.
double RoundCone(Vec p, Vec a, Vec b, double radiusA, double radiusB);

// A solid given by its cross-sections from one end to the other, smooth between them: half the width, and
// where its depth begins and ends. A power of 2 makes ellipses, more squarer ones.
struct Section {
    double at, half, low, high;
};
double Sections(const std::vector<Section> &table, double at, double across, double depth, double power);

// Union and difference whose edge is rounded over the given width.
double Join(double a, double b, double width);
double Cut(double a, double b, double width);

// Unit vector out of the solid.
Vec OutOf(const Solid &solid, Vec p);

// How open the sky is above a point of the skin, 0 to 1: what lies near darkens it.
double Openness(const Solid &solid, Vec p, Vec normal, double reach);

// Smooth noise, -1 to 1, and the same with finer and finer detail. One unit from lump to lump.
double Noise(Vec p);
double Turbulence(Vec p, int octaves);

} // namespace figure_maker
