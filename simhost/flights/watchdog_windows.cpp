// One process: a filter sees its crash, a thread whether a call goes on, and what runs at every exit whether
// the flight has come to its end.
#include "simhost/flights/watchdog.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <windows.h>

#include "simhost/flights/flight.h"
#include "simhost/flights/watch_report.h"
#include "simhost/number_text.h"

namespace simhost {

namespace {

constexpr int TicksPerLimit = 10;

std::string watchedScratch;
bool isScratchKept = false;

// Files that are open cannot be removed here.
void Tidy(int status) {
    _fcloseall();
    TidyScratch(watchedScratch, isScratchKept, status);
}

[[noreturn]] void LeaveAfter(const std::string &verb, const std::string &detail) {
    const bool isUnwound = flightRecord->running.plugin == XPLM_PLUGIN_XPLANE;
    ReportEnd(isUnwound ? flightRecord->lastOfPlugin : flightRecord->running, verb, detail);
    Tidy(ExitCrashed);
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), ExitCrashed);
    std::abort();
}

LONG CALLBACK OnException(EXCEPTION_POINTERS *exception) {
    char code[40];
    std::snprintf(code, sizeof code, " (exception 0x%08lX)", exception->ExceptionRecord->ExceptionCode);
    LeaveAfter("crashed", code);
}

void OnAbort(int) {
    LeaveAfter("crashed", " (it ended itself)");
}

void OnExit() {
    if (!flightRecord->isEnded) LeaveAfter("ended the program", "");
    Tidy(flightRecord->status);
}

[[noreturn]] void Watch() {
    const double limit = HangSeconds();
    unsigned entered = 0;
    int ticks = 0;
    while (true) {
        std::this_thread::sleep_for(std::chrono::duration<double>(limit / TicksPerLimit));
        const bool isGoingOn = !flightRecord->isInside || entered != flightRecord->entered;
        entered = flightRecord->entered;
        ticks = isGoingOn ? 0 : ticks + 1;
        if (ticks >= TicksPerLimit) LeaveAfter("hangs", ": no return within " + NumberText(limit) + " s");
    }
}

} // namespace

bool FlyUnderWatch(const std::string &scratchRoot, bool keepScratch, std::string &) {
    watchedScratch = scratchRoot;
    isScratchKept = keepScratch;
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // no dialogue waits for somebody
    SetUnhandledExceptionFilter(OnException);
    std::signal(SIGABRT, OnAbort);
    std::atexit(OnExit);
    std::thread(Watch).detach();
    return true;
}

} // namespace simhost
