// Reports of crashes and hangs. Everything below the handlers is async-signal-safe: fixed buffers, write,
// fork and exec; Lua's stack is only read, and it stands still while a plug-in's code runs.
//
// A timer ticks ten times within the limit instead of being set for each call, so that a frame costs two
// stores and no system call. An exception that leaves a plug-in must not be caught on its way: then the
// C++ runtime, finding no handler, ends in abort with the plug-in's call still on the stack.
#include "simhost/watchdog.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include <dlfcn.h>
#include <lua.hpp>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "simhost/number_text.h"
#include "simhost/plugins.h"
#include "simhost/simulator.h"

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

constexpr int NAMED_PLUGINS = 32;
constexpr int TICKS_PER_LIMIT = 10;

char scratchFolder[4096];
bool isScratchKept = false;
char loadingLibrary[512];
char pluginNames[NAMED_PLUGINS][256];
lua_State *flightState = nullptr;
double hangSeconds = 10;
alignas(16) char alternateStack[128 * 1024];

void CopyText(char *target, size_t size, const char *text) {
    std::snprintf(target, size, "%s", text);
}

// One line for stderr, put together without allocating.
struct Report {
    char text[2048];
    size_t length = 0;

    Report &operator<<(const char *piece) {
        const size_t room = sizeof text - length;
        const size_t count = strnlen(piece, room);
        std::memcpy(text + length, piece, count);
        length += count;
        return *this;
    }
    void Write() {
        *this << "\n";
        if (write(STDERR_FILENO, text, length) < 0) return;
    }
};

const char *NameOf(XPLMPluginID plugin) {
    if (plugin >= 0 && plugin < NAMED_PLUGINS && pluginNames[plugin][0] != 0) return pluginNames[plugin];
    return loadingLibrary[0] != 0 ? loadingLibrary : "an unknown plug-in";
}

// ", flight time 00:12.3, at demo.lua:12": the innermost line of the flight.
void AddWhere(Report &report) {
    char time[24];
    FormatFlightTime(FlightTimeSeconds(), time);
    report << ", flight time " << time;
    if (flightState == nullptr || WatchedCall::inside == 0) return;
    lua_Debug frame;
    for (int level = 0; lua_getstack(flightState, level, &frame) != 0; ++level) {
        lua_getinfo(flightState, "Sl", &frame);
        if (frame.currentline <= 0) continue;
        char line[16];
        *std::to_chars(line, line + sizeof line - 1, frame.currentline).ptr = 0;
        report << ", at " << frame.short_src << ":" << line;
        return;
    }
}

void RemoveScratchFolder() {
    if (scratchFolder[0] == 0) return;
    if (isScratchKept) {
        Report report;
        report << "fennic-sim: kept " << scratchFolder;
        report.Write();
        return;
    }
    // Should the heap be in such a state that fork does not come back, the program still ends.
    std::signal(SIGALRM, SIG_DFL);
    itimerval once{{0, 0}, {20, 0}};
    setitimer(ITIMER_REAL, &once, nullptr);
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/rm", "rm", "-rf", "--", scratchFolder, static_cast<char *>(nullptr));
        _exit(127);
    }
    int status = 0;
    if (child > 0) waitpid(child, &status, 0);
}

void WriteReport(const char *verb, const char *detail) {
    const Running running = CurrentlyRunning();
    Report report;
    if (running.plugin == XPLM_PLUGIN_XPLANE) {
        report << "fennic-sim: the simulator itself " << verb << detail;
    } else {
        const bool isPhase = std::strncmp(running.doing, "being ", 6) == 0; // "being loaded"
        report << "fennic-sim: " << NameOf(running.plugin) << " " << verb
               << (isPhase ? " while " : " in its ") << running.doing << detail;
    }
    AddWhere(report);
    report.Write();
}

// One line, and the end.
[[noreturn]] void EndWithReport(const char *verb, const char *detail) {
    WriteReport(verb, detail);
    RemoveScratchFolder();
    _exit(EXIT_CRASHED);
}

const char *SignalMeaning(int number) {
    switch (number) {
    case SIGSEGV: return " (SIGSEGV, invalid memory access)";
    case SIGBUS: return " (SIGBUS, invalid memory access)";
    case SIGFPE: return " (SIGFPE, arithmetic error)";
    case SIGILL: return " (SIGILL, invalid instruction)";
    default: return " (SIGABRT, it ended itself)";
    }
}

