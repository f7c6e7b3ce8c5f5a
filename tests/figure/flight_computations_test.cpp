// The runway computation over a whole flight, the altimeter check, and the pilot's view to the figure.
//
// The runway is 13L/31R of Boeing Field, Seattle (KBFI). The ends are those of the example in the
// specification of the simulator's airport data (apt.dat); they are 3708 ft apart on a true bearing of 150,
// and the FAA's chart supplement gives 3709 ft and 150.
#include <GeographicLib/Geodesic.hpp>
#include <limits>

#include "figure/flight_computations.h"
#include "figure/geodesy.h"
#include "tests/figure/figure_folder.h"

const double Lat13L = 47.53801700, Lon13L = -122.30746100;
const double Lat31R = 47.52919200, Lon31R = -122.30000000;
const double TrueCourse13L = 150.3, TrueCourse31R = 330.3;
const double Variation = -15; // as the simulator has it: east is negative
const char *const Altimeter = "sim/cockpit2/gauges/indicators/radio_altimeter_height_ft_pilot";

class Runways : public FigureFolder {
protected:
    Runways() {
        simhost::SetNumber("sim/flightmodel/position/latitude", Lat13L);
        simhost::SetNumber("sim/flightmodel/position/longitude", Lon13L);
        simhost::PublishDataref("sim/flightmodel/position/magnetic_variation", xplmType_Float);
        simhost::SetNumber("sim/flightmodel/position/magnetic_variation", Variation);
        simhost::PublishDataref(Altimeter, xplmType_Float);
        simhost::PublishDataref("sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot", xplmType_Float);
        CreateOrvikDatarefs();
    }

    // As an aircraft's flight management publishes its runways, in the type it likes.
    static void PublishRunways(XPLMDataTypeID type) {
        for (const char *runway : {"ref", "des"})
            for (const char *value : {"start_lat", "start_lon", "crs"})
                simhost::PublishDataref(Name(runway, value), type);
        for (const char *ident : {"laminar/B738/pfd/ils_runway0", "laminar/B738/pfd/ils_runway"})
            simhost::PublishDataref(ident, xplmType_Data, 40);
    }

    static std::string Name(const std::string &runway, const std::string &value) {
        return "laminar/B738/fms/" + runway + "_runway_" + value;
    }

    static void SetRunway(const std::string &runway, double lat, double lon, double course,
                          const std::string &ident) {
        simhost::SetNumber(Name(runway, "start_lat"), lat);
        simhost::SetNumber(Name(runway, "start_lon"), lon);
        simhost::SetNumber(Name(runway, "crs"), course);
        simhost::SetText(runway == "ref" ? "laminar/B738/pfd/ils_runway0" : "laminar/B738/pfd/ils_runway",
                         ident);
    }

    // A frame at a place so many metres from the end of 13L along a true bearing, and so many to its right.
    void At(double alongM, double rightM, double trueHeading, double radioAltitudeFt) {
        double lat = 0, lon = 0;
        const GeographicLib::Geodesic &earth = GeographicLib::Geodesic::WGS84();
        earth.Direct(Lat13L, Lon13L, TrueCourse13L, alongM, lat, lon);
        earth.Direct(lat, lon, TrueCourse13L + 90, rightM, lat, lon);
        simhost::SetNumber("sim/flightmodel/position/latitude", lat);
        simhost::SetNumber("sim/flightmodel/position/longitude", lon);
        simhost::SetNumber("sim/cockpit2/gauges/indicators/heading_AHARS_deg_mag_pilot",
                           NormalizeAngle(static_cast<float>(trueHeading + Variation)));
        simhost::SetNumber(Altimeter, radioAltitudeFt);
        FlightTimeSEC += 0.02;
        CalcOrvik();
    }

    static double Published(const std::string &value) { return simhost::GetNumber("kv/fnc/orvik/" + value); }
    static void ExpectArrivalUnknown() {
        EXPECT_EQ(Published("ldg_rwy/dist_m"), -1);
        EXPECT_EQ(Published("ldg_rwy/delta_hdg_deg"), -1);
        EXPECT_EQ(OrvikLdgRwyDistM, -1);
    }
};

