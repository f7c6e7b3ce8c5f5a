// Runs an object's commands from top to bottom with a stack of groups. All in floats, as the graphics card
// would have it.
#include "simhost/drawing/object_animation.h"

#include <algorithm>
#include <cmath>

namespace simhost {

namespace {

constexpr float RadiansPerDegree = 3.14159265358979F / 180;

struct Group {
    Matrix place = UnitMatrix;
    bool isInHidden = false; // a group around it is hidden
    bool isHidden = false;
};

// Linear between keys, and along the outer two beyond them.
AnimationKey Interpolated(const AnimationKey *keys, int count, float value) {
    if (count == 0) return {};
    if (count == 1) return keys[0];
    int right = 1;
    while (right < count - 1 && value > keys[right].value) right++;
    const AnimationKey &a = keys[right - 1], &b = keys[right];
    const float span = b.value - a.value;
    if (!(span > 0)) return value > b.value ? b : a;
    const float part = (value - a.value) / span;
    const auto between = [part](float from, float to) { return from + (to - from) * part; };
    AnimationKey key{value, {}, between(a.degrees, b.degrees)};
    for (int i = 0; i < 3; i++) key.move[i] = between(a.move[i], b.move[i]);
    return key;
}

void Animate(const ObjectFile &object, const ObjectCommand &command, float value, Matrix &place) {
    if (command.loop > 0) {
        value = std::fmod(value, command.loop);
        if (value < 0) value += command.loop;
    }
    const AnimationKey key = Interpolated(object.keys.data() + command.first, command.count, value);
    if (command.kind == ObjectCommandKind::Translate)
        place = place * Translation(key.move[0], key.move[1], key.move[2]);
    else
        place = place * Rotation(command.axis[0], command.axis[1], command.axis[2], key.degrees);
}

} // namespace

Matrix operator*(const Matrix &a, const Matrix &b) {
    Matrix product;
    for (std::size_t column = 0; column < 4; column++) {
        for (std::size_t row = 0; row < 4; row++) {
            float sum = 0;
            for (std::size_t i = 0; i < 4; i++) sum += a[i * 4 + row] * b[column * 4 + i];
            product[column * 4 + row] = sum;
        }
    }
    return product;
}

Matrix Translation(float x, float y, float z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

// Rodrigues' formula.
Matrix Rotation(float x, float y, float z, float degrees) {
    const float length = std::sqrt(x * x + y * y + z * z);
    if (!(length > 0) || !std::isfinite(length)) return UnitMatrix;
    x /= length;
    y /= length;
    z /= length;
    const float c = std::cos(degrees * RadiansPerDegree), s = std::sin(degrees * RadiansPerDegree);
    const float d = 1 - c;
    return {c + x * x * d,
            y * x * d + z * s,
            z * x * d - y * s,
            0, // columns
            x * y * d - z * s,
            c + y * y * d,
            z * y * d + x * s,
            0,
            x * z * d + y * s,
            y * z * d - x * s,
            c + z * z * d,
            0,
            0,
            0,
            0,
            1};
}

std::array<float, 3> Transformed(const Matrix &matrix, const float (&point)[3]) {
    std::array<float, 3> result;
    for (std::size_t row = 0; row < 3; row++)
        result[row] = matrix[row] * point[0] + matrix[4 + row] * point[1] + matrix[8 + row] * point[2]
                      + matrix[12 + row];
    return result;
}

void PoseObject(const ObjectFile &object, const std::vector<double> &values, float distance,
                std::vector<PosedTriangles> &posed) {
    posed.clear();
    static std::vector<Group> outer; // kept for its memory
    outer.clear();
    Group group;
    bool isCulled = true, isDrawn = true, isInRange = true;
    for (const ObjectCommand &command : object.commands) {
        const std::size_t dataref = static_cast<std::size_t>(command.dataref);
        const bool hasValue = command.dataref >= 0 && dataref < values.size();
        const float value = hasValue ? static_cast<float>(values[dataref]) : 0.0F;
        switch (command.kind) {
        case ObjectCommandKind::Triangles:
            if (isDrawn && isInRange && !group.isHidden && !group.isInHidden && command.count > 0)
                posed.push_back({command.first, command.count, isCulled, command.line, group.place});
            break;
        case ObjectCommandKind::AnimationBegin:
            outer.push_back(group);
            group.isInHidden = group.isInHidden || group.isHidden;
            group.isHidden = false;
            break;
        case ObjectCommandKind::AnimationEnd:
            group = outer.back();
            outer.pop_back();
            break;
        case ObjectCommandKind::Translate:
        case ObjectCommandKind::Rotate: Animate(object, command, value, group.place); break;
        case ObjectCommandKind::Show:
        case ObjectCommandKind::Hide:
            if (value >= command.low && value <= command.high)
                group.isHidden = command.kind == ObjectCommandKind::Hide;
            break;
        case ObjectCommandKind::Culling: isCulled = command.isOn; break;
        case ObjectCommandKind::Drawing: isDrawn = command.isOn; break;
        case ObjectCommandKind::Detail:
            isInRange = distance >= command.low && distance < command.high;
            isCulled = isDrawn = true; // attributes start afresh with each level
            break;
        }
    }
}

std::vector<double> ValuesOf(const ObjectFile &object,
                             const std::function<double(const std::string &name)> &valueOf) {
    std::vector<double> values;
    for (const std::string &name : object.datarefs) values.push_back(valueOf(name));
    return values;
}

std::vector<std::array<float, 3>> PosedPoints(const ObjectFile &object,
                                              const std::vector<PosedTriangles> &posed) {
    std::vector<std::array<float, 3>> points;
    for (const PosedTriangles &triangles : posed) {
        for (int i = triangles.first; i < triangles.first + triangles.count; i++) {
            const int vertex = object.indices[static_cast<std::size_t>(i)];
            points.push_back(
                Transformed(triangles.place, object.vertices[static_cast<std::size_t>(vertex)].position));
        }
    }
    return points;
}

} // namespace simhost
