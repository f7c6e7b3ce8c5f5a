// Which aircraft is served, and what detection loads for it.
#include "frame/aircraft.h"

#include "systems/model.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"

namespace {

class Aircraft : public PluginFolder {
protected:
    void Detect(const std::string &description, const std::string &modelFile) {
        simhost::SetText("sim/aircraft/view/acf_descrip", description);
        if (!modelFile.empty()) std::ofstream(aircraft + modelFile) << "A";
        write("sys.txt", "sys=S\ndev=D\nout=P,int,,1,,,,,,\n");
        ReadDRF_descr();
        ReadAcfTypeAndDeveloperMode();
    }

    void ExpectDetected(int type, bool hasModel, bool hasRunways, int variant) {
        EXPECT_EQ(acfType, type);
        EXPECT_EQ(systems_vector.size(), hasModel ? 1U : 0U);
        EXPECT_EQ(XPLMFindDataRef("kv/fnc/orvik/to_rwy/dist_m") != nullptr, hasRunways);
        EXPECT_EQ(simhost::GetNumber("kv/fnc/orvik/ldg_rwy/delta_hdg_deg"), hasRunways ? -1 : 0);
        EXPECT_EQ(simhost::GetNumber("kv/fnc/lu_mode"), variant);
        EXPECT_EQ(CountNewLines({"Aircraft detected: "}), type == 0 ? 0 : 1);
    }
};

TEST_F(Aircraft, Cessna) {
    Detect("Cessna 172 SP Skyhawk - 180HP - G1000", "Cessna_172SP.acf");
    ExpectDetected(172, true, false, 0);
}

TEST_F(Aircraft, EachVariantOfThe737Differs) {
    Detect("Boeing 737-900ER", "737_80NG.acf");
    ExpectDetected(739, true, true, 739);
}

TEST_F(Aircraft, The600IsOfTheSameType) {
    Detect("Boeing 737-600NG", "737_80NG.acf");
    ExpectDetected(739, true, true, 736);
}

TEST_F(Aircraft, The800XHasRunwaysButNoVariant) {
    Detect("Boeing 737-800X", "b738_4k.acf");
    ExpectDetected(737, true, true, 0);
}

TEST_F(Aircraft, WithoutItsModelFileOnlyTheTypeIsKnown) {
    Detect("Boeing 737-800NG", "");
    ExpectDetected(739, false, false, 0);
}

TEST_F(Aircraft, AMentionIsNoMatch) {
    Detect("Like a Boeing 767 300ER", "767-300ER_xp11.acf");
    ExpectDetected(0, false, false, 0);
}

} // namespace
