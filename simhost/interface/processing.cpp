// Flight loops and the simulator's clocks.
#include "XPLMProcessing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
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
    std::uintptr_t id = 0; // of one that was created; 0: it is known by callback and refcon
    XPLMFlightLoopPhaseType phase = xplm_FlightLoop_Phase_BeforeFlightModel;
    double lastCallSeconds = 0; // of the registration until the first call
    long long lastCallFrame = 0;
    // Due when either is reached.
    double dueSeconds = std::numeric_limits<double>::infinity();
    long long dueFrame = std::numeric_limits<long long>::max();
};

constinit CallbackList<FlightLoop> flightLoops;
constinit std::uintptr_t lastFlightLoopId = 0; // ids are not used twice

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

// Due as the interval says, counted from now or from its last call.
void Reschedule(FlightLoop &loop, float interval, bool isRelativeToNow) {
    Schedule(loop, interval, isRelativeToNow ? elapsedSeconds : loop.lastCallSeconds,
             isRelativeToNow ? frameNumber : loop.lastCallFrame);
}

FlightLoop NewFlightLoop(XPLMFlightLoop_f callback, void *refcon) {
    FlightLoop loop;
    loop.callback = callback;
    loop.refcon = refcon;
    loop.owner = currentRunning.plugin;
    loop.lastCallSeconds = elapsedSeconds;
    loop.lastCallFrame = frameNumber;
    return loop;
}

bool isRegistered(const FlightLoop &loop) {
    return loop.id == 0;
}

FlightLoop *FindCreated(XPLMFlightLoopID id) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(id);
    return flightLoops.FindWhere([&](const FlightLoop &loop) { return loop.id != 0 && loop.id == wanted; });
}

void RunPhase(CallbackList<FlightLoop>::Round &round, XPLMFlightLoopPhaseType phase) {
    round.Run([&](const FlightLoop &loop, std::size_t number) {
        const bool isDue = elapsedSeconds >= loop.dueSeconds - TimeTolerance || frameNumber >= loop.dueFrame;
        if (loop.phase != phase || !isDue) return true;
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

} // namespace

void AdvanceClock(double seconds) {
    elapsedSeconds += seconds;
    frameSeconds = seconds;
    frameNumber++;
}

double ElapsedSeconds() {
    return elapsedSeconds;
}

// There is no flight model between the phases: what a flight sets stands before both.
void RunFlightLoops() {
    CallbackList<FlightLoop>::Round round(flightLoops);
    RunPhase(round, xplm_FlightLoop_Phase_BeforeFlightModel);
    RunPhase(round, xplm_FlightLoop_Phase_AfterFlightModel);
}

void DropFlightLoops(XPLMPluginID plugin, LeftBehind &leftBehind) {
    flightLoops.Drop(plugin, "flight loop", leftBehind);
}

void ResetProcessing() {
    flightLoops.Clear();
    lastFlightLoopId = 0;
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
    FlightLoop loop = NewFlightLoop(inFlightLoop, inRefcon);
    Schedule(loop, inInterval, elapsedSeconds, frameNumber);
    flightLoops.Add(loop);
}

void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void *inRefcon) {
    flightLoops.Remove(inFlightLoop, inRefcon, isRegistered);
}

void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval, int inRelativeToNow,
                                       void *inRefcon) {
    FlightLoop *loop = flightLoops.Find(inFlightLoop, inRefcon, isRegistered);
    if (loop) Reschedule(*loop, inInterval, inRelativeToNow != 0);
}

XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t *inParams) {
    XPLMCreateFlightLoop_t given = {};
    CopyGiven(given, inParams);
    if (!given.callbackFunc) {
        ReportMisuse("XPLMCreateFlightLoop without a callback");
        return nullptr;
    }
    FlightLoop loop = NewFlightLoop(given.callbackFunc, given.refcon);
    loop.phase = given.phase == xplm_FlightLoop_Phase_AfterFlightModel ? given.phase : loop.phase;
    loop.id = ++lastFlightLoopId;
    flightLoops.Add(loop);
    return reinterpret_cast<XPLMFlightLoopID>(loop.id);
}

void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID) {
    flightLoops.Remove(FindCreated(inFlightLoopID));
}

void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval, int inRelativeToNow) {
    if (FlightLoop *loop = FindCreated(inFlightLoopID)) Reschedule(*loop, inInterval, inRelativeToNow != 0);
}