TEST_F(Runways, ATrafficPatternFromLineUpToTheTaxiway) {
    PublishRunways(xplmType_Float);
    SetRunway("ref", Lat13L, Lon13L, 135.3, "13L");
    SetRunway("des", Lat13L, Lon13L, 135.3, "13L");
    At(100, 0, TrueCourse13L, 0); // looks the datarefs up
    EXPECT_EQ(Published("to_rwy/dist_m"), -1);

    At(100, 0, TrueCourse13L + 4, 0);
    EXPECT_NEAR(Published("to_rwy/dist_m"), 100, 1.5);
    EXPECT_NEAR(Published("to_rwy/delta_hdg_deg"), 4, 0.01);
    EXPECT_EQ(OrvikToRwyName, "1 3 Left");
    EXPECT_NEAR(OrvikToRwyDistM, 100, 1.5);
    ExpectArrivalUnknown();

    At(900, 0, TrueCourse13L, 40); // climbing away from it
    EXPECT_EQ(OrvikOnAir, 1);
    EXPECT_NEAR(Published("to_rwy/dist_m"), 100, 1.5) << "left as it was";
    At(3000, 0, TrueCourse13L, 1500);
    ExpectArrivalUnknown(); // the threshold is behind
    At(-20000, 0, TrueCourse13L, 1500);
    ExpectArrivalUnknown();
    At(-10000, 0, TrueCourse13L, 2500);
    ExpectArrivalUnknown();
    At(-10000, 2200, TrueCourse13L, 1500); // 12 degrees off
    ExpectArrivalUnknown();
    EXPECT_EQ(OrvikLdgRwyName, "");
    At(-10000, 700, TrueCourse13L, 1500);
    EXPECT_NEAR(Published("ldg_rwy/dist_m"), std::hypot(10000, 700), 3);
    EXPECT_NEAR(Published("ldg_rwy/delta_hdg_deg"), 4.0, 0.1);
    EXPECT_EQ(OrvikLdgRwyName, "1 3 Left");
    At(-14950, 0, TrueCourse13L, 1500);
    EXPECT_NEAR(OrvikLdgRwyDistM, 14950, 3);
    EXPECT_NEAR(OrvikLdgRwyDeltaHdgDeg, 0, 0.2);
    At(-300, 0, TrueCourse13L, 60);
    ExpectArrivalUnknown();
    EXPECT_EQ(OrvikLdgRwyName, "");

    At(250, 0, TrueCourse13L + 40, 2); // a bounce across
    EXPECT_EQ(OrvikOnAir, 1);
    EXPECT_NE(OrvikLanded, 1);
    At(300, 0, TrueCourse13L + 1, 2);
    EXPECT_EQ(OrvikOnAir, 0);
    EXPECT_EQ(OrvikLanded, 1);
    EXPECT_EQ(OrvikLdgRwyName, "1 3 Left");
    At(300, 0, TrueCourse13L + 1, 0); // the very point where it landed
    EXPECT_EQ(Published("ldg_rwy/dist_m"), 0);

    // Straight on; a magnetic heading against a bearing with the variation added is no turn at all, but the
    // difference of headings carries the variation.
    At(900, 0, TrueCourse13L + 1, 0);
    EXPECT_NEAR(Published("ldg_rwy/dist_m"), 600 * std::sin(1 * deg2rad), 1.5);
    EXPECT_NEAR(Published("ldg_rwy/delta_hdg_deg"), 15, 0.01);
    EXPECT_NEAR(Published("to_rwy/dist_m"), 900, 1.5);
    double last = 0;
    for (double sideways : {20.0, 60.0, 150.0}) { // off to the right
        At(900, sideways, TrueCourse13L + 91, 0);
        EXPECT_GT(Published("ldg_rwy/dist_m"), last);
        last = Published("ldg_rwy/dist_m");
    }
    EXPECT_NEAR(last, 150 - 600 * std::sin(1 * deg2rad), 2);
    EXPECT_NEAR(Published("ldg_rwy/delta_hdg_deg"), 75, 0.01);

    At(900, 0, TrueCourse13L, 50); // off again
    EXPECT_EQ(OrvikLanded, 0);
    ExpectArrivalUnknown();
}

TEST_F(Runways, TheOtherEndAndOtherTypesOfDatarefs) {
    PublishRunways(xplmType_Double);
    SetRunway("ref", Lat31R, Lon31R, 315.3, "31R");
    SetRunway("des", Lat31R, Lon31R, 315.3, "31R");
    At(0, 0, TrueCourse31R, 0);
    At(0, 0, TrueCourse31R, 0);
    EXPECT_NEAR(Published("to_rwy/dist_m"), 3709 * ft2m, 1.5) << "from end to end";
    EXPECT_EQ(OrvikToRwyName, "3 1 Right");
    At(1130 + 5000, 0, TrueCourse31R, 900);
    EXPECT_NEAR(Published("ldg_rwy/dist_m"), 5000, 3);
    EXPECT_NEAR(Published("ldg_rwy/delta_hdg_deg"), 0, 0.2);
}

