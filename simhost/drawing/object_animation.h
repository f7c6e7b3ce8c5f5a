// An object's pose: which of its triangles are drawn, and where, for given values of its datarefs.
//
// A group (ANIM_begin to ANIM_end) starts with the place and the visibility of the group around it. In it the
// last ANIM_show or ANIM_hide that applies decides, for what follows; what is hidden stays so in the groups
// inside.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "simhost/drawing/object_file.h"

namespace simhost {

// Columns one after the other, as OpenGL has them. Points are columns: a product's right factor acts first.
using Matrix = std::array<float, 16>;

inline constexpr Matrix UnitMatrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Matrix operator*(const Matrix &a, const Matrix &b);
Matrix Translation(float x, float y, float z);
Matrix Rotation(float x, float y, float z, float degrees); // about an axis of any length; of none: the unit
std::array<float, 3> Transformed(const Matrix &matrix, const float (&point)[3]);

// Triangles to be drawn, in the order of the file.
struct PosedTriangles {
    int first = 0, count = 0; // of the object's indices
    bool isCulled = true;     // back faces are not drawn
    int line = 0;             // of the TRIS command
    Matrix place;             // from the group's coordinates to the object's
};

// values: one for each of the object's datarefs. distance: metres from the eye, for levels of detail.
void PoseObject(const ObjectFile &object, const std::vector<double> &values, float distance,
                std::vector<PosedTriangles> &posed);

// The values that a function gives for the names.
std::vector<double> ValuesOf(const ObjectFile &object,
                             const std::function<double(const std::string &name)> &valueOf);

// The points of all triangles that are drawn, three for each, in the object's coordinates.
std::vector<std::array<float, 3>> PosedPoints(const ObjectFile &object,
                                              const std::vector<PosedTriangles> &posed);

} // namespace simhost
