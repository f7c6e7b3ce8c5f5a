// Signed distances. Exact where it is cheap, else scaled so that stepping along a ray by them never skips a
// wall.
#include "tools/figure/solids.h"

#include <cstdint>

namespace figure_maker {

double Ellipsoid(Vec p, Vec centre, Vec radii) {
    const Vec d = p - centre;
    const Vec scaled = {d.x / radii.x, d.y / radii.y, d.z / radii.z};
    const Vec gradient = {scaled.x / radii.x, scaled.y / radii.y, scaled.z / radii.z};
    const double k = Length(scaled), slope = Length(gradient);
    if (slope < 1e-9) return -std::min({radii.x, radii.y, radii.z});
    return k * (k - 1) / slope;
}

double RoundCone(Vec p, Vec a, Vec b, double radiusA, double radiusB) {
    const Vec along = b - a, from = p - a;
    const double share = std::clamp(Dot(from, along) / Dot(along, along), 0.0, 1.0);
    return Length(from - along * share) - Mix(radiusA, radiusB, share);
}

double Sections(const std::vector<Section> &table, double at, double across, double depth, double power) {
    const double held = std::clamp(at, table.front().at, table.back().at);
    size_t i = 0;
    while (i + 2 < table.size() && held > table[i + 1].at) i++;
    const Section &a = table[i > 0 ? i - 1 : 0], &b = table[i], &c = table[i + 1],
                  &d = table[std::min(i + 2, table.size() - 1)];
    const double t = (held - b.at) / (c.at - b.at);
    // A cubic through b and c, with the slopes of their neighbours.
    const auto curve = [&](double Section::*value) {
        const double span = c.at - b.at;
        const double slopeB =
            a.at < b.at ? (c.*value - a.*value) / (c.at - a.at) * span : c.*value - b.*value;
        const double slopeC =
            c.at < d.at ? (d.*value - b.*value) / (d.at - b.at) * span : c.*value - b.*value;
        const double s = t * t * (3 - 2 * t);
        return Mix(b.*value, c.*value, s) + slopeB * t * (1 - t) * (1 - t) - slopeC * t * t * (1 - t);
    };
    const double half = curve(&Section::half), low = curve(&Section::low), high = curve(&Section::high);
    const double x = std::abs(across) / half, z = std::abs(depth - (low + high) / 2) / ((high - low) / 2);
    const double k = std::pow(std::pow(x, power) + std::pow(z, power), 1 / power);
    const double inside = (k - 1) * std::min(half, (high - low) / 2);
    return at == held ? inside : std::max(inside, std::abs(at - held));
}

double Join(double a, double b, double width) {
    const double h = std::max(width - std::abs(a - b), 0.0) / width;
    return std::min(a, b) - h * h * width * 0.25;
}

double Cut(double a, double b, double width) {
    return -Join(-a, b, width);
}

Vec OutOf(const Solid &solid, Vec p) {
    const double e = 0.0003;
    return Unit({solid(p + Vec{e, 0, 0}) - solid(p - Vec{e, 0, 0}),
                 solid(p + Vec{0, e, 0}) - solid(p - Vec{0, e, 0}),
                 solid(p + Vec{0, 0, e}) - solid(p - Vec{0, 0, e})});
}

double Openness(const Solid &solid, Vec p, Vec normal, double reach) {
    double hidden = 0, weight = 0.5;
    for (int step = 1; step <= 5; step++, weight *= 0.7) {
        const double distance = reach * step / 5;
        hidden += weight * std::clamp(1 - solid(p + normal * distance) / distance, 0.0, 1.0);
    }
    return std::clamp(1 - hidden * 0.62, 0.0, 1.0);
}

namespace {

double Lattice(int x, int y, int z) {
    std::uint32_t h = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U
                      + static_cast<std::uint32_t>(z) * 2147483647U;
    h = (h ^ (h >> 13)) * 1274126177U;
    h ^= h >> 16;
    return static_cast<double>(h & 0xffffU) / 32767.5 - 1;
}

} // namespace

double Noise(Vec p) {
    const double fx = std::floor(p.x), fy = std::floor(p.y), fz = std::floor(p.z);
    const int ix = static_cast<int>(fx), iy = static_cast<int>(fy), iz = static_cast<int>(fz);
    const double x = SmoothStep(0, 1, p.x - fx), y = SmoothStep(0, 1, p.y - fy),
                 z = SmoothStep(0, 1, p.z - fz);
    double layers[2];
    for (int k = 0; k < 2; k++)
        layers[k] = Mix(Mix(Lattice(ix, iy, iz + k), Lattice(ix + 1, iy, iz + k), x),
                        Mix(Lattice(ix, iy + 1, iz + k), Lattice(ix + 1, iy + 1, iz + k), x), y);
    return Mix(layers[0], layers[1], z);
}

double Turbulence(Vec p, int octaves) {
    double sum = 0, weight = 0.5;
    for (int octave = 0; octave < octaves; octave++, weight *= 0.5) {
        sum += weight * Noise(p);
        p = p * 2.03;
    }
    return sum;
}

} // namespace figure_maker