TEST_F(Runways, UnknownRunwaysAndAltitudes) {
    At(100, 0, TrueCourse13L, 0);
    At(100, 0, TrueCourse13L, 0); // an aircraft that publishes no runways
    EXPECT_EQ(Published("to_rwy/dist_m"), -1);
    ExpectArrivalUnknown();
    At(-5000, 0, TrueCourse13L, 900);
    ExpectArrivalUnknown();
    At(100, 0, TrueCourse13L, 0); // across whatever course 0 is
    EXPECT_EQ(OrvikOnAir, 1);

    PublishRunways(xplmType_Float); // its flight management starts later than the plug-in
    SetRunway("ref", Lat13L, Lon13L, 135.3, "13L");
    SetRunway("des", Lat13L, Lon13L, 135.3, "13L");
    for (int i = 0; i < 60; i++) At(100, 0, TrueCourse13L, 0);
    EXPECT_NEAR(Published("to_rwy/dist_m"), 100, 1.5);
    At(-5000, 0, TrueCourse13L, 900);
    EXPECT_NEAR(Published("ldg_rwy/dist_m"), 5000, 3);

    At(-5000, 0, TrueCourse13L, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Published("to_rwy/dist_m"), -1);
    EXPECT_EQ(Published("to_rwy/delta_hdg_deg"), -1);
    EXPECT_EQ(OrvikToRwyDistM, -1);
    ExpectArrivalUnknown();
}

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

TEST_F(FigureFolder, AltimeterSettingAndItsCheck) {
    const char *const setting = "sim/cockpit/misc/barometer_setting";
    const char *const current = "sim/weather/barometer_current_inhg";
    const char *const seaLevel = "sim/weather/barometer_sealevel_inhg";
    for (const char *name : {setting, current, seaLevel}) simhost::PublishDataref(name, xplmType_Float);
    struct Case {
        double setting, current, seaLevel;
        int check;
    };
    const Case cases[] = {{29.92, 29.90, 28.00, 1}, {29.92, 29.80, 29.93, 1}, {29.92, 29.50, 29.50, 0},
                          {29.92, 29.95, 29.50, 0}, {29.92, 29.94, 29.50, 1}, {29.92, 29.89, 29.94, 1}};
    for (const Case &c : cases) {
        simhost::SetNumber(setting, c.setting);
        simhost::SetNumber(current, c.current);
        simhost::SetNumber(seaLevel, c.seaLevel);
        CalcBaro();
        EXPECT_EQ(simhost::GetNumber("kv/fo/baro_check"), c.check) << c.current << " " << c.seaLevel;
        EXPECT_EQ(simhost::GetNumber("kv/fo/baro100"), 2992);
    }
    for (int hundredths = 2700; hundredths <= 3150; hundredths++) { // whatever an altimeter can be set to
        simhost::SetNumber(setting, hundredths / 100.0);
        CalcBaro();
        ASSERT_EQ(simhost::GetNumber("kv/fo/baro100"), hundredths);
    }
    simhost::SetNumber(setting, std::numeric_limits<double>::quiet_NaN());
    CalcBaro();
    EXPECT_EQ(simhost::GetNumber("kv/fo/baro100"), 0);
}

TEST_F(FigureFolder, WhetherThePilotLooksAtHer) {
    for (const char *value : {"x", "z", "psi"})
        simhost::PublishDataref(std::string("sim/graphics/view/pilots_head_") + value, xplmType_Float);
    simhost::PublishDataref("sim/aircraft/weight/acf_cgZ_original", xplmType_Float);
    const auto view = [] { return simhost::GetNumber("kv/fo/delta_hdg2fo"); };
    CalcPilot2FennicHdg();
    CalcPilot2FennicHdg();
    EXPECT_EQ(view(), 360) << "nobody has said where she sits";

    simhost::PublishDataref("kv/fo/_pos_x", xplmType_Float);
    simhost::PublishDataref("kv/fo/_pos_y", xplmType_Float);
    simhost::PublishDataref("kv/fo/_pos_z", xplmType_Float);
    simhost::SetNumber("kv/fo/_pos_x", 0.5);
    simhost::SetNumber("kv/fo/_pos_z", 3.048);
    simhost::SetNumber("sim/graphics/view/pilots_head_x", -0.5);
    simhost::SetNumber("sim/aircraft/weight/acf_cgZ_original", 10); // feet
    CalcPilot2FennicHdg();
    CalcPilot2FennicHdg();
    EXPECT_NEAR(view(), 90, 1e-3) << "she sits at the pilot's right";
    simhost::SetNumber("sim/graphics/view/pilots_head_psi", 75);
    CalcPilot2FennicHdg();
    EXPECT_NEAR(view(), 15, 1e-3);

    simhost::SetNumber("kv/fo/_pos_x", -0.5);
    simhost::SetNumber("kv/fo/_pos_z", 2);
    simhost::SetNumber("sim/graphics/view/pilots_head_psi", 350);
    CalcPilot2FennicHdg();
    EXPECT_TRUE(std::abs(view() - 350) < 1e-3 || std::abs(view() - 10) < 1e-3) << view();
    simhost::SetNumber("kv/fo/_pos_z", 3.048);
    const double before = view();
    CalcPilot2FennicHdg(); // the head where she sits
    EXPECT_EQ(view(), before);
}
