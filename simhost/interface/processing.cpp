// Flight loops and the simulator's clocks.
#include "XPLMProcessing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "simhost/interface/callback_list.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct FlightLoop {
    XPLMFlightLoop_f callback = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    double lastCallSeconds = 0; // of the registration until the first call
    long long lastCallFrame = 0;
    // Due when either is reached.
    double dueSeconds = std::numeric_limits<double>::infinity();
    long long dueFrame = std::numeric_limits<long long>::max();
};

constinit CallbackList<FlightLoop> flightLoops;

constinit double elapsedSeconds = 0; // since the reset; goes on while paused
constinit double frameSeconds = 0;   // length of the current frame
constinit long long frameNumber = 0;

// A frame that ends a hair before an interval is over, by rounding alone, is late enough.
constexpr double TimeTolerance = 1e-6;

void Schedule(FlightLoop &loop, float interval, double fromSeconds, long long fromFrame) {
    loop.dueSeconds = std::numeric_limits<double>::infinity();
    loop.dueFrame = std::numeric_limits<long long>::max();
    if (interval > 0) {
        loop.dueSeconds = fromSeconds + interval;
    } else if (interval < 0) {
        loop.dueFrame = fromFrame + static_cast<long long>(std::ceil(std::min(-interval, 1e9f)));
    }
}

bool isAny(const FlightLoop &) {
    return true;
}

} // namespace

void AdvanceClock(double seconds) {
    elapsedSeconds += seconds;
    frameSeconds = seconds;
    frameNumber++;
}

double ElapsedSeconds() {
    return elapsedSeconds;
}

void RunFlightLoops() {
    CallbackList<FlightLoop>::Round(flightLoops).Run([](const FlightLoop &loop, std::size_t number) {
        const bool isDue = elapsedSeconds >= loop.dueSeconds - TimeTolerance || frameNumber >= loop.dueFrame;
        if (!isDue) return true;
        float interval = 0;
        {
            RunningScope scope(loop.owner, "flight loop");
            interval = loop.callback(static_cast<float>(elapsedSeconds - loop.lastCallSeconds),
                                     static_cast<float>(frameSeconds), XPLMGetCycleNumber(), loop.refcon);
        }
        if (FlightLoop *called = flightLoops.At(number)) {
            called->lastCallSeconds = elapsedSeconds;
            called->lastCallFrame = frameNumber;
            Schedule(*called, interval, elapsedSeconds, frameNumber);
        }
        return true;
    });
}

void DropFlightLoops(XPLMPluginID plugin, LeftBehind &leftBehind) {
    flightLoops.Drop(plugin, "flight loop", leftBehind);
}

void ResetProcessing() {
    flightLoops.Clear();
    elapsedSeconds = 0;
    frameSeconds = 0;
    frameNumber = 0;
}

} // namespace simhost

using namespace simhost;

float XPLMGetElapsedTime(void) {
    return static_cast<float>(elapsedSeconds);
}

int XPLMGetCycleNumber(void) {
    return static_cast<int>(frameNumber & std::numeric_limits<int>::max());
}

void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval, void *inRefcon) {
    if (!inFlightLoop) {
        ReportMisuse("XPLMRegisterFlightLoopCallback without a callback");
        return;
    }
    FlightLoop loop;
    loop.callback = inFlightLoop;
    loop.refcon = inRefcon;
    loop.owner = currentRunning.plugin;
    loop.lastCallSeconds = elapsedSeconds;
    loop.lastCallFrame = frameNumber;
    Schedule(loop, inInterval, elapsedSeconds, frameNumber);
    flightLoops.Add(loop);
}

void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void *inRefcon) {
    flightLoops.Remove(inFlightLoop, inRefcon, isAny);
}

void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval, int inRelativeToNow,
                                       void *inRefcon) {
    FlightLoop *loop = flightLoops.Find(inFlightLoop, inRefcon, isAny);
    if (!loop) return;
    if (inRelativeToNow) {
        Schedule(*loop, inInterval, elapsedSeconds, frameNumber);
    } else {
        Schedule(*loop, inInterval, loop->lastCallSeconds, loop->lastCallFrame);
    }
}
