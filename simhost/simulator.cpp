// The simulator as a whole: its reset, its frame, its flight time.
#include "simhost/simulator.h"

#include <cmath>

#include "XPLMProcessing.h"
#include "simhost/drawing/screen.h"
#include "simhost/flights/watchdog.h"
#include "simhost/interface/datarefs.h"
#include "simhost/widgets/widgets.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constinit double flightSeconds = 0;
constinit float publishedFlightSeconds = 0;

constexpr double Pi = 3.14159265358979323846;

// Their records outlast every reset, so they are looked up once.
struct ClockDatarefs {
    XPLMDataRef paused = XPLMFindDataRef("sim/time/paused");
    XPLMDataRef flightTime = XPLMFindDataRef("sim/time/total_flight_time_sec");
    XPLMDataRef runningTime = XPLMFindDataRef("sim/time/total_running_time_sec");
    XPLMDataRef framePeriod = XPLMFindDataRef("sim/operation/misc/frame_rate_period");
    XPLMDataRef sinWave = XPLMFindDataRef("sim/graphics/animation/sin_wave_2"); // period 2 s
};
const ClockDatarefs &Clock() {
    static const ClockDatarefs clock;
    return clock;
}

// The flight time can be written as a dataref too, by plug-ins and from outside.
void TakeWrittenFlightTime() {
    const float written = XPLMGetDataf(Clock().flightTime);
    if (written != publishedFlightSeconds) flightSeconds = static_cast<double>(written);
}

void PublishFlightTime() {
    publishedFlightSeconds = static_cast<float>(flightSeconds);
    StoreFloat(Clock().flightTime, publishedFlightSeconds);
    flightRecord->flightSeconds = flightSeconds;
}

void PublishClock(double frameSeconds) {
    PublishFlightTime();
    StoreFloat(Clock().runningTime, XPLMGetElapsedTime());
    StoreFloat(Clock().framePeriod, static_cast<float>(frameSeconds));
    StoreFloat(Clock().sinWave, static_cast<float>(std::sin(ElapsedSeconds() * Pi)));
}

} // namespace

void ResetSimulator() {
    ResetPlugins();
    ResetProcessing();
    ResetWidgets();
    ResetWindows();
    ResetDisplay();
    ResetCommands();
    ResetMenus();
    ResetUtilities();
    ResetDatarefs();
    ResetWorld();
    ResetScreen();
    ResetInstances();
    ResetScenery();
    ResetCamera();
    ResetPlanes();
    flightSeconds = 0;
    publishedFlightSeconds = 0;
}

void StepFrame(double seconds, bool withPixels) {
    RunningScope scope(XPLM_PLUGIN_XPLANE, "a frame");
    TakeWrittenFlightTime();
    AdvanceClock(seconds);
    if (XPLMGetDatai(Clock().paused) == 0) flightSeconds += seconds;
    PublishClock(seconds);
    UpdateLocalPosition();
    ContinueHeldCommands();
    ContinueMouse();
    FinishLoadingObjects();
    RunFlightLoops();
    RunCamera();
    DrawFrame(withPixels);
}

void SetPaused(bool paused) {
    SetNumber("sim/time/paused", paused ? 1 : 0);
}

double FlightTimeSeconds() {
    TakeWrittenFlightTime();
    return flightSeconds;
}

void SetFlightTimeSeconds(double seconds) {
    RunningScope scope(XPLM_PLUGIN_XPLANE, "setting the flight time");
    flightSeconds = seconds;
    PublishFlightTime();
}

} // namespace simhost
