// A steady frame allocates nothing: counted over the plug-in's two flight loops, with the aircraft as it is
// shipped and with a model that uses every kind of block.
#include "bench/allocations.h"
#include "figure/channels.h"
#include "frame/main_loop.h"
#include "frame/settings.h"
#include "tests/systems/model_folder.h"
#include "voice/speech_link.h"

namespace {

class SteadyFrame : public ModelFolder {
protected:
    SteadyFrame() {
        InstallationState = InstallationReady;
        std::string channels;
        for (int i = 0; i < 47; i++) channels += std::to_string(i) + ",c" + std::to_string(i) + "\r\n";
        write("data/obj/fennic.txt", channels);
        LoadAnimationFile(plugin + "data/obj/fennic.txt");
        CreateSpeechDatarefs();
    }

    // Allocations of the flight loops in frames of 20 ms, after the first have warmed them up.
    static size_t Count(int frames) {
        double time = simhost::FlightTimeSeconds();
        size_t counted = 0;
        for (int frame = -200; frame < frames; frame++) {
            simhost::SetFlightTimeSeconds(time += 0.02);
            const size_t before = AllocationCount();
            Main(0, 0, 0, nullptr);
            CalculateSystemsCycle(0, 0, 0, nullptr);
            if (frame >= 0) counted += AllocationCount() - before;
        }
        return counted;
    }
};

class SteadyFrameAsShipped : public SteadyFrame, public ::testing::WithParamInterface<const char *> {};

INSTANTIATE_TEST_SUITE_P(Aircraft, SteadyFrameAsShipped, ::testing::Values("Cessna_172SP", "737_Level_Up"));

TEST_P(SteadyFrameAsShipped, AllocatesNothing) {
    const std::filesystem::path shipped = std::filesystem::path(STAGED_AIRCRAFT) / GetParam();
    std::filesystem::copy(shipped / "plugins/fennic/64/systems", plugin + "systems",
                          std::filesystem::copy_options::recursive);
    CreateSystemsFromFile();
    ASSERT_GT(systems_vector.size(), 2U);
    ASSERT_GT(AllocationCount(), 1000U) << "nothing counts";
    EXPECT_EQ(Count(500), 0U);
}

TEST_F(SteadyFrame, EveryKindOfBlock) {
    simhost::PublishDataref("t/array", xplmType_FloatArray, 20);
    Load(
        "sys=S\ndev=D\nout=A,double,,1,0,9,t/array[3],exist,t/a,new,,1\nlogic:\n[S.D.B]==[1;2;3]\n||\n"
        "instring=a rather long phrase to be recognised\ncalc=[S.D.B]+[2]\ncalc=[CBLOCK0]b2i[0]\ngraf=0,0\ngraf=9,9\n"
        "out=B,double,,1,,,t/missing,exist,t/array[4],exist,,0\nlogic:\n"
        "execute=9,an input with a text that is longer than any small buffer,0\n"
        "execute=9,another input with a text that is longer than any small buffer,0\n"
        "devstack=L\n"
        + Out("ONE", "1") + Out("TWO")
        + "logic:\ninstring=an answer that is longer than a small buffer\n"
          "execute=0,x,0\nlogic:\ninstring=any\ncalc=[1]\n"
        + Out("THREE"));
    answerstimer = {{"a timer of a name that is longer than a small buffer", 1e9}};
    EXPECT_EQ(Count(500), 0U);
    EXPECT_EQ(answers.size(), 2U);
    ASSERT_EQ(inputs.size(), 1U);
    EXPECT_EQ(inputs[0].texts.size(), 2U);
}

} // namespace
