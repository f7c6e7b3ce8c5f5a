// Body, head and arms turn by "kv/fo/shown/…", the channels with the living motion on them; legs and the
// whole figure by the channels themselves.
//
// Every joint is a pair of moves around turns about the cockpit's axes, nested as the joints are; each holds
// one run of triangles, and more for what is shown and hidden. The bands of skin over a joint stand beside
// it, each with a share of its turns.
#include "tools/figure/object_file.h"

#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

namespace figure_maker {

namespace {

struct Mesh {
    std::string vertices;
    std::vector<int> indices;
    int vertexCount = 0;
};

struct Writer {
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

// As it is written: tenths of millimetres.
Vec Written(Vec p) {
    return {std::round(p.x * 1e4) * 1e-4, std::round(p.y * 1e4) * 1e-4, std::round(p.z * 1e4) * 1e-4};
}

// Clockwise from outside: the cross product of two edges points inwards.
void AddTriangle(const Grid &grid, int a, int b, int c, std::vector<int> &indices) {
    const auto at = [&](int i) { return Written(grid.positions[static_cast<size_t>(i)]); };
    const auto normal = [&](int i) { return grid.normals[static_cast<size_t>(i)]; };
    const Vec inwards = Cross(at(b) - at(a), at(c) - at(a));
    if (Length(inwards) < 1e-9) return; // at a pole, or too small
    if (Dot(inwards, normal(a) + normal(b) + normal(c)) > 0) std::swap(b, c);
    for (int index : {a, b, c}) indices.push_back(index);
}

// Only what a triangle needs becomes a vertex.
void AddSurface(Writer &writer, const Surface &surface) {
    const Grid &grid = surface.grid;
    std::vector<int> corners;
    for (int row = 0; row + 1 < grid.rows; row++)
        for (int column = 0; column + 1 < grid.columns; column++) {
            const int a = row * grid.columns + column, b = a + 1, c = a + grid.columns, d = c + 1;
            for (const auto &triangle : {std::array{a, b, c}, std::array{b, d, c}}) {
                const auto isHidden = [&](int i) {
                    return !surface.hidden.empty() && surface.hidden[static_cast<size_t>(i)];
                };
                if (!std::all_of(triangle.begin(), triangle.end(), isHidden))
                    AddTriangle(grid, triangle[0], triangle[1], triangle[2], corners);
            }
        }
    Mesh &mesh = writer.mesh;
    const Chart &chart = writer.atlas.charts.at(surface.chart);
    const int chartRows = surface.whole ? surface.whole->rows : grid.rows;
    std::map<int, int> places; // of the grid's points in the mesh
    for (int corner : corners) {
        const auto [place, isNew] = places.emplace(corner, mesh.vertexCount);
        mesh.indices.push_back(place->second);
        if (!isNew) continue;
        mesh.vertexCount++;
        double u = static_cast<double>(corner % grid.columns) / (grid.columns - 1);
        if (surface.isHalved) u = 1 - std::abs(2 * u - 1);
        const double v = static_cast<double>(surface.firstRow + corner / grid.columns) / (chartRows - 1);
        double s = 0, t = 0;
        TextureCoordinates(writer.atlas, chart, u, v, s, t);
        const Vec p = grid.positions[static_cast<size_t>(corner)],
                  n = grid.normals[static_cast<size_t>(corner)];
        mesh.vertices += Line("VT %.4f %.4f %.4f %.3f %.3f %.3f %.4f %.4f\n", Tidy(p.x), Tidy(p.y), Tidy(p.z),
                              Tidy(n.x), Tidy(n.y), Tidy(n.z), s, t);
    }
}

// One run of the triangles of all surfaces that the test accepts.
template <typename Test>
void AddTriangles(Writer &writer, const std::vector<Surface> &surfaces, Test isWanted) {
    const size_t first = writer.mesh.indices.size();
    for (const Surface &surface : surfaces)
        if (isWanted(surface)) AddSurface(writer, surface);
    const size_t count = writer.mesh.indices.size() - first;
    if (count) writer.commands += Line("TRIS %d %d\n", static_cast<int>(first), static_cast<int>(count));
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

// A share of the degrees as they are between the limits. Beyond the outer keys a simulator goes on along the
// last segment, which is level here.
std::vector<TurnKey> Limited(double low, double high, double share) {
    return {{low - 1, low * share}, {low, low * share}, {high, high * share}, {high + 1, high * share}};
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
    const char *mouth = nullptr;      // of "kv/fo/_mouth", which has the last word from 1 to 4
};
const ShownWhile ShownWhiles[] = {
    {Shown::EyesOpen, "kv/fo/_face", {"-1000000 0.5", "1.5 2.5", "3.5 1000000"}},
    {Shown::EyesClosed, "kv/fo/_face", {"0.5 1.5", "2.5 3.5"}},
    {Shown::LipsOpen, "kv/fo/_face", {"0.5 2.5"}, "1.5 2.5"},
    {Shown::LipsClosed, "kv/fo/_face", {"-1000000 0.5", "2.5 1000000"}, "0.5 1.5"},
    {Shown::LipsNarrow, "kv/fo/_face", {}, "2.5 3.5"},
    {Shown::LipsRound, "kv/fo/_face", {}, "3.5 4.5"},
    {Shown::WithGlasses, "kv/fo/_glass", {"1 1"}},
    {Shown::WithTablet, "kv/fo/_planshet", {"1 1"}},
    {Shown::Writing, "kv/fo/_pad", {"1 1"}},
};

// Of "kv/fo/_look", by a surface's looks: the first look is also that of any other value.
const std::vector<const char *> LookRanges[] = {{"-1000000 0.5", "2.5 1000000"}, {"0.5 1.5"}, {"1.5 2.5"}};

void AddShow(Writer &writer, const char *dataref, const std::vector<const char *> &ranges) {
    writer.commands += std::string("ANIM_hide ") + Everything + " " + dataref + "\n";
    for (const char *range : ranges)
        writer.commands += std::string("ANIM_show ") + range + " " + dataref + "\n";
}

std::string ShownDataref(const Joint &joint, char axis) {
    const bool isLiving = joint.name.find("_leg") == std::string::npos;
    return (isLiving ? "kv/fo/shown/" : "kv/fo/") + joint.name + "_" + axis;
}

void AddTurns(Writer &writer, const Joint &joint, double share) {
    AddMove(writer, joint.pivot);
    for (const char *letter = joint.order; *letter; letter++) {
        const int axis = *letter - 'x';
        AddTurn(writer, joint.axes[axis], ShownDataref(joint, *letter),
                Limited(joint.low[axis], joint.high[axis], share));
    }
    AddMove(writer, joint.pivot * -1);
}

// What the test accepts: first what is always seen, then a run for each state and look.
template <typename Test> void AddStates(Writer &writer, const std::vector<Surface> &surfaces, Test isHere) {
    std::set<std::pair<Shown, int>> states;
    for (const Surface &surface : surfaces)
        if (isHere(surface)) states.emplace(surface.shown, surface.looks);
    for (const auto &[shown, looks] : states) {
        const bool isState = shown != Shown::Always, isLook = looks != AllLooks;
        if (isState || isLook) writer.commands += "ANIM_begin\n";
        for (const ShownWhile &state : ShownWhiles) {
            if (state.shown != shown) continue;
            AddShow(writer, state.dataref, state.ranges);
            if (!state.mouth) continue;
            writer.commands += "ANIM_hide 0.5 4.5 kv/fo/_mouth\n";
            writer.commands += std::string("ANIM_show ") + state.mouth + " kv/fo/_mouth\n";
        }
        if (isLook) {
            // A group's last word counts, so the look has a group of its own.
            writer.commands += "ANIM_begin\n";
            std::vector<const char *> ranges;
            for (int look = 0; look < LookCount; look++)
                if (looks & 1 << look)
                    ranges.insert(ranges.end(), LookRanges[look].begin(), LookRanges[look].end());
            AddShow(writer, "kv/fo/_look", ranges);
        }
        AddTriangles(writer, surfaces, [&, shown = shown, looks = looks](const Surface &s) {
            return isHere(s) && s.shown == shown && s.looks == looks;
        });
        if (isLook) writer.commands += "ANIM_end\n";
        if (isState || isLook) writer.commands += "ANIM_end\n";
    }
}

void AddEyes(Writer &writer, const std::vector<Surface> &surfaces, int joint) {
    const auto less = [](Vec a, Vec b) { return a.x < b.x; };
    std::set<Vec, decltype(less)> centres(less);
    for (const Surface &surface : surfaces)
        if (surface.joint == joint && surface.turnsWithEyes) centres.insert(surface.eyeCentre);
    for (Vec centre : centres) {
        writer.commands += "ANIM_begin\n";
        AddMove(writer, centre);
        AddTurn(writer, {0, 1, 0}, "kv/fo/shown/eyes_y", EyeKeys(EyesAside));
        AddTurn(writer, {1, 0, 0}, "kv/fo/shown/eyes_x", EyeKeys(EyesUp));
        AddMove(writer, centre * -1);
        AddStates(writer, surfaces, [&](const Surface &s) {
            return s.joint == joint && s.turnsWithEyes && s.eyeCentre.x == centre.x;
        });
        writer.commands += "ANIM_end\n";
    }
}

// All that a joint, or a band of skin over it, carries.
void AddCarried(Writer &writer, const std::vector<Surface> &surfaces, int joint, double share) {
    AddStates(writer, surfaces,
              [&](const Surface &s) { return s.joint == joint && s.share == share && !s.turnsWithEyes; });
}

bool Carries(const Body &body, const std::vector<Surface> &surfaces, int joint) {
    return std::any_of(surfaces.begin(), surfaces.end(), [&](const Surface &surface) {
        int holder = surface.joint;
        while (holder != joint && holder != NoJoint) holder = body.At(holder).parent;
        return holder == joint;
    });
}

void AddJoint(Writer &writer, const Body &body, const std::vector<Surface> &surfaces, int index) {
    if (!Carries(body, surfaces, index)) return;
    const Joint &joint = body.At(index);
    std::set<double> shares;
    for (const Surface &surface : surfaces)
        if (surface.joint == index && surface.share < 1) shares.insert(surface.share);
    for (double share : shares) {
        writer.commands += "ANIM_begin\n";
        AddTurns(writer, joint, share);
        AddCarried(writer, surfaces, index, share);
        writer.commands += "ANIM_end\n";
    }
    writer.commands += "ANIM_begin\n";
    if (index == WholeFigure) {
        AddShow(writer, "kv/fo/_show", {"1 1"});
        const char *const ends[3] = {"1 0 0", "0 1 0", "0 0 1"};
        for (int axis = 0; axis < 3; axis++)
            writer.commands += "ANIM_trans_begin kv/fo/" + joint.name + "_" + static_cast<char>('x' + axis)
                               + "\nANIM_trans_key 0 0 0 0\nANIM_trans_key 1 " + ends[axis]
                               + "\nANIM_trans_end\n";
    } else {
        AddTurns(writer, joint, 1);
    }
    AddCarried(writer, surfaces, index, 1);
    AddEyes(writer, surfaces, index);
    for (int child = 0; child < JointCount; child++)
        if (body.At(child).parent == index) AddJoint(writer, body, surfaces, child);
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

// From how near to how far the figures are drawn whole, then plainly, metres.
const double NearEnd = 4, FarEnd = 60;

std::string WholeText(const Writer &writer, const std::string &texture, const std::string &normalMap) {
    // The comment tells the setup that an object is ours (figure/own_figure.cpp).
    std::string text = "I\n800\nOBJ\n\n# Made for Fennic\nTEXTURE " + texture + "\n";
    if (!normalMap.empty()) text += "TEXTURE_NORMAL " + normalMap + "\nNORMAL_METALNESS\n";
    // Opaque: it is drawn, with its depth, before whatever one sees it through, and not among that.
    text += std::string("GLOBAL_no_blend 0.5\nGLOBAL_specular ") + (normalMap.empty() ? "0.1" : "1") + "\n";
    text += "POINT_COUNTS " + std::to_string(writer.mesh.vertexCount) + " 0 0 "
            + std::to_string(writer.mesh.indices.size()) + "\n";
    return text + writer.mesh.vertices + IndexLines(writer.mesh.indices) + "\n" + writer.commands;
}

} // namespace

std::string FigureText(const std::vector<Figure> &figures, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap) {
    Writer writer = {atlas, {}, {}};
    for (bool isNear : {true, false}) {
        writer.commands += Line("ATTR_LOD %g %g\n", isNear ? 0 : NearEnd, isNear ? NearEnd : FarEnd);
        for (size_t i = 0; i < figures.size(); i++) {
            const Figure &figure = figures[i];
            writer.commands += "ANIM_begin\n";
            // Any other value than the second's is like the first's.
            writer.commands += i == 0 ? "ANIM_hide 1 1 kv/fo/_gender\n"
                                      : std::string("ANIM_hide ") + Everything
                                            + " kv/fo/_gender\nANIM_show 1 1 kv/fo/_gender\n";
            AddJoint(writer, *figure.body, isNear ? figure.surfaces : figure.afar, WholeFigure);
            writer.commands += "ANIM_end\n";
        }
    }
    return WholeText(writer, texture, normalMap);
}

std::string ObjectText(const std::vector<Surface> &surfaces, const Atlas &atlas, const std::string &texture,
                       const std::string &normalMap) {
    Writer writer = {atlas, {}, {}};
    AddTriangles(writer, surfaces, [](const Surface &) { return true; });
    return WholeText(writer, texture, normalMap);
}

} // namespace figure_maker
