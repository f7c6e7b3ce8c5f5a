// The table of channels, read from a figure's object.
#include "tests/figure/figure_folder.h"
#include "tests/log_lines.h"

namespace {

TEST_F(FigureFolder, AnObjectNamesItsChannelsInTheOrderOfItsAnimations) {
    write("figure.obj",
          "I\n800\nOBJ\n"
          "ANIM_rotate 1 0 0 -90 90 -90 90 kv/fo/arm_x\r\nANIM_rotate 0 1 0 -90 90 -90 90 kv/fo/arm_y\n"
          "ANIM_begin\nANIM_trans 0 0 0 0 0 0 0 0\nANIM_rotate 1 0 0 0 1 0 1 sim/flap_x\n"
          "ANIM_rotate 1 0 0 -90 90 -90 90 kv/fo/hand_x\nANIM_hide 0 1 kv/\nANIM_hide 0 1 kv/fo/_x\n"
          "# ANIM_rotate 1 0 0 0 1 0 1 kv/fo/leg_x\nANIM_rotate 0 0 1 0 1 0 1 kv/fo/arm_z\n");
    ReadObjFileForDatarefs(plugin + "figure.obj");
    SaveAnimationFile();
    EXPECT_EQ(read("data/obj/fennic.txt"), "0,arm\r\n1,hand\r\n2,arm\r\n");
    EXPECT_EQ(simhost::GetNumber("kv/fo/hand_z"), 0);
    simhost::TakeLogLines();
    ReadObjFileForDatarefs(plugin + "none.obj");
    EXPECT_TRUE(anim.empty());
    EXPECT_EQ(CountNewLines({"!!! Error: Cant read file " + plugin + "none.obj"}), 1);
}

} // namespace
