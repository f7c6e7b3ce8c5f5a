// Everything is made of boxes with rounded edges: the points of a sphere, its eight parts moved apart. Their
// colours are the pixels of a picture one pixel high.
#include "simhost/drawing/cockpit_background.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "simhost/drawing/gl_context.h"

namespace simhost {

namespace {

enum Paint { Cloth, Shell, FloorPaint, Wall, Frame, Panel, PaintCount };

constexpr unsigned char Paints[PaintCount][3] = {{104, 113, 130}, {150, 150, 150}, {104, 100, 96},
                                                 {196, 194, 188}, {150, 150, 148}, {84, 86, 92}};

ObjectPicture PaintPicture() {
    ObjectPicture picture{PaintCount, 1, {}};
    for (const auto &paint : Paints) {
        picture.pixels.insert(picture.pixels.end(), std::begin(paint), std::end(paint));
        picture.pixels.push_back(255);
    }
    return picture;
}

struct Box {
    float centre[3], half[3]; // metres
    float radius;             // of the edges
    Paint paint;
    float leaning = 0; // degrees about x, the top aft
};

// An even number, so that none lies in the middle, where the parts come apart.
constexpr int PointsInRow = 8;

void AddPoint(ObjectFile &file, const Box &box, const float (&direction)[3]) {
    const float length = std::hypot(direction[0], direction[1], direction[2]);
    float normal[3], point[3];
    for (int i = 0; i < 3; i++) {
        normal[i] = direction[i] / length;
        point[i] = std::copysign(box.half[i] - box.radius, direction[i]) + box.radius * normal[i];
    }
    const Matrix turned = Rotation(1, 0, 0, box.leaning);
    const auto placed = Transformed(Translation(box.centre[0], box.centre[1], box.centre[2]) * turned, point);
    const auto outward = Transformed(turned, normal);
    const float s = (static_cast<float>(box.paint) + 0.5F) / static_cast<float>(PaintCount);
    file.vertices.push_back(
        {{placed[0], placed[1], placed[2]}, {outward[0], outward[1], outward[2]}, {s, 0.5F}});
}

void AddFace(ObjectFile &file, const Box &box, int axis, float side) {
    const int first = static_cast<int>(file.vertices.size());
    for (int row = 0; row < PointsInRow; row++) {
        for (int column = 0; column < PointsInRow; column++) {
            float direction[3];
            const auto part = [](int i) { return 2 * static_cast<float>(i) / (PointsInRow - 1) - 1; };
            direction[axis] = side;
            direction[(axis + 1) % 3] = part(column);
            direction[(axis + 2) % 3] = part(row);
            AddPoint(file, box, direction);
        }
    }
    for (int row = 0; row + 1 < PointsInRow; row++) {
        for (int column = 0; column + 1 < PointsInRow; column++) {
            const int a = first + row * PointsInRow + column, b = a + 1, c = a + PointsInRow, d = c + 1;
            const int clockwise[] = {a, c, b, b, c, d}, other[] = {a, b, c, b, d, c};
            const int(&corners)[6] = side > 0 ? clockwise : other;
            file.indices.insert(file.indices.end(), std::begin(corners), std::end(corners));
        }
    }
}

template <int count> DrawnObject MakeObject(const Box (&boxes)[count]) {
    DrawnObject object;
    for (const Box &box : boxes) {
        for (int axis = 0; axis < 3; axis++) {
            AddFace(object.file, box, axis, 1);
            AddFace(object.file, box, axis, -1);
        }
    }
    const int indexCount = static_cast<int>(object.file.indices.size());
    object.file.commands.push_back({.kind = ObjectCommandKind::Triangles, .count = indexCount});
    object.picture = PaintPicture();
    return object;
}

struct Shade {
    float height; // over the horizon, in heights of the picture
    float red, green, blue;
};

constexpr Shade Shades[] = {{-3.00F, 0.36F, 0.44F, 0.36F}, {-0.30F, 0.52F, 0.60F, 0.52F},
                            {-0.02F, 0.76F, 0.82F, 0.82F}, {0.02F, 0.88F, 0.92F, 0.95F},
                            {0.40F, 0.58F, 0.74F, 0.92F},  {3.00F, 0.24F, 0.42F, 0.70F}};

} // namespace

DrawnObject MakeSeat() {
    return MakeObject({Box{{0, -0.06F, -0.06F}, {0.25F, 0.06F, 0.27F}, 0.05F, Cloth},
                       Box{{0, 0.29F, 0.235F}, {0.24F, 0.36F, 0.06F}, 0.055F, Cloth, 7},
                       Box{{0, 0.77F, 0.29F}, {0.13F, 0.09F, 0.045F}, 0.04F, Cloth, 7},
                       Box{{0, -0.15F, -0.01F}, {0.23F, 0.03F, 0.24F}, 0.02F, Shell},
                       Box{{0, -0.29F, 0.02F}, {0.14F, 0.13F, 0.16F}, 0.02F, Shell}});
}

DrawnObject MakeCockpitRoom() {
    return MakeObject({Box{{-0.3F, -0.44F, 0}, {1.2F, 0.02F, 2}, 0.01F, FloorPaint},
                       // the right side up to the sill, the posts of its window, the edge of the roof
                       Box{{0.62F, -0.06F, 0}, {0.06F, 0.38F, 2}, 0.03F, Wall},
                       Box{{0.62F, 0.62F, -0.62F}, {0.03F, 0.40F, 0.04F}, 0.02F, Frame, -18},
                       Box{{0.62F, 0.62F, 0.34F}, {0.03F, 0.40F, 0.06F}, 0.02F, Frame},
                       Box{{0.60F, 0.98F, 0}, {0.09F, 0.07F, 2}, 0.05F, Wall},
                       Box{{0.62F, 0.62F, 1.2F}, {0.05F, 0.40F, 0.84F}, 0.03F, Wall},
                       // the wall behind
                       Box{{-1.1F, 0.30F, 1.3F}, {1.8F, 0.75F, 0.03F}, 0.02F, Wall},
                       // the panel and its glareshield
                       Box{{-0.3F, 0.0F, -1.02F}, {0.98F, 0.34F, 0.10F}, 0.03F, Panel, -8},
                       Box{{-0.3F, 0.35F, -1.02F}, {0.98F, 0.03F, 0.20F}, 0.03F, Panel}});
}

void DrawSky(float horizon, int width, int height) {
    glBegin(GL_QUAD_STRIP);
    for (const Shade &shade : Shades) {
        const float y = (horizon + shade.height) * static_cast<float>(height);
        glColor3f(shade.red, shade.green, shade.blue);
        glVertex2f(0, y);
        glVertex2f(static_cast<float>(width), y);
    }
    glEnd();
}

} // namespace simhost
