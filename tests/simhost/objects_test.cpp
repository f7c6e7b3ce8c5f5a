// Objects: reading them, whatever is in the file, their pose for given datarefs, and the picture.
#include <lodepng.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simhost/drawing/attached_objects.h"
#include "simhost/drawing/cockpit_view.h"
#include "simhost/drawing/object_animation.h"
#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"
#include "tests/scratch_folder.h"

using namespace simhost;

namespace {

const std::string Head = "I\n800\nOBJ\n";
const std::string Triangle = "VT 1 0 0 0 0 1 0 0\nVT 1 1 0 0 0 1 1 0\nVT 2 0 0 0 0 1 1 1\n"
                             "IDX 0\nIDX 1\nIDX 2\n";

ObjectFile Read(const std::string &text) {
    ObjectFile object;
    EXPECT_TRUE(ReadObject(text, "a.obj", object));
    return object;
}

TEST(Objects, AreReadWhateverTheirForm) {
    const std::string text =
        "\xEF\xBB\xBF"
        "A made elsewhere\n\n800\nOBJ\nTEXTURE\ta b.png # paint\nTEXTURE_NORMAL\n"
        "POINT_COUNTS 3 0 0 12\nGLOBAL_specular 1\n"
        + Triangle + "IDX10 0 1 2 0 1 2 0 1 2 +0\nUNHEARD of\nATTR_manip_none\nLINES 0 2\nTRIS\t0 3\n";
    for (const char *end : {"\n", "\r\n", "\r"}) {
        std::string changed;
        for (char c : text) c == '\n' ? changed += end : changed += c;
        const ObjectFile object = Read(changed);
        EXPECT_EQ(object.texture, "a b.png");
        EXPECT_EQ(object.specular, 1);
        EXPECT_EQ(object.vertices.size(), 3u);
        EXPECT_EQ(object.vertices[2].texture[1], 1);
        ASSERT_EQ(object.commands.size(), 1u);
        EXPECT_EQ(object.commands[0].line, 19);
        ASSERT_EQ(object.problems.size(), 1u) << "13 indices, not 12";
    }
}

TEST(Objects, LeaveOutWhatIsWrongAndSayWhere) {
    const ObjectFile object =
        Read(Head + Triangle
             + "VT 1 2 3\nTRIS 0 4\nTRIS 0 3\nANIM_end\nIDX 9\nTRIS 3 9\n"
               "TRIS -1 3\nANIM_rotate_key 0 1\nTRIS 2147483647 3\nANIM_begin\nANIM_hide 0 nan x");
    std::string problems;
    for (const std::string &problem : object.problems) problems += problem.substr(0, 9) + " ";
    EXPECT_EQ(problems,
              "a.obj:10: a.obj:17: a.obj:20: a.obj:11: a.obj:13: a.obj:15: a.obj:16: a.obj:18: a.obj:19: ");
    std::vector<PosedTriangles> posed;
    PoseObject(object, {}, 1, posed);
    ASSERT_EQ(posed.size(), 2u);
    EXPECT_EQ(posed[0].count, 3) << "one of the four indices is left over";

    ObjectFile none;
    EXPECT_FALSE(ReadObject("I\n700\nOBJ\n", "a.obj", none));
    EXPECT_EQ(none.problems.at(0), "a.obj:2: no OBJ8 object: expected \"800\"");
    EXPECT_FALSE(ReadObjectFile("/", none)) << "a folder";
}

// The corners of what is drawn for given values, as "x,y,z " rounded to hundredths.
std::string Pose(const std::string &commands, const std::vector<double> &values = {}, float distance = 1) {
    const ObjectFile object = Read(Head + Triangle + commands);
    std::vector<PosedTriangles> posed;
    PoseObject(object, values, distance, posed);
    std::string corners;
    for (const auto &point : PosedPoints(object, posed)) {
        if (!corners.empty()) corners += ' ';
        for (float part : point) corners += std::to_string(std::lround(part * 100)) + ",";
    }
    return corners;
}

TEST(Objects, MoveWithDatarefs) {
    EXPECT_EQ(Pose("TRIS 0 3"), "100,0,0, 100,100,0, 200,0,0,");
    EXPECT_EQ(
        Pose("ANIM_begin\nANIM_trans 1 2 3 1 2 3 0 0\nANIM_end\nANIM_trans 0 0 1 0 0 1 0 0 none\nTRIS 0 3"),
        "100,0,100, 100,100,100, 200,0,100,");
    // Transforms follow each other; +90 about y takes x to -z.
    EXPECT_EQ(Pose("ANIM_trans 0 0 0 0 1 0 0 1 d\nANIM_rotate 0 9 0 0 90 0 1 d\nTRIS 0 3", {1}),
              "0,100,-100, 0,200,-100, 0,100,-200,");

    const std::string keys = "ANIM_trans_begin d\nANIM_trans_key 2 4 0 0\nANIM_trans_key 0 0 0 0\n"
                             "ANIM_trans_key 1 1 0 0\nLOOPANIM_trans_end\nTRIS 0 3";
    const auto moved = [&](double value, const std::string &loop) {
        std::string text = keys;
        return std::atoi(Pose(text.replace(text.find("LOOP"), 4, loop), {value}).c_str()) - 100;
    };
    const double cases[][3] = {{0.5, 50, 50}, {1.5, 250, 250}, {2, 400, 400}, {-1, -100, 250},
                               {3, 700, 50},  {0, 0, 0}}; // value, cm, cm when looped at 2.5
    for (const auto &[value, straight, looped] : cases) {
        EXPECT_EQ(moved(value, ""), straight) << value;
        EXPECT_EQ(moved(value, "ANIM_keyframe_loop 2.5\n"), looped) << value;
    }
    EXPECT_EQ(
        Pose(
            "ANIM_rotate_begin 0 0 1 d\nANIM_rotate_key 0 0\nANIM_rotate_key 1 90\nANIM_rotate_end\nTRIS 0 3",
            {2}),
        "-100,0,0, -100,-100,0, -200,0,0,");
}

TEST(Objects, HideAndShow) {
    const auto isShown = [](const std::string &commands, const std::vector<double> &values,
                            float distance = 1) {
        return !Pose(commands + "TRIS 0 3\n", values, distance).empty();
    };
    const std::string both = "ANIM_hide 0 1 a\nANIM_show 1 2 b\n";
    EXPECT_TRUE(isShown(both, {2, 0}));
    EXPECT_FALSE(isShown(both, {1, 0}));
    EXPECT_TRUE(isShown(both, {1, 1})) << "the last one decides";
    EXPECT_TRUE(isShown("ANIM_show 1 2 b\n", {0})) << "shows, and does not hide";
    EXPECT_FALSE(isShown("ANIM_hide 0 1 a\nANIM_begin\nANIM_show 0 1 a\n", {0})) << "a group that is hidden";
    EXPECT_TRUE(isShown("ANIM_begin\nANIM_hide 0 1 a\nANIM_end\n", {0})) << "ends with its group";
    EXPECT_FALSE(isShown("ATTR_draw_disable\n", {}));
    EXPECT_TRUE(isShown("ATTR_draw_disable\nATTR_draw_enable\n", {}));
    EXPECT_TRUE(isShown("ATTR_LOD 0 10\n", {}, 9));
    EXPECT_FALSE(isShown("ATTR_LOD 0 10\n", {}, 10));
    EXPECT_TRUE(isShown("ATTR_draw_disable\nATTR_LOD 0 10\n", {}, 9)) << "attributes start afresh";
}

// ---- The picture ----

class CockpitView : public ::testing::Test {
protected:
    CockpitView() {
        std::filesystem::create_directory(folder + "objects");
        ResetSimulator();
        SetScreenSize(400, 400);
        PublishDataref("test/turn", xplmType_FloatArray, 4);
    }

