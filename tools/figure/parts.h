// The figures' parts, and the seats. Each adds its surfaces, for all looks; sizes in texels are those of a
// picture of 2048. One builder makes both people: what differs stands in rows of measures, at the top of
// each source file.
#pragma once

#include <vector>

#include "tools/figure/surfaces.h"

namespace figure_maker {

using Surfaces = std::vector<Surface>;

void AddHead(Surfaces &surfaces, const Body &body); // with ears and neck
void AddFace(Surfaces &surfaces, const Body &body); // eyes, lids, lips, glasses
void AddHair(Surfaces &surfaces, const Body &body);
void AddTorso(Surfaces &surfaces, const Body &body); // shirt, collar, tie, epaulettes, belt, hips
void AddArms(Surfaces &surfaces, const Body &body);
void AddHands(Surfaces &surfaces, const Body &body);
void AddLegs(Surfaces &surfaces, const Body &body);
void AddThings(Surfaces &surfaces, const Body &body); // tablet, pad and pen
void AddSeats(Surfaces &surfaces);

// A body as one sees it from outside the aircraft: a few hundred triangles, in the charts of the parts above.
void AddFromAfar(Surfaces &surfaces, const Body &body);

// The skin of the head, in the layout of its charts.
Grid HeadSkin(const Body &body, int columns, int rows);

// Solids that others rest on, at rest.
double HeadSolid(const Body &body, Vec p); // skin, without ears
double HairSolid(const Body &body, int look, Vec p);
double TorsoSolid(const Body &body, Vec p); // the shirt, without sleeves
double NeckSolid(const Body &body, Vec p);
double HipsSolid(const Body &body, Vec p);
double ArmSolid(const Body &body, Vec p);      // the right sleeve
double TrousersSolid(const Body &body, Vec p); // the right leg of the trousers
// The right hand in a pose, from the frames that its joints carry (rig::CarriedFrames). The palm's frame must
// be the one at rest.
double HandSolid(const Body &body, const Frames &frames, Vec p);

// A place about the head's centre: millimetres of her head to the right, up, and forward.
inline Vec OnHead(const Body &body, double right, double up, double forward) {
    return body.headCentre + Vec{right, up, -forward} * (0.001 * body.measures.head);
}

} // namespace figure_maker
