// Every joint is a pair of moves around turns about the cockpit's axes, nested as the joints are; each holds
// one run of triangles, and more only for what is shown and hidden.
#include "tools/figure/object_file.h"

#include <cstdio>

namespace figure_maker {

namespace {

struct Mesh {
    std::string vertices;
    std::vector<int> indices;
    int vertexCount = 0;
};

struct Writer {
    const std::vector<Surface> &surfaces;
    const Atlas &atlas;
    Mesh mesh;
    std::string commands;
};

// "-0.0000" and "0.0000" must not differ from machine to machine.
double Tidy(double value) {
    return std::abs(value) < 0.00005 ? 0 : value;
}

template <typename... Values> std::string Line(const char *format, Values... values) {
    char text[256];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

// Clockwise from outside: the cross product of two edges points inwards.
void AddTriangle(const Grid &grid, int base, int a, int b, int c, std::vector<int> &indices) {
    const auto at = [](int i) { return static_cast<size_t>(i); };
    const Vec normal =
        Cross(grid.positions[at(b)] - grid.positions[at(a)], grid.positions[at(c)] - grid.positions[at(a)]);
    if (Length(normal) < 1e-10) return; // at a pole
    const Vec outwards = grid.normals[at(a)] + grid.normals[at(b)] + grid.normals[at(c)];
    if (Dot(normal, outwards) > 0) std::swap(b, c);
    for (int index : {a, b, c}) indices.push_back(base + index);
}

void AddSurface(Writer &writer, const Surface &surface) {
    const Grid &grid = surface.grid;
    Mesh &mesh = writer.mesh;
    const Chart &chart = writer.atlas.charts.at(surface.chart);
    for (int row = 0; row < grid.rows; row++)
        for (int column = 0; column < grid.columns; column++) {
            const size_t i = static_cast<size_t>(row * grid.columns + column);
            double s = 0, t = 0;
            TextureCoordinates(writer.atlas, chart, static_cast<double>(column) / (grid.columns - 1),
                               static_cast<double>(row) / (grid.rows - 1), s, t);
            const Vec p = grid.positions[i], n = grid.normals[i];
            mesh.vertices += Line("VT %.4f %.4f %.4f %.3f %.3f %.3f %.4f %.4f\n", Tidy(p.x), Tidy(p.y),
                                  Tidy(p.z), Tidy(n.x), Tidy(n.y), Tidy(n.z), s, t);
        }
    for (int row = 0; row + 1 < grid.rows; row++)
        for (int column = 0; column + 1 < grid.columns; column++) {
            const int a = row * grid.columns + column, b = a + 1, c = a + grid.columns, d = c + 1;
            AddTriangle(grid, mesh.vertexCount, a, b, c, mesh.indices);
            AddTriangle(grid, mesh.vertexCount, b, d, c, mesh.indices);
        }
    mesh.vertexCount += grid.columns * grid.rows;
}

// One run of the triangles of all surfaces that the test accepts.
template <typename Test> bool AddTriangles(Writer &writer, Test isWanted) {
    const size_t first = writer.mesh.indices.size();
    for (const Surface &surface : writer.surfaces)
        if (isWanted(surface)) AddSurface(writer, surface);
    const size_t count = writer.mesh.indices.size() - first;
    if (count) writer.commands += Line("TRIS %d %d\n", static_cast<int>(first), static_cast<int>(count));
    return count > 0;
}

void AddMove(Writer &writer, Vec by) {
    const double x = Tidy(by.x), y = Tidy(by.y), z = Tidy(by.z);
    writer.commands += Line("ANIM_trans %.4f %.4f %.4f %.4f %.4f %.4f 0 0 none\n", x, y, z, x, y, z);
}

struct TurnKey {
    double value, degrees;
};

void AddTurn(Writer &writer, Vec axis, const std::string &dataref, const std::vector<TurnKey> &keys) {
    writer.commands +=
        Line("ANIM_rotate_begin %.5f %.5f %.5f ", Tidy(axis.x), Tidy(axis.y), Tidy(axis.z)) + dataref + "\n";
    for (const TurnKey &key : keys)
        writer.commands += Line("ANIM_rotate_key %g %g\n", key.value, key.degrees);
    writer.commands += "ANIM_rotate_end\n";
}

// Degrees as they are between the limits. Beyond the outer keys a simulator goes on along the last segment,
// which is level here.
std::vector<TurnKey> Limited(double low, double high) {
    return {{low - 1, low}, {low, low}, {high, high}, {high + 1, high}};
}

// The plug-in publishes 360 until the eyes begin to wander, so a whole turn is none.
std::vector<TurnKey> EyeKeys(double limit) {
    return {{-limit - 1, -limit}, {-limit, -limit}, {limit, limit}, {359, limit}, {360, 0}, {361, 0}};
}

const char *const Everything = "-1000000 1000000";

// The values of "kv/fo/_face": 0 eyes open, 1 lips open, 2 both open, 3 both closed. Any other is like 0:
// lids and lips are shown always.
struct ShownWhile {
    Shown shown;
    const char *dataref;
    std::vector<const char *> ranges; // shown within, else hidden
};
const ShownWhile ShownWhiles[] = {
    {Shown::EyesOpen, "kv/fo/_face", {"-1000000 0.5", "1.5 2.5", "3.5 1000000"}},
    {Shown::EyesClosed, "kv/fo/_face", {"0.5 1.5", "2.5 3.5"}},
    {Shown::LipsOpen, "kv/fo/_face", {"0.5 2.5"}},
    {Shown::LipsClosed, "kv/fo/_face", {"-1000000 0.5", "2.5 1000000"}},
    {Shown::WithGlasses, "kv/fo/_glass", {"1 1"}},
    {Shown::WithTablet, "kv/fo/_planshet", {"1 1"}},
};

void AddShow(Writer &writer, const char *dataref, const std::vector<const char *> &ranges) {
    writer.commands += std::string("ANIM_hide ") + Everything + " " + dataref + "\n";
    for (const char *range : ranges)
        writer.commands += std::string("ANIM_show ") + range + " " + dataref + "\n";
}

void AddEye(Writer &writer, int joint, Vec centre) {
    writer.commands += "ANIM_begin\n";
    AddMove(writer, centre);
    AddTurn(writer, {0, 1, 0}, "kv/fo/_eyes_y", EyeKeys(EyesAside));
    AddTurn(writer, {1, 0, 0}, "kv/fo/_eyes_x", EyeKeys(EyesUp));
    AddMove(writer, centre * -1);
    AddTriangles(writer, [&](const Surface &s) {
        return s.joint == joint && s.turnsWithEyes && Length(s.eyeCentre - centre) < 1e-6;
    });
    writer.commands += "ANIM_end\n";
}

void AddJoint(Writer &writer, int index) {
    const Joint &joint = Joints()[static_cast<size_t>(index)];
    const std::string dataref = "kv/fo/" + joint.name + "_";
    writer.commands += "ANIM_begin\n";
    if (index == WholeFigure) {
        AddShow(writer, "kv/fo/_show", {"1 1"});
        const char *const ends[3] = {"1 0 0", "0 1 0", "0 0 1"};
        for (int axis = 0; axis < 3; axis++)
            writer.commands += "ANIM_trans_begin " + dataref + static_cast<char>('x' + axis)
                               + "\nANIM_trans_key 0 0 0 0\nANIM_trans_key 1 " + ends[axis]
                               + "\nANIM_trans_end\n";
    } else {
        AddMove(writer, joint.pivot);
        for (const char *letter = joint.order; *letter; letter++) {
            const int axis = *letter - 'x';
            AddTurn(writer, joint.axes[axis], dataref + *letter, Limited(joint.low[axis], joint.high[axis]));
        }
        AddMove(writer, joint.pivot * -1);
    }
    AddTriangles(writer, [&](const Surface &s) {
        return s.joint == index && s.shown == Shown::Always && !s.turnsWithEyes;
    });
    std::vector<Vec> eyes;
    for (const Surface &surface : writer.surfaces)
        if (surface.joint == index && surface.turnsWithEyes
            && (eyes.empty() || Length(eyes.back() - surface.eyeCentre) > 1e-6))
            eyes.push_back(surface.eyeCentre);
    for (Vec eye : eyes) AddEye(writer, index, eye);
    for (const ShownWhile &state : ShownWhiles) {
        bool isUsed = false;
        for (const Surface &surface : writer.surfaces)
            isUsed |= surface.joint == index && surface.shown == state.shown;
        if (!isUsed) continue;
        writer.commands += "ANIM_begin\n";
        AddShow(writer, state.dataref, state.ranges);
        AddTriangles(writer, [&](const Surface &s) { return s.joint == index && s.shown == state.shown; });
        writer.commands += "ANIM_end\n";
    }
    for (int child = 0; child < JointCount; child++)
        if (Joints()[static_cast<size_t>(child)].parent == index) AddJoint(writer, child);
    writer.commands += "ANIM_end\n";
}

std::string IndexLines(const std::vector<int> &indices) {
    std::string text;
    size_t i = 0;
    for (; i + 10 <= indices.size(); i += 10) {
        text += "IDX10";
        for (size_t k = 0; k < 10; k++) text += " " + std::to_string(indices[i + k]);
        text += "\n";
    }
    for (; i < indices.size(); i++) text += "IDX " + std::to_string(indices[i]) + "\n";
    return text;
}

} // namespace

std::string ObjectText(const std::vector<Surface> &surfaces, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap, bool isFigure) {
    Writer writer = {surfaces, atlas, {}, {}};
    if (isFigure)
        AddJoint(writer, WholeFigure);
    else
        AddTriangles(writer, [](const Surface &) { return true; });
    // The comment tells the setup that an object is ours (figure/own_figure.cpp).
    std::string text = "I\n800\nOBJ\n\n# Made for Fennic\nTEXTURE " + texture + "\n";
    if (!normalMap.empty()) text += "TEXTURE_NORMAL " + normalMap + "\n";
    text += "POINT_COUNTS " + std::to_string(writer.mesh.vertexCount) + " 0 0 "
            + std::to_string(writer.mesh.indices.size()) + "\n";
    text +=
        writer.mesh.vertices + IndexLines(writer.mesh.indices) + "\nGLOBAL_specular 0.3\n" + writer.commands;
    return text;
}

} // namespace figure_maker
