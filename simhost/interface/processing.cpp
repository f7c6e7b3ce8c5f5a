// Flight loops and the simulator's clocks. A callback may register, unregister and reschedule any callback,
// itself included, while the list is being run: entries are only marked here and swept out after the run.
#include "XPLMProcessing.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct FlightLoop {
    XPLMFlightLoop_f callback = nullptr; // null: unregistered, swept out after the run
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    double lastCallSeconds = 0; // of the registration until the first call
    long long lastCallFrame = 0;
    // Due when either is reached.
    double dueSeconds = std::numeric_limits<double>::infinity();
    long long dueFrame = std::numeric_limits<long long>::max();
};

constinit std::vector<FlightLoop> flightLoops;
constinit bool isRunningFlightLoops = false;

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

FlightLoop *FindFlightLoop(XPLMFlightLoop_f callback, const void *refcon) {
    auto found = std::find_if(flightLoops.begin(), flightLoops.end(), [&](const FlightLoop &loop) {
        return loop.callback == callback && loop.refcon == refcon;
    });
    return callback && found != flightLoops.end() ? &*found : nullptr;
}

void SweepFlightLoops() {
    if (isRunningFlightLoops) return;
    std::erase_if(flightLoops, [](const FlightLoop &loop) { return !loop.callback; });
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
    isRunningFlightLoops = true;
    // Those registered by a callback of this run wait for the next frame. The list may move in memory
    // during a call, so nothing is kept across it.
    const std::size_t count = flightLoops.size();
    for (std::size_t i = 0; i < count; i++) {
        const FlightLoop loop = flightLoops[i];
        if (!loop.callback || !isPluginEnabled(loop.owner)) continue;
        if (elapsedSeconds < loop.dueSeconds - TimeTolerance && frameNumber < loop.dueFrame) continue;
        float interval = 0;
        {
            RunningScope scope(loop.owner, "flight loop");
            interval = loop.callback(static_cast<float>(elapsedSeconds - loop.lastCallSeconds),
                                     static_cast<float>(frameSeconds), XPLMGetCycleNumber(), loop.refcon);
        }
        if (!flightLoops[i].callback) continue;
        flightLoops[i].lastCallSeconds = elapsedSeconds;
        flightLoops[i].lastCallFrame = frameNumber;
        Schedule(flightLoops[i], interval, elapsedSeconds, frameNumber);
    }
    isRunningFlightLoops = false;
    SweepFlightLoops();
}

void DropFlightLoops(XPLMPluginID plugin, LeftBehind &leftBehind) {
    for (FlightLoop &loop : flightLoops) {
        if (!loop.callback || loop.owner != plugin) continue;
        leftBehind.errors.push_back("flight loop "
                                    + DescribeFunction(reinterpret_cast<void *>(loop.callback)));
        loop.callback = nullptr;
    }
    SweepFlightLoops();
}

void ResetProcessing() {
    flightLoops.clear();
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
    flightLoops.push_back(loop);
}

void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void *inRefcon) {
    FlightLoop *loop = FindFlightLoop(inFlightLoop, inRefcon);
    if (!loop) return;
    loop->callback = nullptr;
    SweepFlightLoops();
}

void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval, int inRelativeToNow,
                                       void *inRefcon) {
    FlightLoop *loop = FindFlightLoop(inFlightLoop, inRefcon);
    if (!loop) return;
    if (inRelativeToNow) {
        Schedule(*loop, inInterval, elapsedSeconds, frameNumber);
    } else {
        Schedule(*loop, inInterval, loop->lastCallSeconds, loop->lastCallFrame);
    }
}