void OnCrash(int number) {
    EndWithReport("crashed", SignalMeaning(number));
}

#if UNDER_ADDRESS_SANITIZER
void AfterSanitizerReport() {
    WriteReport("crashed", " (see the sanitizer's report above)");
    RemoveScratchFolder();
}
#endif

void OnTick(int) {
    static std::sig_atomic_t watched = 0;
    static int ticks = 0;
    if (WatchedCall::inside == 0 || watched != WatchedCall::entered) {
        watched = WatchedCall::entered;
        ticks = 0;
        return;
    }
    if (++ticks < TICKS_PER_LIMIT) return;
    char detail[64] = ": no return within ";
    char *end = detail + std::strlen(detail);
    end = std::to_chars(end, detail + sizeof detail - 3, hangSeconds).ptr;
    std::memcpy(end, " s", 3);
    EndWithReport("hangs", detail);
}

// A plug-in that ends the whole program.
void OnExit() {
    if (WatchedCall::inside != 0) EndWithReport("ended the program", "");
}

void OnToldToEnd(int number) {
    RemoveScratchFolder();
    std::signal(number, SIG_DFL);
    raise(number);
}

// A C++ exception that nothing caught. Plug-ins that carry a C++ runtime of their own end in abort instead.
[[noreturn]] void OnTerminate() {
    char detail[512] = " (a C++ exception left it)";
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::exception &exception) {
            std::snprintf(detail, sizeof detail, " (a C++ exception left it: %s)", exception.what());
        } catch (...) { // nothing is known of it
        }
    }
    EndWithReport("crashed", detail);
}

void Handle(int number, void (*handler)(int), int flags) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

} // namespace

void StartWatchdog() {
    if (const char *limit = std::getenv("FENNIC_SIM_HANG_SECONDS")) {
        const double seconds = std::strtod(limit, nullptr);
        if (seconds >= 0.1 && seconds <= 1e6) hangSeconds = seconds;
    }
#if UNDER_ADDRESS_SANITIZER
    __sanitizer_set_death_callback(AfterSanitizerReport);
    // The undefined-behaviour sanitizer has a callback of its own, behind the same name.
    if (void *other = dlopen("libubsan.so.1", RTLD_LAZY | RTLD_NOLOAD)) {
        using Setter = void (*)(void (*)());
        if (void *setter = dlsym(other, "__sanitizer_set_death_callback"))
            reinterpret_cast<Setter>(setter)(AfterSanitizerReport);
    }
#endif
    const int once = static_cast<int>(SA_ONSTACK | SA_RESETHAND);
    if (!UNDER_ADDRESS_SANITIZER) { // which has an alternate stack of its own
        stack_t stack = {};
        stack.ss_sp = alternateStack;
        stack.ss_size = sizeof alternateStack;
        sigaltstack(&stack, nullptr);
        for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) Handle(number, OnCrash, once);
    }
    Handle(SIGABRT, OnCrash, once);
    std::set_terminate(OnTerminate);
    std::atexit(OnExit);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) Handle(number, OnToldToEnd, once);

    Handle(SIGALRM, OnTick, SA_ONSTACK | SA_RESTART);
    const double tick = hangSeconds / TICKS_PER_LIMIT;
    itimerval timer;
    timer.it_interval.tv_sec = static_cast<time_t>(tick);
    timer.it_interval.tv_usec =
        static_cast<suseconds_t>((tick - static_cast<double>(timer.it_interval.tv_sec)) * 1e6);
    timer.it_value = timer.it_interval;
    setitimer(ITIMER_REAL, &timer, nullptr);
}

void NameScratchFolder(const char *path, bool keep) {
    CopyText(scratchFolder, sizeof scratchFolder, path);
    isScratchKept = keep;
}

void NameLoadingLibrary(const char *libraryPath) {
    CopyText(loadingLibrary, sizeof loadingLibrary, libraryPath);
}

void NamePluginForReports(XPLMPluginID plugin, const char *name) {
    if (plugin >= 0 && plugin < NAMED_PLUGINS)
        CopyText(pluginNames[plugin], sizeof pluginNames[plugin], name);
}

void NameFlightState(lua_State *lua) {
    flightState = lua;
}

} // namespace simhost