    void Write(const std::string &name, const std::string &text) { std::ofstream(folder + name) << text; }

    // A square of 40 cm in the picture's plane of the view "side", its lower corner forward at z -0.4, and x
    // metres from the seat's middle. Its picture's corners: below red and green, above blue and white.
    static std::string Square(double x) {
        const std::string at = "VT " + std::to_string(x) + " ";
        return at + "0 -0.4 -1 0 0 0 0\n" + at + "0.4 -0.4 -1 0 0 0 1\n" + at + "0.4 0 -1 0 0 1 1\n" + at
               + "0 0 -1 0 0 1 0\n";
    }

    // Attached beside an object around the seat, so that no plain cockpit is drawn; it is out of sight.
    void Attach(const std::string &object) {
        Write("objects/around.obj", Head
                                        + "VT -9 -9 -9 0 1 0 0 0\nVT 9 9 9 0 1 0 0 0\nVT 9 9 9 0 1 0 0 0\n"
                                          "IDX 0\nIDX 1\nIDX 2\n");
        Write("objects/kvfennic.obj", Head + "TEXTURE four.png\n" + object);
        std::vector<unsigned char> pixels; // 16 x 16, from the upper left
        for (unsigned i = 0; i < 256; i++) {
            const bool isLeft = i % 16 < 8, isAbove = i < 128;
            const auto part = [](bool on) { return static_cast<unsigned char>(on ? 255 : 0); };
            for (bool on : {isLeft != isAbove, !isLeft, isAbove, true}) pixels.push_back(part(on));
        }
        lodepng::encode(folder + "objects/four.png", pixels, 16, 16);
        Write("a.acf", "P _obja/0/_v10_att_file_stl around.obj\nP _obja/1/_v10_att_file_stl kvfennic.obj\n"
                       "P _obja/count 2\n");
        Show("side");
    }
    void Show(const std::string &view) {
        notes.clear();
        EXPECT_TRUE(ShowCockpit(view, folder, "a.acf", "", notes));
    }

