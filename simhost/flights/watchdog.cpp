// What the report of an end says, and what the child tells. How the two processes are made and watched is the
// system's own, in watchdog_posix.cpp and watchdog_windows.cpp.
#include "simhost/flights/watchdog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "simhost/flights/flight.h"
#include "simhost/flights/watch_report.h"
#include "simhost/number_text.h"

namespace simhost {

namespace {

FlightRecord ownRecord;

std::string NameOf(XPLMPluginID plugin) {
    const auto &name = flightRecord->names[static_cast<size_t>(plugin) % std::size(flightRecord->names)];
    if (name.plugin == plugin) return name.text;
    return flightRecord->loadingLibrary[0] != 0 ? flightRecord->loadingLibrary : "an unknown plug-in";
}

} // namespace

FlightRecord *flightRecord = &ownRecord;

void ReportEnd(const Running &running, const std::string &verb, const std::string &detail) {
    std::string line = "fennic-sim: ";
    if (running.plugin == XPLM_PLUGIN_XPLANE) {
        line += "the simulator itself " + verb;
    } else {
        const bool isPhase = std::strncmp(running.doing, "being ", 6) == 0; // "being loaded"
        line += NameOf(running.plugin) + " " + verb + (isPhase ? " while " : " in its ") + running.doing;
    }
    char time[24];
    FormatFlightTime(flightRecord->flightSeconds, time);
    line += detail + ", flight time " + time;
    if (flightRecord->line > 0 && running.plugin != XPLM_PLUGIN_XPLANE)
        line += ", at " + std::string(flightRecord->script) + ":" + std::to_string(flightRecord->line);
    std::fprintf(stderr, "%s\n", line.c_str());
}

double HangSeconds() {
    const char *limit = std::getenv("FENNIC_SIM_HANG_SECONDS");
    const double seconds = limit != nullptr ? std::strtod(limit, nullptr) : 0;
    return seconds >= 0.1 && seconds <= 1e6 ? seconds : 60;
}

void EndFlight(int status) {
    flightRecord->running = {};
    flightRecord->status = status;
    flightRecord->isEnded = true;
}

void TidyScratch(const std::string &root, bool keep, int status) {
    std::error_code failed;
    if (keep && status != ExitUsage)
        std::fprintf(stderr, "fennic-sim: kept %s\n", root.c_str());
    else if (!root.empty()) {
        // A working directory is not removed on every system.
        std::filesystem::current_path(std::filesystem::temp_directory_path(failed), failed);
        std::filesystem::remove_all(root, failed);
    }
}

void NameLoadingLibrary(const std::string &libraryPath) {
    std::snprintf(flightRecord->loadingLibrary, sizeof flightRecord->loadingLibrary, "%s",
                  libraryPath.c_str());
}

void NamePluginForReports(XPLMPluginID plugin, const std::string &name) {
    auto &kept = flightRecord->names[static_cast<size_t>(plugin) % std::size(flightRecord->names)];
    kept.plugin = plugin;
    std::snprintf(kept.text, sizeof kept.text, "%s", name.c_str());
}

} // namespace simhost
