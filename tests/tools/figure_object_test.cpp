// The shipped objects, read as the headless simulator reads them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "simhost/drawing/object_animation.h"
#include "tools/figure/poses.h"

using namespace simhost;
namespace maker = figure_maker;

namespace {

const std::string Folder = SHIPPED_DATA "/obj/";
const int TriangleBudget = 60000;

ObjectFile Read(const std::string &name) {
    ObjectFile object;
    EXPECT_TRUE(ReadObjectFile(Folder + name, object)) << name;
    for (const std::string &problem : object.problems) ADD_FAILURE() << problem;
    return object;
}

using Values = std::map<std::string, double>;

std::vector<PosedTriangles> Posed(const ObjectFile &object, Values values, float distance = 1) {
    values.emplace("kv/fo/_show", 1);
    std::vector<PosedTriangles> posed;
    PoseObject(object, ValuesOf(object, [&](const std::string &name) { return values[name]; }), distance,
               posed);
    return posed;
}

// Which runs of triangles are drawn.
std::set<int> Drawn(const ObjectFile &object, const Values &values, float distance = 1) {
    std::set<int> runs;
    for (const PosedTriangles &run : Posed(object, values, distance)) runs.insert(run.first);
    return runs;
}

int Count(const ObjectFile &object, const Values &values) {
    int count = 0;
    for (const PosedTriangles &run : Posed(object, values)) count += run.count;
    return count;
}

// What a joint turns by.
std::string Dataref(int channel, int axis) {
    const bool isLiving = channel < maker::LeftLeg;
    return (isLiving ? "kv/fo/shown/" : "kv/fo/") + maker::Woman().At(channel).name + "_"
           + static_cast<char>('x' + axis);
}

// Where each run of triangles is, with one dataref at a value.
std::vector<Matrix> Places(const ObjectFile &object, const std::string &dataref, double value) {
    std::vector<Matrix> places;
    for (const PosedTriangles &run : Posed(object, {{dataref, value}})) places.push_back(run.place);
    return places;
}

// Are all runs at the same places, but for the rounding of floats?
bool isSame(const std::vector<Matrix> &a, const std::vector<Matrix> &b) {
    const auto isNear = [](const Matrix &m, const Matrix &n) {
        return std::equal(m.begin(), m.end(), n.begin(),
                          [](float x, float y) { return std::abs(x - y) < 1e-5; });
    };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), isNear);
}

// 2: red, green, blue; 6 with alpha.
int PngColourType(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(25);
    return file.get();
}

double Distance(const std::array<float, 3> &a, const std::array<float, 3> &b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

int MovedPoints(const std::vector<std::array<float, 3>> &before,
                const std::vector<std::array<float, 3>> &after) {
    EXPECT_EQ(before.size(), after.size());
    int moved = 0;
    for (size_t i = 0; i < std::min(before.size(), after.size()); i++)
        moved += Distance(before[i], after[i]) > 1e-4;
    return moved;
}

} // namespace

TEST(ShippedObjects, AreConsistent) {
    for (const std::string name : {"kvfennic.obj", "seats.obj", "original/kvfennic.obj"}) {
        SCOPED_TRACE(name);
        const ObjectFile object = Read(name);
        const std::filesystem::path beside = std::filesystem::path(Folder + name).parent_path();
        EXPECT_TRUE(std::filesystem::exists(beside / object.texture));
        EXPECT_TRUE(std::filesystem::exists(beside / object.normalTexture)); // the folder, without one

        std::ifstream text(Folder + name);
        std::string line;
        bool isOpaque = false;
        while (std::getline(text, line) && !line.starts_with("POINT_COUNTS"))
            isOpaque = isOpaque || line.starts_with("GLOBAL_no_blend ");
        // A blended object would hide the window behind which it is seen, or be hidden by it.
        EXPECT_TRUE(isOpaque) << "blended";
        EXPECT_EQ(PngColourType(beside / object.texture), 2) << "no alpha";
        EXPECT_EQ(object.hasMetalness, !object.normalTexture.empty());
        EXPECT_EQ(line, "POINT_COUNTS " + std::to_string(object.vertices.size()) + " 0 0 "
                            + std::to_string(object.indices.size()));
        EXPECT_LT(object.indices.size() / 3, TriangleBudget);

        std::vector<int> drawn(object.indices.size());
        for (const ObjectCommand &command : object.commands)
            if (command.kind == ObjectCommandKind::Triangles)
                for (int i = 0; i < command.count; i++) drawn[static_cast<size_t>(command.first + i)]++;
        EXPECT_EQ(std::count(drawn.begin(), drawn.end(), 1), static_cast<long>(drawn.size()))
            << "each triangle in one run";

        for (const ObjectVertex &vertex : object.vertices) {
            EXPECT_NEAR(std::hypot(vertex.normal[0], vertex.normal[1], vertex.normal[2]), 1, 0.002);
            for (float place : vertex.texture) EXPECT_TRUE(place > 0 && place < 1);
        }
        int inwards = 0; // triangles whose winding says so: clockwise is outwards
        for (size_t i = 0; i + 2 < object.indices.size(); i += 3) {
            maker::Vec p[3], normal;
            for (size_t k = 0; k < 3; k++) {
                const ObjectVertex &vertex = object.vertices[static_cast<size_t>(object.indices[i + k])];
                p[k] = {vertex.position[0], vertex.position[1], vertex.position[2]};
                normal = normal + maker::Vec{vertex.normal[0], vertex.normal[1], vertex.normal[2]};
            }
            inwards += maker::Dot(maker::Cross(p[2] - p[0], p[1] - p[0]), normal) < -1e-9;
        }
        EXPECT_EQ(inwards, 0);
    }
    // An installation copies no other picture for the seats.
    EXPECT_EQ(Read("seats.obj").texture, "kvfennic.png");
    EXPECT_TRUE(Read("seats.obj").datarefs.empty());
}

