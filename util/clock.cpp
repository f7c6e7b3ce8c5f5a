// Holds the clock's two values; the main loop advances them.
#include "util/clock.h"
#include "util/make_fresh.h"

double FlightTimeSEC = 0.0;
double FrpSEC = 0.0;

void ResetClock() {
    MakeFresh(FlightTimeSEC, FrpSEC);
}
