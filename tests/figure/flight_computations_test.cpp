// Runways as spoken, and what the altimeter shows, to the hundredth.
#include "figure/flight_computations.h"

#include <limits>

#include "tests/figure/figure_folder.h"

TEST(RunwayNames, AsSpoken) {
    const char *const cases[][2] = {{"27L", "2 7 Left"},
                                    {"09R", "0 9 Right"},
                                    {"36C", "3 6 Center"},
                                    {"09", "0 9 "},
                                    {"18X", "1 8 "},
                                    {"9", ""},
                                    {"", ""},
                                    {"27LX", "2 7 Left"}};
    for (const auto &[ident, spoken] : cases) EXPECT_EQ(RunwayName(ident), spoken);
}

TEST_F(FigureFolder, TheAltimeterSettingInHundredths) {
    const char *const setting = "sim/cockpit/misc/barometer_setting";
    simhost::PublishDataref(setting, xplmType_Float);
    for (int hundredths = 2700; hundredths <= 3150; hundredths++) { // whatever an altimeter can be set to
        simhost::SetNumber(setting, hundredths / 100.0);
        CalcBaro();
        ASSERT_EQ(simhost::GetNumber("kv/fo/baro100"), hundredths);
    }
    simhost::SetNumber(setting, std::numeric_limits<double>::quiet_NaN());
    CalcBaro();
    EXPECT_EQ(simhost::GetNumber("kv/fo/baro100"), 0);
}
