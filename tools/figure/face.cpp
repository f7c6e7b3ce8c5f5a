// What moves in the face, and glasses. Lids are pieces of balls a little larger than the eye's, which leave
// the socket's skin where a lid's fold is; lids stand ready in two states and lips in four, one of which is
// shown.
#include "tools/figure/paints.h"
#include "tools/figure/parts.h"

namespace figure_maker {

namespace {

const double EyeRadius = 13.4; // millimetres of the head
Vec EyeCentre(const Body &body) {
    return OnHead(body, 31.5, 4, 72.3);
}

// A direction from the eye: degrees outwards and upwards, forward at 0, 0. For the right eye.
Vec FromEye(double outwards, double upwards) {
    const double a = outwards * Degree, e = upwards * Degree;
    return {std::sin(a) * std::cos(e), std::sin(e), -std::cos(a) * std::cos(e)};
}

Texel PaintEye(const Body &body, const Look &look, const SkinPoint &point) {
    const Vec d = Unit(point.position - EyeCentre(body));
    const double angle = std::acos(std::clamp(Dot(d, FromEye(0, 0)), -1.0, 1.0)) / Degree;
    const double around = std::atan2(d.y, d.x);
    Texel texel;
    Vec color = Mix(Color(232, 228, 224), Color(214, 176, 168), SmoothStep(38, 70, angle));
    const double rays =
        Noise({around * 9, angle * 0.05, 0}) * 0.5 + Noise({around * 20, angle * 0.1, 5}) * 0.3;
    Vec iris = Mix(look.iris, look.iris * 0.62, SmoothStep(12, 24, angle)) * (1 + 0.35 * rays);
    iris = Mix(iris, Color(28, 24, 22), SmoothStep(22.5, 26, angle));
    color = Mix(iris, color, SmoothStep(25.5, 28, angle));
    color = Mix(Color(8, 7, 7), color, SmoothStep(9.5, 11.5, angle));
    // The lid's shadow, and the window's light.
    color = color * (1 - 0.35 * SmoothStep(4, 30, std::asin(d.y) / Degree));
    const Vec light = FromEye(-9, 13);
    color = Mix(color, Color(255, 255, 255),
                0.9 * (1 - SmoothStep(2.5, 4.5, std::acos(std::min(1.0, Dot(d, light))) / Degree)));
    texel.color = color;
    texel.gloss = 0.9;
    return texel;
}

const double UpperCorner = -2; // where both lids meet, degrees

// The free edge of a lid, degrees upwards, at -1 (nose) to 1.
double LidEdge(double across, bool isUpper, bool isOpen) {
    const double arch = std::sqrt(std::max(0.0, 1 - std::pow(std::abs(across), 2.2)));
    const double corner = UpperCorner + 3 * across; // the outer corner stands higher
    if (!isUpper) return corner - 21 * arch * (1 + 0.1 * across);
    return isOpen ? corner + 20.5 * arch * (1 - 0.12 * across) : corner - 19 * arch * (1 + 0.1 * across);
}

Texel PaintLid(const Tone &tone, bool isMan, bool isUpper, const SkinPoint &point) {
    Texel texel = Skin(point, tone, 0.12);
    const double edge = point.v; // 1 at the free edge
    texel.color = Mix(texel.color, tone.blood * 0.75, isUpper ? (isMan ? 0.10 : 0.18) : 0.05);
    if (isUpper)
        texel.color = Mix(texel.color, Color(24, 15, 12),
                          (isMan ? 0.75 : 1.0) * SmoothStep(isMan ? 0.94 : 0.91, isMan ? 0.98 : 0.965, edge));
    else
        texel.color = Mix(texel.color, tone.blood * 0.4, (isMan ? 0.4 : 0.7) * SmoothStep(0.86, 0.98, edge));
    texel.color = texel.color * (1 - 0.2 * SmoothStep(0.25, 0.0, edge));
    return texel;
}

Grid LidSkin(const Body &body, bool isUpper, bool isOpen) {
    const double reach = 66; // degrees to both corners
    const auto at = [=](double u, double v) {
        const double across = u * 2 - 1;
        const double root = isUpper ? 78 : -72;
        const double edge = LidEdge(across, isUpper, isOpen);
        const double up = Mix(root, edge, v);
        // Thicker towards the free edge, and lashes reach out of the upper lid.
        const double radius = EyeRadius + 0.9 + (isUpper ? 2.6 * SmoothStep(0.9, 1.0, v) : 0.3 * v);
        const double lash = isUpper ? -4 * SmoothStep(0.9, 1.0, v) : 0;
        return EyeCentre(body) + FromEye(across * reach, up + lash) * (radius * 0.001 * body.measures.head);
    };
    return Sheet(11, 6, at, [&](Vec p) { return p - EyeCentre(body); });
}

// The first look with a tone; lips of the others with it are the same.
const Look &FirstLook(const Body &body, const Tone &tone) {
    int index = 0;
    while (!(LooksWith(body, tone) & 1 << index)) index++;
    return LookOf(body, index);
}

void AddEyes(Surfaces &surfaces, const Body &body, int look) {
    const Vec centre = EyeCentre(body);
    Surface eye;
    eye.joint = Head;
    eye.looks = 1 << look;
    eye.chart = ChartOf(body, look, "eye");
    eye.width = 88;
    eye.height = 88;
    eye.paint = [&body, look](const SkinPoint &point) { return PaintEye(body, LookOf(body, look), point); };
    eye.turnsWithEyes = true;
    eye.eyeCentre = centre;
    eye.grid = Sheet(
        8, 6,
        [&](double u, double v) {
            return centre
                   + FromEye((u - 0.5) * 170, (v - 0.5) * 90) * (EyeRadius * 0.001 * body.measures.head);
        },
        [&](Vec p) { return p - centre; });
    surfaces.push_back(eye);
    surfaces.push_back(Mirror(eye));
}

void AddLids(Surfaces &surfaces, const Body &body, const Tone &tone) {
    for (int state = 0; state < 3; state++) {
        const bool isUpper = state < 2, isOpen = state == 0;
        Surface lid;
        lid.joint = Head;
        lid.looks = LooksWith(body, tone);
        lid.shown = !isUpper ? Shown::Always : isOpen ? Shown::EyesOpen : Shown::EyesClosed;
        lid.chart =
            std::string(body.isMan ? "his " : "her ") + (isUpper ? "upper lid " : "lower lid ") + tone.name;
        lid.width = 120;
        lid.height = 72;
        lid.paint = [&body, &tone, isUpper](const SkinPoint &point) {
            return PaintLid(tone, body.isMan, isUpper, point);
        };
        lid.grid = LidSkin(body, isUpper, isOpen);
        HideWhere(lid, [&](Vec p) { return HeadSolid(body, p) < -0.003; });
        surfaces.push_back(lid);
        surfaces.push_back(Mirror(lid));
    }
}

// ---- Mouth ----

// Millimetres of the head.
const double MouthUp = -57.5;
struct Mouth {
    double half, upper, lower; // half its width, how tall the lips are
};
Mouth MouthOf(const Body &body) {
    return body.isMan ? Mouth{26.5, 4.0, 5.8} : Mouth{25, 5.2, 7.0};
}

// How a mouth says something.
struct MouthShape {
    Shown shown;
    double opening;  // millimetres between the lips
    double width;    // share of its width at rest
    double pout = 0; // millimetres forward
};
const MouthShape MouthShapes[] = {{Shown::LipsClosed, 0, 1},
                                  {Shown::LipsOpen, 6.5, 1},
                                  {Shown::LipsNarrow, 2.6, 1.02},
                                  {Shown::LipsRound, 5.2, 0.76, 1.6}};

// The line between the lips at -1 to 1, moved down by so many millimetres in the middle.
Vec OnMouthLine(const Body &body, double across, double down, double width) {
    const double side = across * MouthOf(body).half * width;
    const double up = MouthUp + 2.4 * across * across - 0.9 * std::exp(-std::pow(across / 0.28, 2))
                      - down * (1 - across * across);
    return OnHead(body, side, up, 0);
}

// Where the face's skin is, in front of a place.
Vec OnFace(const Body &body, Vec p, double lift) {
    const Vec from = {p.x, p.y, body.headCentre.z - 0.04};
    const Vec skin = Leave([&](Vec q) { return HeadSolid(body, q); }, from, {0, 0, -1}, 0.2);
    return skin + Vec{0, 0, -0.001 * lift};
}

Texel PaintLip(const Look &look, const SkinPoint &point) {
    Texel texel;
    const double lines = Noise({point.u * 46, point.v * 1.5, 0});
    const Vec color = look.lip * (1 + 0.05 * lines);
    const double rim =
        SmoothStep(0.0, 0.22, point.v) * SmoothStep(0, 0.04, point.u) * SmoothStep(0, 0.04, 1 - point.u);
    texel.color = Mix(look.tone.skin * 0.93, color, rim);
    texel.color = texel.color * (1 - 0.55 * SmoothStep(0.84, 1.0, point.v)); // the line where they meet
    texel.height = 0.00012 * lines;
    texel.gloss = 0.4;
    return texel;
}

// From the outer edge (v = 0) to where both lips meet.
Grid LipSkin(const Body &body, bool isUpper, const MouthShape &shape) {
    const Mouth mouth = MouthOf(body);
    const auto at = [=](double u, double v) {
        const double across = u * 2 - 1;
        const double taper = std::pow(std::max(0.0, 1 - across * across), 0.75);
        const double bow = isUpper ? 0.8 * std::exp(-std::pow((std::abs(across) - 0.24) / 0.2, 2))
                                         - 0.9 * std::exp(-std::pow(across / 0.12, 2))
                                   : 0;
        const double tall = (isUpper ? mouth.upper + bow : mouth.lower) * taper;
        const double shift = isUpper ? -shape.opening * 0.25 : shape.opening * 0.75;
        const Vec line = OnMouthLine(body, across, shift, shape.width);
        const Vec place = line + Vec{0, (isUpper ? 1 : -1) * tall * (1 - v) * 0.001, 0};
        const double round = std::sin(std::min(1.0, v * 1.12) * 2.5);
        const double lift = -0.5 + shape.pout * taper + (isUpper ? 1.8 : 2.4) * taper * std::max(0.0, round)
                            - 0.3 * SmoothStep(0.85, 1, v);
        return OnFace(body, place, lift);
    };
    return Sheet(shape.opening == 0 ? 11 : 9, 4, at, [isUpper](Vec) {
        return Vec{0, isUpper ? -0.15 : 0.15, -1};
    });
}

// The dark between open lips, with a row of teeth.
Texel PaintMouth(const SkinPoint &point) {
    Texel texel;
    const double tooth = 0.85 + 0.15 * SmoothStep(0.02, 0.12, std::abs(std::fmod(point.u * 9, 1.0) - 0.5));
    texel.color = Mix(Color(58, 18, 18), Color(226, 218, 206) * tooth,
                      SmoothStep(0.50, 0.56, point.v) * SmoothStep(0.12, 0.3, point.u)
                          * SmoothStep(0.12, 0.3, 1 - point.u));
    texel.gloss = 0.4;
    return texel;
}

void AddLips(Surfaces &surfaces, const Body &body, const Tone &tone) {
    const int looks = LooksWith(body, tone);
    const Look &first = FirstLook(body, tone);
    for (const MouthShape &shape : MouthShapes) {
        for (bool isUpper : {true, false}) {
            Surface lip;
            lip.joint = Head;
            lip.looks = looks;
            lip.shown = shape.shown;
            lip.chart = std::string(body.isMan ? "his " : "her ") + (isUpper ? "upper lip " : "lower lip ")
                        + tone.name;
            lip.width = 140;
            lip.height = 44;
            lip.paint = [&first](const SkinPoint &point) { return PaintLip(first, point); };
            lip.grid = LipSkin(body, isUpper, shape);
            surfaces.push_back(lip);
        }
        if (shape.opening == 0) continue;
        Surface inside;
        inside.joint = Head;
        inside.looks = looks;
        inside.shown = shape.shown;
        inside.chart = "mouth";
        inside.width = 90;
        inside.height = 30;
        inside.paint = PaintMouth;
        inside.grid = Sheet(
            7, 2,
            [&](double u, double v) {
                const double down = Mix(shape.opening * 0.92, -shape.opening * 0.38, v);
                return OnFace(body, OnMouthLine(body, u * 2 - 1, down, shape.width), 0.5);
            },
            [](Vec) {
                return Vec{0, 0, -1};
            });
        surfaces.push_back(inside);
    }
}

// ---- Glasses ----

// A closed tube along a line.
Grid Tube(const std::function<Vec(double)> &line, double radius, int columns, int rows, Vec up) {
    const auto at = [=](double u, double v) {
        const Vec along = Unit(line(std::min(v + 0.01, 1.0)) - line(std::max(v - 0.01, 0.0)));
        const Vec side = Unit(Cross(along, up)), top = Cross(side, along);
        const double a = u * 360 * Degree;
        return line(v) + (side * std::cos(a) + top * std::sin(a)) * radius;
    };
    Grid grid = Sheet(columns, rows, at, [](Vec) { return Vec{0, 1, 0}; });
    for (int row = 0; row < rows; row++)
        for (int column = 0; column < columns; column++) {
            const size_t i = static_cast<size_t>(row * columns + column);
            grid.normals[i] = Unit(grid.positions[i] - line(static_cast<double>(row) / (rows - 1)));
        }
    return grid;
}

// The rim of the right lens. The lenses themselves are clear and not modelled: the eyes stay in sight.
Vec OnRim(const Body &body, double turn) {
    const double a = turn * 360 * Degree;
    const double x = std::cos(a), y = std::sin(a);
    const double side = 33 + 24.5 * x, up = 2 + (y > 0 ? 15 : 18) * y;
    return OnHead(body, side, up, 101 - 0.0066 * side * side + 0.05 * up);
}

void AddGlasses(Surfaces &surfaces, const Body &body, int look) {
    const Look &row = LookOf(body, look);
    const double radius = row.rim * 0.001;
    Surface frame;
    frame.joint = Head;
    frame.looks = 1 << look;
    frame.shown = Shown::WithGlasses;
    frame.chart = ChartOf(body, look, "glasses");
    frame.width = 8;
    frame.height = 8;
    frame.paint = [color = row.glasses](const SkinPoint &) { return Texel{color, 0, 0.8}; };
    frame.grid = Tube([&](double v) { return OnRim(body, v); }, radius, 4, 17, {0, 0, 1});
    surfaces.push_back(frame);
    surfaces.push_back(Mirror(frame));
    const auto temple = [&](double v) {
        return OnHead(body, Mix(57.5, 78, std::min(1.0, v * 2)), Mix(8, 12, v), Mix(80, 1, v));
    };
    frame.grid = Tube(temple, radius, 4, 3, {0, 1, 0.1});
    surfaces.push_back(frame);
    surfaces.push_back(Mirror(frame));
    frame.grid =
        Tube([&](double v) { return OnHead(body, (v - 0.5) * 17, 9 + 2 * std::sin(v * 180 * Degree), 102); },
             radius, 4, 4, {0, 1, 0});
    surfaces.push_back(frame);
}

} // namespace

void AddFace(Surfaces &surfaces, const Body &body) {
    for (const Tone *tone : {&LightTone(), &DarkTone()}) {
        AddLids(surfaces, body, *tone);
        AddLips(surfaces, body, *tone);
    }
    for (int look = 0; look < LookCount; look++) {
        AddEyes(surfaces, body, look);
        AddGlasses(surfaces, body, look);
    }
}

} // namespace figure_maker
