// Degrees and radians.
#pragma once

// Ten decimals of pi, on purpose: more would change the last digits of every result.
const double deg2rad = 3.1415926535 / 180;
const double rad2deg = 180 / 3.1415926535;
