// Points, directions and rigid transforms for the figure. Metres; x right, y up, z aft.
#pragma once

#include <algorithm>
#include <cmath>

namespace rig {

struct Vec {
    double x = 0, y = 0, z = 0;
};

inline Vec operator+(Vec a, Vec b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec operator-(Vec a, Vec b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec operator*(Vec a, double s) {
    return {a.x * s, a.y * s, a.z * s};
}
inline double Dot(Vec a, Vec b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec Cross(Vec a, Vec b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(Vec a) {
    return std::sqrt(Dot(a, a));
}
// The zero vector stays as it is.
inline Vec Unit(Vec a) {
    const double length = Length(a);
    return length > 0 ? a * (1 / length) : a;
}
inline Vec Mix(Vec a, Vec b, double share) {
    return a + (b - a) * share;
}
inline double Mix(double a, double b, double share) {
    return a + (b - a) * share;
}
// 0 below low, 1 above high, smooth between.
inline double SmoothStep(double low, double high, double value) {
    const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}
inline Vec MirrorX(Vec a) {
    return {-a.x, a.y, a.z};
}

const double Degree = 3.14159265358979323846 / 180;

// A vector turned about a unit axis, right-handed.
inline Vec Turn(Vec v, Vec axis, double degrees) {
    const double c = std::cos(degrees * Degree), s = std::sin(degrees * Degree);
    return v * c + Cross(axis, v) * s + axis * (Dot(axis, v) * (1 - c));
}

// Right-handed axes of unit length, and an origin: where a part sits.
struct Frame {
    Vec origin, x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
};

inline Vec ToWorldDirection(const Frame &frame, Vec v) {
    return frame.x * v.x + frame.y * v.y + frame.z * v.z;
}
inline Vec ToWorld(const Frame &frame, Vec p) {
    return frame.origin + ToWorldDirection(frame, p);
}
inline Vec ToLocal(const Frame &frame, Vec p) {
    const Vec d = p - frame.origin;
    return {Dot(frame.x, d), Dot(frame.y, d), Dot(frame.z, d)};
}

// Axes whose -z is the direction, and whose y is as near to up as can be.
inline Frame FrameAlong(Vec origin, Vec direction, Vec up) {
    const Vec z = Unit(direction * -1);
    const Vec x = Unit(Cross(up, z));
    return {origin, x, Cross(z, x), z};
}

} // namespace rig