TEST(FigureObject, IsMovedByEveryChannelAndNothingElse) {
    std::ifstream channels(Folder + "fennic.txt");
    int count = 0;
    for (std::string line; std::getline(channels, line); count++)
        EXPECT_EQ(line.substr(0, line.find('\r')),
                  std::to_string(count) + "," + maker::Woman().At(count).name);
    EXPECT_EQ(count, maker::JointCount);

    const ObjectFile figure = Read("kvfennic.obj");
    std::set<std::string> expected = {
        "kv/fo/_show",     "kv/fo/_face", "kv/fo/_mouth",  "kv/fo/_glass",       "kv/fo/_pad",
        "kv/fo/_planshet", "kv/fo/_look", "kv/fo/_gender", "kv/fo/shown/eyes_x", "kv/fo/shown/eyes_y"};
    for (int channel = 0; channel < maker::JointCount; channel++)
        for (int axis = 0; axis < 3; axis++) expected.insert(Dataref(channel, axis));
    EXPECT_EQ(std::set<std::string>(figure.datarefs.begin(), figure.datarefs.end()), expected);

    const auto rest = PosedPoints(figure, Posed(figure, {}));
    for (const std::string &dataref : expected) {
        if (dataref.starts_with("kv/fo/_")) continue;
        const double value = dataref.find("/xyz_") != std::string::npos ? 0.05 : 12;
        EXPECT_GT(MovedPoints(rest, PosedPoints(figure, Posed(figure, {{dataref, value}}))), 100) << dataref;
    }
    // A whole turn of the eyes is none.
    EXPECT_EQ(MovedPoints(rest, PosedPoints(figure, Posed(figure, {{"kv/fo/shown/eyes_x", 360},
                                                                   {"kv/fo/shown/eyes_y", 360}}))),
              0);
}

TEST(FigureObject, ShowsFaceGlassesAndTablet) {
    const ObjectFile figure = Read("kvfennic.obj");
    EXPECT_EQ(Count(figure, {{"kv/fo/_show", 0}}), 0);
    EXPECT_GT(Count(figure, {{"kv/fo/_glass", 1}}), Count(figure, {}));
    EXPECT_GT(Count(figure, {{"kv/fo/_planshet", 1}}), Count(figure, {}));
    EXPECT_GT(Count(figure, {{"kv/fo/_pad", 1}}), Count(figure, {}));
    // Which runs are drawn tells which lids and lips are.
    std::map<int, std::set<int>> runs;
    for (int face = 0; face < 4; face++) runs[face] = Drawn(figure, {{"kv/fo/_face", face}});
    for (int face = 1; face < 4; face++) EXPECT_EQ(runs[face].size(), runs[0].size());
    for (int face : {-1, 4, 5000})
        EXPECT_EQ(Count(figure, {{"kv/fo/_face", face}}), Count(figure, {})) << face;
    const auto common = [&](int a, int b) {
        return std::count_if(runs[a].begin(), runs[a].end(), [&](int run) { return runs[b].contains(run); });
    };
    const long all = static_cast<long>(runs[0].size());
    EXPECT_EQ(common(0, 1), all - 2) << "both differ";
    EXPECT_EQ(common(2, 3), all - 2);
    EXPECT_EQ(common(0, 2), all - 1) << "the lips differ";
    EXPECT_EQ(common(1, 3), all - 1);
    EXPECT_EQ(common(0, 3), all - 1) << "the lids differ";
    EXPECT_EQ(common(1, 2), all - 1);
    // From 1 to 4 the mouth has a shape of its own, whatever the face says.
    std::set<std::set<int>> shapes;
    for (int mouth = 1; mouth <= 4; mouth++) {
        const auto lips = [&](int face) {
            return Drawn(figure, {{"kv/fo/_face", face}, {"kv/fo/_mouth", mouth}});
        };
        EXPECT_EQ(lips(0), lips(2)) << mouth;
        shapes.insert(lips(0));
    }
    EXPECT_EQ(shapes.size(), 4U);
    EXPECT_TRUE(shapes.contains(runs[0]) && shapes.contains(runs[2]));
}