    // Pixels of a colour: counted, and the middle of them.
    struct Patch {
        int count = 0;
        double x = 0, y = 0; // from the upper left
    };
    static Patch Find(bool red, bool green, bool blue) {
        DrawFrame(true);
        const std::vector<unsigned char> pixels = ReadScreenPixels();
        Patch patch;
        for (std::size_t i = 0; i < pixels.size(); i += 4) {
            EXPECT_EQ(pixels[i + 3], 255);
            const auto is = [&](std::size_t part, bool on) {
                return on ? pixels[i + part] > 60 : pixels[i + part] < 45; // a highlight is white
            };
            if (!is(0, red) || !is(1, green) || !is(2, blue)) continue;
            patch.count++;
            patch.x += static_cast<double>(i / 4 % 400);
            patch.y += static_cast<double>(i / 1600); // NOLINT(bugprone-integer-division): rows
        }
        patch.x /= patch.count;
        patch.y /= patch.count;
        return patch;
    }

    const ScratchFolder scratch;
    const std::string &folder = scratch.path;
    std::vector<std::string> notes;
};

const std::string SquareIndices = "IDX10 0 1 2 0 2 3 4 5 6 4\nIDX 6\nIDX 7\n";

TEST_F(CockpitView, DrawsAnObjectWhereItIs) {
    Attach(Square(0) + SquareIndices
           + "ANIM_begin\nANIM_rotate 1 0 0 0 90 0 1 test/turn[2]\n"
             "ANIM_hide 1 1 test/turn[3]\nTRIS 0 6\nANIM_end\n");
    EXPECT_TRUE(notes.empty());
    const Patch red = Find(true, false, false), green = Find(false, true, false),
                blue = Find(false, false, true);
    // 1.85 m away the picture is 1.53 m high; the colours mix a little where they meet.
    const double quarter = std::pow(0.2 / 1.53 * 400, 2);
    for (const Patch &patch : {red, green, blue}) {
        EXPECT_GT(patch.count, quarter * 0.8);
        EXPECT_LT(patch.count, quarter * 1.05);
    }
    EXPECT_LT(red.x + 20, green.x) << "s goes aft, which is to the right";
    EXPECT_GT(red.y, blue.y + 20) << "t goes up";
    EXPECT_NEAR(red.y, green.y, 2);

    SetNumber("test/turn", 1, 2); // a quarter turn about the seat's x axis: up goes aft, forward goes up
    const Patch turned = Find(true, false, false), turnedGreen = Find(false, true, false);
    EXPECT_NEAR(turned.x, turnedGreen.x, 2);
    EXPECT_LT(turned.y + 20, turnedGreen.y);
    SetNumber("test/turn", 1, 3);
    EXPECT_EQ(Find(true, false, false).count, 0);
    SetNumber("test/turn", 0, 3);
    DrawFrame(false);
    EXPECT_TRUE(ReadScreenPixels().empty());
    Show("none");
    EXPECT_EQ(Find(true, false, false).count, 0);
}

TEST_F(CockpitView, HidesWhatIsBehindAndTurnedAway) {
    std::string cover = Square(0.3), plain = Square(0); // the farther one is drawn last
    Attach(plain + cover + SquareIndices
           + "ANIM_begin\nANIM_hide 1 1 test/turn[3]\nTRIS 0 6\nANIM_end\nTRIS 6 6\n");
    const int near = Find(true, false, false).count;
    SetNumber("test/turn", 1, 3);
    const int far = Find(true, false, false).count;
    EXPECT_LT(far, near * 0.85);
    EXPECT_GT(far, near * 0.6);
    const std::string other = "IDX10 0 2 1 0 3 2 0 0 0 0\n"; // seen from its back
    Attach(plain + other + "TRIS 0 6\n");
    EXPECT_EQ(Find(true, false, false).count, 0);
    Attach(plain + other + "ATTR_no_cull\nTRIS 0 6\n");
    EXPECT_NEAR(Find(true, false, false).count, near, near * 0.1);
}

TEST_F(CockpitView, FindsTheFigure) {
    Write("a.acf",
          "P _obja/count 1\r\nP _obja/0/_v10_att_file_stl seat\r\nP _obja/0/_v10_att_psi_ref 90.000000000\r\n"
          "P _obja/0/_v10_att_x_acf_prt_ref 10.000000000\r\nP _obja/1/_v10_att_file_stl beyond\r\n");
    const std::vector<AttachedObject> attached = ReadAttachedObjects(folder + "a.acf");
    ASSERT_EQ(attached.size(), 1u);
    EXPECT_EQ(attached[0].file, "seat");
    const auto nose = Transformed(attached[0].place, {0, 0, -1}); // heading 90 turns it to the right
    EXPECT_NEAR(nose[0], 3.048 + 1, 1e-4);
    EXPECT_NEAR(nose[2], 0, 1e-4);

    Show("cockpit");
    ASSERT_EQ(notes.size(), 2u) << "the seat is missing, and so is she";
    Write("objects/kvfennic.obj", Head + Triangle);
    Show("front");
    EXPECT_EQ(notes.size(), 1u);
    std::filesystem::rename(folder + "objects/kvfennic.obj", folder + "other.obj");
    EXPECT_TRUE(ShowCockpit("front", folder, "a.acf", folder + "other.obj", notes));
    EXPECT_NE(notes.back().find("plug-in's own"), std::string::npos);
    EXPECT_FALSE(ShowCockpit("moon", folder, "a.acf", "", notes));
}

} // namespace
