// Makes the pictures of the position creator under data/png/: body, hand_l, hand_r, btn_8px, fbo, and one of
// each preset. The joints are where the panel has its buttons. Shapes are signed distances in boxels,
// negative inside, which gives smooth edges and lets limbs grow into each other; the presets are the figure's
// own hand, looked at along rays. At the root:
//
//     cmake --preset release && ninja -C build/release make_panel_pictures
//     build/release/tools/make_panel_pictures data/png/
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "figure/position_creator_places.h"
#include "lodepng.h"
#include "tools/figure/parts.h"
#include "tools/figure/poses.h"

namespace {

struct Point {
    double x, y;
};

struct Colour {
    double r, g, b;
};
constexpr Colour Card = {27, 33, 41}, Skin = {70, 84, 100}, Cloth = {46, 57, 71}, Line = {196, 212, 228},
                 Ring = {134, 152, 170}, Gold = {214, 178, 94};

// A picture that covers a part of the panel and is drawn in the panel's coordinates, with more pixels than
// the panel has boxels.
struct Picture {
    static constexpr int Detail = 4; // as gfx/textures.h has it
    int left, top, columns, rows;
    std::vector<unsigned char> pixels;

    Picture(int left, int top, int width, int height)
        : left(left), top(top), columns(Detail * width), rows(Detail * height), pixels(4 * columns * rows) {}

    Point Place(int pixel) const {
        return {left + (pixel % columns + 0.5) / Detail, top + (pixel / columns + 0.5) / Detail};
    }

    // Lays a colour over the picture where coverage(point) is above 0, up to 1.
    template <typename Coverage> void Paint(const Colour &colour, Coverage coverage) {
        PaintEach([&](Point p) { return std::pair(colour, coverage(p)); });
    }

    // The same with a colour for each point.
    template <typename Paints> void PaintEach(Paints paints) {
        for (int i = 0; i < columns * rows; i++) {
            const auto [colour, coverage] = paints(Place(i));
            const double alpha = std::clamp(coverage, 0.0, 1.0);
            if (alpha == 0) continue;
            unsigned char *pixel = &pixels[4 * i];
            const double below = pixel[3] / 255.0 * (1 - alpha), sum = alpha + below;
            const double values[] = {colour.r, colour.g, colour.b};
            for (int c = 0; c < 3; c++)
                pixel[c] =
                    static_cast<unsigned char>(std::lround((values[c] * alpha + pixel[c] * below) / sum));
            pixel[3] = static_cast<unsigned char>(std::lround(255 * sum));
        }
    }

    template <typename Shape> void Fill(const Colour &colour, Shape shape) {
        Paint(colour, [&](Point p) { return 0.5 - shape(p) * Detail; });
    }

    template <typename Shape> void Outline(const Colour &colour, Shape shape, double lineWidth) {
        Paint(colour, [&](Point p) { return 0.5 + (lineWidth / 2 - std::abs(shape(p))) * Detail; });
    }

    void Save(const std::string &path) const {
        if (const unsigned error = lodepng::encode(path, pixels, columns, rows))
            std::fprintf(stderr, "%s: %s\n", path.c_str(), lodepng_error_text(error));
    }
};

Point Joint(int channel) {
    return {ButtonPlaces[channel].x + ButtonSize / 2.0, ButtonPlaces[channel].y - ButtonSize / 2.0};
}

Point Moved(Point p, double x, double y) {
    return {p.x + x, p.y + y};
}

double Circle(Point p, Point centre, double radius) {
    return std::hypot(p.x - centre.x, p.y - centre.y) - radius;
}

// A limb between two joints, of different thickness at its ends.
double Limb(Point p, Point a, double radiusA, Point b, double radiusB) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
    return Circle(p, {a.x + t * dx, a.y + t * dy}, radiusA + t * (radiusB - radiusA));
}

// Both shapes, with the corner between them rounded.
double Joined(double a, double b, double rounding) {
    const double h = std::max(rounding - std::abs(a - b), 0.0) / rounding;
    return std::min(a, b) - h * h * rounding / 4;
}

// The last row is left to the pad below, whose upper edge lies there.
double AboveLastRow(Point p) {
    return p.y - (LeftHandPlace.y - 1);
}

void DrawRings(Picture &picture, int first, int last) {
    for (int channel = first; channel <= last; channel++)
        picture.Outline(
            Ring, [&](Point p) { return Circle(p, Joint(channel), ButtonSize / 2.0 + 2.5); }, 1);
}

// A finger from its first joint to its tip, which lies as far beyond the last joint as that from the middle
// one.
double Finger(Point p, int firstJoint, double rootRadius, double tipRadius) {
    const Point a = Joint(firstJoint), b = Joint(firstJoint + 1), c = Joint(firstJoint + 2);
    const Point tip = {c.x + 0.8 * (c.x - b.x), c.y + 0.8 * (c.y - b.y)};
    const double middle = (rootRadius + tipRadius) / 2;
    return std::min({Limb(p, a, rootRadius, b, middle), Limb(p, b, middle, c, tipRadius),
                     Limb(p, c, tipRadius, tip, tipRadius - 1)});
}

