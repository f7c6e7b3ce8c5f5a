// Flight loops, the clocks and draw callbacks.
#include "XPLMProcessing.h"

#include <functional>
#include <string>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "tests/simhost/as_plugin.h"

using namespace simhost;

namespace {

// A flight loop that notes its calls in a common list and answers with what act returns.
struct Loop {
    std::string name;
    std::function<float()> act = [] { return -1.0f; };
    float sinceLastCall = 0, sinceLastLoop = 0;
    int counter = 0;
};
std::vector<std::string> calls;

float Call(float sinceLastCall, float sinceLastLoop, int counter, void *refcon) {
    auto *loop = static_cast<Loop *>(refcon);
    calls.push_back(loop->name);
    loop->sinceLastCall = sinceLastCall;
    loop->sinceLastLoop = sinceLastLoop;
    loop->counter = counter;
    return loop->act();
}

class Processing : public AsPlugin {
protected:
    static int CallsIn(int frames, double seconds) {
        calls.clear();
        for (int i = 0; i < frames; i++) StepFrame(seconds);
        return static_cast<int>(calls.size());
    }
};

TEST_F(Processing, IntervalsInFramesAndSeconds) {
    Loop loop{"a"};
    XPLMRegisterFlightLoopCallback(Call, -1, &loop);
    EXPECT_EQ(CallsIn(5, 0.02), 5);
    loop.act = [] { return -3.0f; };
    EXPECT_EQ(CallsIn(1, 0.02), 1);
    EXPECT_EQ(CallsIn(9, 0.02), 3);
    EXPECT_FLOAT_EQ(loop.sinceLastCall, 0.06f);
    EXPECT_FLOAT_EQ(loop.sinceLastLoop, 0.02f);
    // Every 0.1 s in frames of a 20th: each second frame, in spite of rounding.
    loop.act = [] { return 0.1f; };
    EXPECT_EQ(CallsIn(3, 0.05), 1);
    EXPECT_EQ(CallsIn(100, 0.05), 50);
    // An interval shorter than a frame is one call a frame.
    loop.act = [] { return 0.001f; };
    CallsIn(2, 0.05);
    EXPECT_EQ(CallsIn(10, 0.05), 10);
    loop.act = [] { return 0.0f; };
    EXPECT_EQ(CallsIn(3, 0.05), 1);
    EXPECT_EQ(CallsIn(100, 1), 0) << "stopped";
    XPLMSetFlightLoopCallbackInterval(Call, -1, 1, &loop);
    EXPECT_EQ(CallsIn(3, 0.05), 1) << "set again";
}

TEST_F(Processing, IntervalAtRegistrationAndRelativeToWhat) {
    Loop later{"later"}, never{"never"};
    XPLMRegisterFlightLoopCallback(Call, 1.0f, &later);
    XPLMRegisterFlightLoopCallback(Call, 0, &never);
    EXPECT_EQ(CallsIn(9, 0.1), 0);
    EXPECT_EQ(CallsIn(1, 0.1), 1);
    // It was called at 1.0 s; now it is 2.0 s.
    later.act = [] { return 0.0f; };
    EXPECT_EQ(CallsIn(10, 0.1), 1);
    CallsIn(10, 0.1);
    XPLMSetFlightLoopCallbackInterval(Call, 2.0f, 0, &later); // since the last call, a second ago
    EXPECT_EQ(CallsIn(11, 0.1), 1);
    CallsIn(10, 0.1);
    XPLMSetFlightLoopCallbackInterval(Call, 2.0f, 1, &later);
    EXPECT_EQ(CallsIn(19, 0.1), 0);
    EXPECT_EQ(CallsIn(1, 0.1), 1);
}

TEST_F(Processing, OrderAndChangesFromInsideACallback) {
    Loop a{"a"}, b{"b"}, c{"c"}, late{"late"};
    XPLMRegisterFlightLoopCallback(Call, -1, &a);
    XPLMRegisterFlightLoopCallback(Call, -1, &b);
    XPLMRegisterFlightLoopCallback(Call, -1, &c);
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"a", "b", "c"}));
    a.act = [&] {
        // Itself, one that comes later, and a newcomer, who waits for the next frame.
        XPLMUnregisterFlightLoopCallback(Call, &a);
        XPLMUnregisterFlightLoopCallback(Call, &b);
        for (int i = 0; i < 100; i++) XPLMRegisterFlightLoopCallback(Call, 0, &b);
        XPLMRegisterFlightLoopCallback(Call, -1, &late);
        return -1.0f;
    };
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"a", "c"}));
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"c", "late"}));
    EXPECT_EQ(late.counter, c.counter);
    EXPECT_EQ(late.counter, XPLMGetCycleNumber());
}

