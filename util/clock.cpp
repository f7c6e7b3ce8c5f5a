// Holds the clock's two values; the main loop advances them.
#include "util/clock.h"

double FlightTimeSEC = 0.0;
double FrpSEC = 0.0;