TEST(FigureObject, ShowsOneOfTwoPeopleInOneOfThreeLooks) {
    const ObjectFile figure = Read("kvfennic.obj");
    const auto runs = [&](double gender, double look, float distance) {
        return Drawn(figure, {{"kv/fo/_gender", gender}, {"kv/fo/_look", look}}, distance);
    };
    for (float distance : {1.0F, 20.0F}) {
        std::set<std::set<int>> all;
        for (double gender : {0, 1})
            for (double look : {0, 1, 2}) all.insert(runs(gender, look, distance));
        EXPECT_EQ(all.size(), 6U) << "each is another";
        std::set<int> both;
        const std::set<int> her = runs(0, 0, distance), him = runs(1, 0, distance);
        std::set_intersection(her.begin(), her.end(), him.begin(), him.end(),
                              std::inserter(both, both.end()));
        EXPECT_TRUE(both.empty()) << "nobody is drawn twice";
        EXPECT_EQ(runs(7, -3, distance), her) << "what is unknown is the first";
    }
    EXPECT_TRUE(runs(0, 0, 100).empty());
}

TEST(FigureObject, StaysWithinTheLimitsOfItsJointsWhateverAChannelSays) {
    const ObjectFile figure = Read("kvfennic.obj");
    for (int channel = 0; channel < maker::WholeFigure; channel++)
        for (int axis = 0; axis < 3; axis++) {
            const maker::Joint &joint = maker::Woman().At(channel);
            const std::string dataref = Dataref(channel, axis);
            for (double value : {joint.low[axis] - 2, -500.0})
                EXPECT_TRUE(isSame(Places(figure, dataref, value), Places(figure, dataref, joint.low[axis])))
                    << dataref;
            for (double value : {joint.high[axis] + 2, 500.0})
                EXPECT_TRUE(isSame(Places(figure, dataref, value), Places(figure, dataref, joint.high[axis])))
                    << dataref;
        }
    for (const auto &[dataref, limit] : {std::pair("kv/fo/shown/eyes_x", maker::EyesUp),
                                         std::pair("kv/fo/shown/eyes_y", maker::EyesAside)}) {
        EXPECT_TRUE(isSame(Places(figure, dataref, 115), Places(figure, dataref, limit)));
        EXPECT_TRUE(isSame(Places(figure, dataref, -500), Places(figure, dataref, -limit)));
        EXPECT_TRUE(isSame(Places(figure, dataref, 500), Places(figure, dataref, 0)))
            << "once round is straight ahead";
    }
}

TEST(FigureObject, AgreesWithTheRigThatPosesAreMadeOn) {
    const ObjectFile figure = Read("kvfennic.obj");
    int seed = 1;
    for (int round = 0; round < 4; round++) {
        const maker::Body &body = maker::BodyOf(round % 2 == 1);
        maker::Pose pose{};
        Values values = {{"kv/fo/_gender", round % 2}, {"kv/fo/_look", round % 3}};
        for (int channel = 0; channel < maker::JointCount; channel++)
            for (size_t axis = 0; axis < 3; axis++) {
                const maker::Joint &joint = maker::Woman().At(channel);
                seed = (seed * 4093 + 2711) % 65521;
                const double share = seed / 65521.0;
                pose[static_cast<size_t>(channel)][axis] =
                    maker::Mix(joint.low[axis], joint.high[axis], share);
                values[Dataref(channel, static_cast<int>(axis))] = pose[static_cast<size_t>(channel)][axis];
            }
        // The frames of the runs of triangles are those of the joints, each at least once.
        const auto frames = maker::CarriedFrames(body, pose);
        const std::vector<PosedTriangles> posed = Posed(figure, values);
        for (size_t channel = 0; channel < frames.size(); channel++) {
            const maker::Vec place = maker::ToWorld(frames[channel], {0.3, 0.2, -0.1});
            double nearest = 1;
            for (const PosedTriangles &run : posed) {
                const auto p = Transformed(run.place, {0.3F, 0.2F, -0.1F});
                nearest = std::min(nearest, maker::Length(place - maker::Vec{p[0], p[1], p[2]}));
            }
            EXPECT_LT(nearest, 0.002) << body.joints[channel].name;
        }
    }
}
