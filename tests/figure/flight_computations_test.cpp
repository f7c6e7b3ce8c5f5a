// What the altimeter shows, to the hundredth.
#include "figure/flight_computations.h"

#include <limits>

#include "tests/figure/figure_folder.h"

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
