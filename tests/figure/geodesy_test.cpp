// Angles against their definitions; directions against atan2; destinations against GeographicLib's geodesics.
// Distances are measured in flights/runways.lua.
#include <GeographicLib/Geodesic.hpp>
#include <cmath>
#include <gtest/gtest.h>

#include "figure/geodesy.h"

TEST(Geodesy, Angles) {
    EXPECT_EQ(NormalizeAngle(-10), 350);
    EXPECT_EQ(NormalizeAngle(360), 360);
    EXPECT_EQ(NormalizeAngle(720), 360);
    EXPECT_EQ(NormalizeAngle(725), 365);
    EXPECT_EQ(DeltaAngle(10, 350), 20);
    EXPECT_EQ(DeltaAngle(350, 10), -20);
    EXPECT_EQ(NormalizeDeltaAngle(-190), 170);
    EXPECT_EQ(NormalizeDeltaAngle(180), 180);
    EXPECT_EQ(DeltaAngleFromTo(350, 10), 20);
    EXPECT_EQ(DeltaAngleFromTo(10, 350), -20);
    EXPECT_EQ(DeltaAngleFromTo(0, 700), -20) << "two turns off";
    EXPECT_EQ(DeltaAngleFromToDir(350, 10, -1), -340);
    EXPECT_EQ(DeltaAngleFromToDir(10, 350, 1), 340);
    EXPECT_EQ(DeltaAngleFromToDir(10, 350, -1), -20);
    EXPECT_EQ(DeltaAngleFromToDir(10, 350, 0), -20);
}

TEST(Geodesy, DirectionsAndDistancesInAPlane) {
    for (int heading = 0; heading < 360; heading += 5) {
        float x = 0, z = 0;
        newXZfromDistHeading(100, -50, static_cast<float>(heading) - 30, 30, 1000, x, z);
        const double expected = std::atan2(x - 100, -(z + 50)) * 180 / M_PI;
        EXPECT_NEAR(DeltaAngleFromTo(CalcActualHdg(100, -50, x, z), static_cast<float>(expected)), 0, 1e-3);
        EXPECT_NEAR(DeltaAngleFromTo(CalcActualHdgFennic(100, -50, x, z), static_cast<float>(heading)), 0,
                    1e-3);
        EXPECT_EQ(CalcActualHdgDist(100, -50, x, z), 1);
        EXPECT_FLOAT_EQ(calc[0], 100 - x);
        EXPECT_FLOAT_EQ(calc[1], z + 50);
        EXPECT_NEAR(calc[2], 1000, 1e-2);
        EXPECT_NEAR(std::hypot(calc[3], calc[4]), 1000, 1e-2);
        EXPECT_NEAR(DeltaAngleFromTo(calc[5], static_cast<float>(heading)), 0, 0.05);
    }
    EXPECT_TRUE(std::isnan(CalcActualHdg(3, 4, 3, 4)));
    EXPECT_EQ(CalcDist(1, 2, 4, 6), 5);
}

TEST(Geodesy, DestinationsOnTheSphere) {
    const GeographicLib::Geodesic sphere(6371e3, 0);
    for (double lat : {-67.5, -0.25, 0.0, 47.45, 71.0})
        for (double lon : {-179.0, -122.3, 0.0, 13.5, 178.0})
            for (double heading : {0.0, 37.0, 90.0, 201.0, 333.0})
                for (double km : {0.5, 15.0, 800.0}) {
                    double wantLat = 0, wantLon = 0, lat2 = 0, lon2 = 0;
                    sphere.Direct(lat, lon, heading, km * 1000, wantLat, wantLon);
                    newLatLonDistKmTrueHDG(lat, lon, heading, km, lat2, lon2);
                    const double offLon =
                        std::remainder(lon2 - wantLon, 360) * std::cos(wantLat * M_PI / 180);
                    EXPECT_LT(std::hypot(lat2 - wantLat, offLon), 2e-5) // 2 m
                        << lat << " " << lon << " " << heading << " " << km;
                }
}
