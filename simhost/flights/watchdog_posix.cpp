// The parent waits for its child, looks ten times within the limit whether a call goes on, and hears through
// a pipe of the signals that it gets itself. The child takes no signals of its own for this: what a plug-in
// does to them, and to its clock, changes nothing, and a crash reaches a debugger or a core file as it is.
#include "simhost/flights/watchdog.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

#include "simhost/flights/flight.h"
#include "simhost/flights/watch_report.h"
#include "simhost/number_text.h"

#if defined(__SANITIZE_ADDRESS__)
#define UNDER_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define UNDER_ADDRESS_SANITIZER 1
#endif
#endif
#ifndef UNDER_ADDRESS_SANITIZER
#define UNDER_ADDRESS_SANITIZER 0
#endif

#if UNDER_ADDRESS_SANITIZER
extern "C" void __sanitizer_set_death_callback(void (*callback)());
#endif

namespace simhost {

namespace {

constexpr int TicksPerLimit = 10;
constexpr int ToldToEnd[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
constexpr int GraceMilliseconds = 100; // between two signals that a terminal sends to both processes

int signalPipe[2] = {-1, -1};

struct Watch {
    pid_t child = -1;
    std::string scratchRoot;
    bool keepScratch = false;
    double limitSeconds = 0;
    int ticks = 0;        // for which nothing has gone on
    unsigned entered = 0; // as of the last tick
    bool isStopped = false;
};

std::string SignalMeaning(int number) {
    switch (number) {
    case SIGSEGV: return "SIGSEGV, invalid memory access";
    case SIGBUS: return "SIGBUS, invalid memory access";
    case SIGFPE: return "SIGFPE, arithmetic error";
    case SIGILL: return "SIGILL, invalid instruction";
    case SIGABRT: return "SIGABRT, it ended itself";
    default: return "signal " + std::to_string(number) + ", " + strsignal(number);
    }
}

bool isCrash(int number) {
    return number == SIGSEGV || number == SIGBUS || number == SIGFPE || number == SIGILL || number == SIGABRT;
}

// ---- The parent ----

void OnSignal(int number) {
    const int before = errno;
    const char byte = static_cast<char>(number);
    if (write(signalPipe[1], &byte, 1) < 0) { // full: what was to be told is told
    }
    errno = before;
}

// Waits for signals; gives the one that tells this process to end, or 0. isQuiet: none came in this time.
int AwaitSignals(int milliseconds, bool &isQuiet) {
    pollfd readable{signalPipe[0], POLLIN, 0};
    isQuiet = poll(&readable, 1, milliseconds) == 0;
    int told = 0;
    for (char byte = 0; read(signalPipe[0], &byte, 1) == 1;)
        if (byte != SIGCHLD) told = byte;
    return told;
}

[[noreturn]] void Leave(const Watch &watch, int status) {
    TidyScratch(watch.scratchRoot, watch.keepScratch, status);
    std::fflush(nullptr);
    _exit(status);
}

// Ends as somebody who was sent the signal ends.
[[noreturn]] void LeaveBySignal(const Watch &watch, int number) {
    TidyScratch(watch.scratchRoot, watch.keepScratch, ExitCrashed);
    std::fflush(nullptr);
    std::signal(number, SIG_DFL);
    raise(number);
    _exit(128 + number);
}

void EndChild(const Watch &watch) {
    kill(watch.child, SIGKILL);
    while (waitpid(watch.child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

// Nobody reads what the flight prints, as in "fennic-sim … | head".
bool isOutputClosed() {
    pollfd outputs[2] = {{STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
    poll(outputs, 2, 0);
    return ((outputs[0].revents | outputs[1].revents) & POLLERR) != 0;
}

[[noreturn]] void AfterSignal(const Watch &watch, int number) {
    // A terminal tells both processes; the plug-in has nothing to do with it.
    bool isQuiet = false;
    const int told = AwaitSignals(isCrash(number) ? 0 : GraceMilliseconds, isQuiet);
    const bool isOfFlight = flightRecord->running.plugin == XPLM_PLUGIN_XPLANE && !isCrash(number);
    if (told != 0 || (number == SIGPIPE && isOutputClosed())) LeaveBySignal(watch, told ? told : number);
    if (isOfFlight && number != SIGKILL) LeaveBySignal(watch, number);
    if (flightRecord->isSanitizerReport)
        ReportEnd(flightRecord->running, "crashed", " (see the sanitizer's report above)");
    else if (flightRecord->exception[0] != 0)
        ReportEnd(flightRecord->running, "crashed", std::string(" (") + flightRecord->exception + ")");
    else
        ReportEnd(flightRecord->running, isCrash(number) ? "crashed" : "was ended",
                  " (" + SignalMeaning(number) + ")");
    Leave(watch, ExitCrashed);
}

[[noreturn]] void AfterExit(const Watch &watch, int status) {
    if (flightRecord->isSanitizerReport) {
        ReportEnd(flightRecord->running, "crashed", " (see the sanitizer's report above)");
        Leave(watch, status);
    }
    // The sanitizers have exit statuses of their own, for what is found at the very end.
    if (flightRecord->isEnded) Leave(watch, status != 0 ? status : flightRecord->status);
    // The call into the plug-in may have been unwound by then.
    const bool isUnwound = flightRecord->running.plugin == XPLM_PLUGIN_XPLANE;
    ReportEnd(isUnwound ? flightRecord->lastOfPlugin : flightRecord->running, "ended the program", "");
    Leave(watch, ExitCrashed);
}

// The child has ended, has been stopped, or goes on.
void LookAtChild(Watch &watch) {
    int status = 0;
    while (waitpid(watch.child, &status, WNOHANG | WUNTRACED | WCONTINUED) == watch.child) {
        if (WIFEXITED(status)) AfterExit(watch, WEXITSTATUS(status));
        if (WIFSIGNALED(status)) AfterSignal(watch, WTERMSIG(status));
        watch.isStopped = WIFSTOPPED(status);
        watch.ticks = 0;
    }
}

void OnTick(Watch &watch) {
    const bool isGoingOn = !flightRecord->isInside || watch.entered != flightRecord->entered;
    watch.entered = flightRecord->entered;
    if (isGoingOn && !watch.isStopped)
        watch.ticks = 0;
    else if (++watch.ticks >= TicksPerLimit) {
        EndChild(watch);
        if (watch.isStopped)
            ReportEnd(flightRecord->running, "stopped the program", "");
        else
            ReportEnd(flightRecord->running, "hangs",
                      ": no return within " + NumberText(watch.limitSeconds) + " s");
        Leave(watch, ExitCrashed);
    }
}

[[noreturn]] void WatchChild(Watch &watch) {
    const int tick = static_cast<int>(watch.limitSeconds * 1000 / TicksPerLimit);
    while (true) {
        bool isQuiet = false;
        if (const int told = AwaitSignals(tick, isQuiet)) {
            EndChild(watch);
            LeaveBySignal(watch, told);
        }
        LookAtChild(watch);
        if (isQuiet) OnTick(watch);
    }
}

// ---- The child ----

// A C++ exception that nothing caught. It must not be caught on its way: then the C++ runtime, finding no
// handler, ends with the plug-in's call still on the stack. Where plug-in and program do not share a runtime,
// the plug-in's tells what was thrown, and ends in abort.
[[noreturn]] void OnTerminate() {
    std::snprintf(flightRecord->exception, sizeof flightRecord->exception, "std::terminate was called");
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::exception &exception) {
            std::snprintf(flightRecord->exception, sizeof flightRecord->exception,
                          "a C++ exception left it: %s", exception.what());
        } catch (...) {
            std::snprintf(flightRecord->exception, sizeof flightRecord->exception, "a C++ exception left it");
        }
    }
    std::abort();
}

// Somebody has ended the main thread alone; others, such as those of OpenGL's driver, may go on for ever.
void OnMainThreadGone(void *) {
    std::fflush(nullptr);
    _exit(ExitFailed);
}

#if UNDER_ADDRESS_SANITIZER
void AfterSanitizerReport() {
    flightRecord->isSanitizerReport = true;
}
#endif

void PrepareChild() {
    close(signalPipe[0]);
    close(signalPipe[1]);
    std::set_terminate(OnTerminate);
    pthread_key_t key = 0;
    if (pthread_key_create(&key, OnMainThreadGone) == 0) pthread_setspecific(key, flightRecord);
#if UNDER_ADDRESS_SANITIZER
    __sanitizer_set_death_callback(AfterSanitizerReport);
    // The undefined-behaviour sanitizer has a callback of its own, behind the same name.
    if (void *other = dlopen("libubsan.so.1", RTLD_LAZY | RTLD_NOLOAD)) {
        using Setter = void (*)(void (*)());
        if (void *setter = dlsym(other, "__sanitizer_set_death_callback"))
            reinterpret_cast<Setter>(setter)(AfterSanitizerReport);
    }
#endif
}

bool MakeSignalPipe() {
    if (pipe(signalPipe) != 0) return false;
    for (const int end : signalPipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

// What the process had for a signal before it was watched over.
struct Disposition {
    int number = 0;
    struct sigaction before = {};
};

} // namespace

bool FlyUnderWatch(const std::string &scratchRoot, bool keepScratch, std::string &error) {
    Watch watch;
    watch.scratchRoot = scratchRoot;
    watch.keepScratch = keepScratch;
    watch.limitSeconds = HangSeconds();
    void *shared =
        mmap(nullptr, sizeof(FlightRecord), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED || !MakeSignalPipe()) {
        error = std::string("cannot watch over a flight: ") + std::strerror(errno);
        return false;
    }
    flightRecord = new (shared) FlightRecord;

    Disposition dispositions[std::size(ToldToEnd) + 1];
    for (size_t i = 0; i < std::size(dispositions); ++i) {
        const bool isOfChild = i == std::size(ToldToEnd);
        dispositions[i].number = isOfChild ? SIGCHLD : ToldToEnd[i];
        struct sigaction action = {};
        action.sa_handler = OnSignal;
        sigaction(dispositions[i].number, nullptr, &dispositions[i].before);
        const bool isIgnored = dispositions[i].before.sa_handler == SIG_IGN; // as nohup does
        if (isOfChild || !isIgnored) sigaction(dispositions[i].number, &action, nullptr);
    }
    std::fflush(nullptr); // what is in the buffers must not be printed twice
    const pid_t parent = getpid();
    watch.child = fork();
    if (watch.child > 0) WatchChild(watch);
    if (watch.child < 0) error = std::string("cannot watch over a flight: ") + std::strerror(errno);
    for (const Disposition &disposition : dispositions)
        sigaction(disposition.number, &disposition.before, nullptr);
    if (watch.child < 0) return false;
#if defined(__linux__)
    prctl(PR_SET_PDEATHSIG, SIGKILL); // a flight whose parent was killed is over
#endif
    if (getppid() != parent) _exit(ExitCrashed);
    PrepareChild();
    return true;
}

} // namespace simhost