// The back of a hand and its sleeve. side is 1 for the left hand, whose thumb is on the right.
Picture Hand(PanelPlace place, int thumb, double side) {
    Picture picture(place.x, place.y - PictureHeight, PictureWidth, PictureHeight);
    picture.Fill(Card, AboveLastRow);
    const int index = thumb + 3, middle = thumb + 6, ring = thumb + 9, little = thumb + 12;
    const Point wrist = {Joint(middle).x - side * 2, 216};
    const auto hand = [&](Point p) {
        const double fingers = std::min({Finger(p, index, 10, 8), Finger(p, middle, 10, 8.5),
                                         Finger(p, ring, 10, 8), Finger(p, little, 8.5, 6.5)});
        double palm = Limb(p, Moved(Joint(index), 0, 8), 10, Moved(wrist, side * 14, 0), 14);
        for (int knuckle : {middle, ring})
            palm = Joined(palm, Limb(p, Moved(Joint(knuckle), 0, 10), 12, wrist, 16), 8);
        palm =
            Joined(palm, Limb(p, Moved(Joint(little), side * 2, 4), 9, Moved(wrist, -side * 14, 0), 14), 8);
        palm = Joined(palm, Limb(p, Joint(thumb), 13, Moved(wrist, side * 8, -4), 17), 10);
        return Joined(Joined(palm, fingers, 5), Finger(p, thumb, 12, 8), 8);
    };
    const auto sleeve = [&](Point p) {
        return std::max({std::abs(p.x - wrist.x) - 36 - (p.y - 224) * 0.1, 224 - p.y, p.y - 254});
    };
    picture.Fill(Skin, hand);
    picture.Outline(Line, hand, 1.6);
    picture.Fill(Cloth, sleeve);
    for (double y : {231.5, 238.5, 245.5}) // a first officer's
        picture.Fill(Gold, [&](Point p) { return std::max(sleeve(p) + 1, std::abs(p.y - y) - 1.5); });
    picture.Outline(Line, sleeve, 1.6);
    DrawRings(picture, thumb, thumb + 14);
    return picture;
}

Picture Body() {
    Picture picture(BodyPlace.x, BodyPlace.y - PictureHeight, PictureWidth, PictureHeight);
    picture.Fill(Card, AboveLastRow);
    const double middle = Joint(btn_XYZ).x;
    const auto head = [&](Point p) { return Limb(p, {middle, 14}, 11.5, {middle, 21}, 9.5); };
    const auto neck = [&](Point p) { return Limb(p, {middle, 28}, 6, {middle, 42}, 8); };
    const auto hand = [&](Point p, int arm, double side) {
        const Point wrist = Joint(arm + 2);
        const double thumb = Limb(p, Moved(wrist, 2 * side, 6), 3, Moved(wrist, 7 * side, 15), 2.5);
        return Joined(Limb(p, wrist, 5.5, Moved(wrist, 0, 12), 6), thumb, 3);
    };
    const auto hands = [&](Point p) { return std::min(hand(p, btn_HAND1_r, 1), hand(p, btn_HAND1_l, -1)); };
    const auto limb = [](Point p, int first, double thickness) { // through three joints
        return std::min(Limb(p, Joint(first), thickness + 3, Joint(first + 1), thickness + 1),
                        Limb(p, Joint(first + 1), thickness + 1, Joint(first + 2), thickness - 0.5));
    };
    const auto arms = [&](Point p) { return std::min(limb(p, btn_HAND1_r, 7), limb(p, btn_HAND1_l, 7)); };
    const auto legs = [&](Point p) { return std::min(limb(p, btn_LEG1_r, 7.5), limb(p, btn_LEG1_l, 7.5)); };
    const auto feet = [&](Point p) {
        const Point right = Joint(btn_LEG3_r), left = Joint(btn_LEG3_l);
        return std::min(Limb(p, right, 6, Moved(right, -5, 7), 6), Limb(p, left, 6, Moved(left, 5, 7), 6));
    };
    const auto trunk = [&](Point unmirrored) {
        const Point p = {middle - std::abs(unmirrored.x - middle), unmirrored.y}; // both halves are alike
        double shape = Limb(p, {middle - 5, 47}, 8, Moved(Joint(btn_HAND1_r), 3, -6), 11);
        shape = Joined(shape, Limb(p, {middle - 7, 66}, 16, {middle - 3, 110}, 13), 12);
        return Joined(shape, Limb(p, {middle - 3, 118}, 15, {middle - 8, 146}, 14), 12);
    };
    const auto suit = [&](Point p) { return Joined(Joined(trunk(p), arms(p), 5), legs(p), 5); };
    const auto draw = [&](const Colour &colour, const auto &shape) {
        picture.Fill(colour, shape);
        picture.Outline(Line, shape, 1.6);
    };
    draw(Cloth, feet);
    draw(Skin, hands);
    draw(Skin, neck);
    draw(Cloth, suit);
    draw(Skin, head);
    for (int channel = 0; channel < ButtonCount; channel++)
        if (channel < btn_F11_L || (channel > btn_F53_L && channel < btn_F11_R) || channel > btn_F53_R)
            DrawRings(picture, channel, channel);
    return picture;
}