TEST_F(Processing, LoopsGoOnWhilePausedButTheFlightTimeStands) {
    Loop everyFrame{"f"}, everySecond{"s"};
    everySecond.act = [] { return 1.0f; };
    XPLMRegisterFlightLoopCallback(Call, -1, &everyFrame);
    XPLMRegisterFlightLoopCallback(Call, 1, &everySecond);
    CallsIn(20, 0.05);
    SetPaused(true);
    EXPECT_EQ(CallsIn(40, 0.05), 42);
    EXPECT_DOUBLE_EQ(FlightTimeSeconds(), 1);
    EXPECT_FLOAT_EQ(XPLMGetElapsedTime(), 3);
    SetNumber("sim/time/paused", 0);
    SetNumber("sim/time/total_flight_time_sec", 86400); // it may be written like any other dataref
    for (int i = 0; i < 1000; i++) StepFrame(0.001);
    EXPECT_NEAR(FlightTimeSeconds(), 86401, 1e-6) << "a float alone would lose frames this short";
}

TEST_F(Processing, CreatedLoopsWaitForTheirScheduleAndRunByPhase) {
    Loop a{"a"}, late{"late"}, early{"early"};
    const auto create = [](Loop &loop, XPLMFlightLoopPhaseType phase) {
        XPLMCreateFlightLoop_t given = {sizeof given, phase, Call, &loop};
        return XPLMCreateFlightLoop(&given);
    };
    const XPLMFlightLoopID after = create(late, xplm_FlightLoop_Phase_AfterFlightModel);
    const XPLMFlightLoopID before = create(early, xplm_FlightLoop_Phase_BeforeFlightModel);
    XPLMRegisterFlightLoopCallback(Call, -1, &a);
    XPLMSetFlightLoopCallbackInterval(Call, -1, 1, &late); // not theirs
    XPLMUnregisterFlightLoopCallback(Call, &late);
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"a"}));
    XPLMScheduleFlightLoop(after, -1, 1);
    XPLMScheduleFlightLoop(before, -1, 1);
    late.act = [&] {
        XPLMDestroyFlightLoop(before);
        XPLMDestroyFlightLoop(after);
        return -1.0f;
    };
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"early", "a", "late"}));
    XPLMScheduleFlightLoop(after, -1, 1);
    EXPECT_EQ(CallsIn(3, 0.02), 3) << "destroyed";
}

struct Painter {
    const char *name;
    int answer = 1;
};

int Paint(XPLMDrawingPhase phase, int before, void *refcon) {
    const auto *painter = static_cast<Painter *>(refcon);
    calls.push_back(painter->name + std::to_string(phase) + (before ? "before" : "after"));
    if (painter->answer < 0) XPLMUnregisterDrawCallback(Paint, phase, before, refcon);
    return painter->answer;
}

TEST_F(Processing, DrawCallbacksRunAfterTheLoopsInTheOrderOfPhases) {
    Loop loop{"loop"};
    Painter p{"p"}, q{"q"}, once{"once", -1};
    EXPECT_EQ(XPLMRegisterDrawCallback(Paint, xplm_Phase_Window, 0, &p), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(Paint, xplm_Phase_Modern3D, 0, &q), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(Paint, xplm_Phase_Window, 1, &q), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(Paint, xplm_Phase_Window, 0, &once), 1);
    EXPECT_EQ(XPLMRegisterDrawCallback(Paint, 12345, 0, &p), 0) << "no such phase";
    EXPECT_EQ(XPLMRegisterDrawCallback(nullptr, xplm_Phase_Window, 0, &p), 0);
    XPLMRegisterFlightLoopCallback(Call, -1, &loop);
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"loop", "q31after", "q50before", "p50after", "once50after"}));
    EXPECT_EQ(XPLMUnregisterDrawCallback(Paint, xplm_Phase_Window, 1, &p), 0) << "registered as after";
    EXPECT_EQ(XPLMUnregisterDrawCallback(Paint, xplm_Phase_Window, 0, &p), 1);
    CallsIn(1, 0.02);
    EXPECT_EQ(calls, (std::vector<std::string>{"loop", "q31after", "q50before"}));
}

} // namespace
