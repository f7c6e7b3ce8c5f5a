// Nothing is allocated here: what is thrown most often where memory is short is that there is none.
#include "util/guard.h"

#include <cstdio>
#include <exception>

#include "XPLMUtilities.h"

namespace {

const size_t MostPlaces = 64; // more than there are; the places after them are told each time

const char *toldPlaces[MostPlaces] = {};
size_t toldCount = 0;

bool isTold(const char *place) {
    const char **const end = toldPlaces + toldCount;
    if (std::find(toldPlaces, end, place) != end) return true;
    if (toldCount < MostPlaces) toldPlaces[toldCount++] = place;
    return false;
}

void Log(const char *place, const char *what) {
    char line[512];
    std::snprintf(line, sizeof line,
                  "KV FENNIC Plugin: Error in %s: %.300s - what it was doing was left out\n", place, what);
    XPLMDebugString(line);
}

} // namespace

void LogException(const char *place) noexcept {
    if (isTold(place)) return;
    try {
        try {
            throw;
        } catch (const std::exception &thrown) {
            Log(place, thrown.what());
        } catch (...) {
            Log(place, "something that is no exception");
        }
    } catch (...) { // the log itself has no memory: then nobody can be told
        return;
    }
}

void ResetGuards() {
    toldCount = 0;
}