Picture Button() {
    Picture picture(0, 0, ButtonSize, ButtonSize);
    const Point centre = {ButtonSize / 2.0, ButtonSize / 2.0};
    picture.Fill({20, 26, 34}, [&](Point p) { return Circle(p, centre, ButtonSize / 2.0); });
    picture.Fill({255, 255, 255}, [&](Point p) { return Circle(p, centre, ButtonSize / 2.0 - 1); });
    return picture;
}

// ---- Presets ----

using rig::Vec;

const int PresetSide = 28; // boxels
const Colour Light = {226, 196, 172};

// Her right hand in the shape of a preset, in the hand's own axes: -z along it, y out of its back.
struct HandModel {
    const rig::Body &body = rig::Woman();
    rig::Frames frames = {};

    explicit HandModel(const figure_maker::HandShape &shape) {
        rig::Pose pose{};
        figure_maker::SetHandShape(pose, shape.name, true);
        frames = rig::CarriedFrames(body, pose);
    }

    double Distance(Vec p) const {
        const double wrist = figure_maker::RoundCone(p, {0, -0.004, 0.012}, {0, -0.006, 0.09}, 0.021, 0.024);
        const Vec place = rig::ToWorld(rig::HandFrame(body, true), p);
        return figure_maker::Join(figure_maker::HandSolid(body, frames, place), wrist, 0.02);
    }

    Vec Normal(Vec p) const {
        return figure_maker::OutOf([this](Vec q) { return Distance(q); }, p);
    }
};

// Fingers up, seen from the palm's side and from the thumb, so that it shows what is bent; a dark line where
// the hand ends against the card.
Picture Preset(const figure_maker::HandShape &shape) {
    Picture picture(0, 0, PresetSide, PresetSide);
    const HandModel hand(shape);
    const Vec forward = rig::Unit({0.62, 0.70, 0.22}),
              up = rig::Unit(rig::Cross(rig::Cross(forward, {0, 0, -1}), forward));
    const Vec right = rig::Cross(forward, up), light = rig::Unit(right * -0.5 + up * 0.7 - forward * 0.8);
    const Vec middle = {0.0, -0.012, -0.085};
    const double metresPerBoxel = 0.205 / PresetSide, pixel = metresPerBoxel / Picture::Detail;
    picture.PaintEach([&](Point p) {
        const Vec start = middle + right * ((p.x - PresetSide / 2.0) * metresPerBoxel)
                          + up * ((PresetSide / 2.0 - p.y) * metresPerBoxel) - forward * 0.3;
        double nearest = 1, depth = 0;
        for (int step = 0; step < 90 && depth < 0.6; step++) {
            const double distance = hand.Distance(start + forward * depth);
            nearest = std::min(nearest, distance);
            if (distance < 0.0002) break;
            depth += 0.8 * distance;
        }
        const double coverage = 0.5 - (nearest - 0.0006) / pixel;
        if (nearest > 0.0004) return std::pair(Colour{12, 16, 20}, coverage);
        const Vec hit = start + forward * depth, normal = hand.Normal(hit);
        const double facing = -rig::Dot(normal, forward);
        const double open = std::clamp(hand.Distance(hit + normal * 0.012) / 0.012, 0.35, 1.0);
        const double bright = (0.30 + 0.70 * std::max(0.0, rig::Dot(normal, light))) * open
                              * std::clamp(facing / 0.35, 0.30, 1.0);
        return std::pair(Colour{Light.r * bright, Light.g * bright, Light.b * bright}, 1.0);
    });
    return picture;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_panel_pictures FOLDER/\n");
        return 2;
    }
    const std::string folder = argv[1];
    Hand(LeftHandPlace, btn_F11_L, 1).Save(folder + "hand_l.png");
    Body().Save(folder + "body.png");
    Hand(RightHandPlace, btn_F11_R, -1).Save(folder + "hand_r.png");
    Button().Save(folder + "btn_8px.png");
    Picture(0, 0, 4, 4).Save(folder + "fbo.png"); // nothing: offscreen buffers take its place
    for (const figure_maker::HandShape &shape : figure_maker::HandShapes())
        Preset(shape).Save(folder + "preset_" + shape.name + ".png");
}
