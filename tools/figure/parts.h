// The figure's parts, and the seats. Each adds its surfaces; sizes in texels are those of a picture of 2048.
#pragma once

#include <vector>

#include "tools/figure/surfaces.h"

namespace figure_maker {

void AddHead(std::vector<Surface> &surfaces); // with neck
void AddFace(std::vector<Surface> &surfaces); // eyes, lids, lips, glasses
void AddHair(std::vector<Surface> &surfaces);
void AddTorso(std::vector<Surface> &surfaces); // shirt, collar, tie, epaulettes, belt, hips
void AddArms(std::vector<Surface> &surfaces);
void AddHands(std::vector<Surface> &surfaces);
void AddLegs(std::vector<Surface> &surfaces);
void AddTablet(std::vector<Surface> &surfaces);
void AddSeats(std::vector<Surface> &surfaces);

// Solids that others rest on, at rest.
double HeadSolid(Vec p); // skin, without ears
double HairSolid(Vec p);
double ChestSolid(Vec p);
double NeckSolid(Vec p);
double HipsSolid(Vec p);

// A place about the head's centre: millimetres to the right, up, and forward.
inline Vec OnHead(double right, double up, double forward) {
    return HeadCentre + Vec{right, up, -forward} * 0.001;
}

} // namespace figure_maker
