// Every line goes out in one call, so that lines of other plug-ins cannot come in between.
#include "util/log.h"

#include "XPLMUtilities.h"
#include "util/clock.h"
#include "util/numbers.h"

namespace {

const char *const Prefix = "KV FENNIC Plugin: ";

} // namespace

void string2debugString(const std::string &a, const std::string &b, int level) {
    if (level != 1) return;
    std::string line = Prefix + int2string(TruncateToInt(FlightTimeSEC)) + " SEC TFT " + a + b + "\n";
    std::erase(line, '\0'); // one quoted from a damaged file would cut the line's end off
    XPLMDebugString(line.c_str());
}

void int2debugString(const std::string &a, int n, int level) {
    if (level != 1) return;
    XPLMDebugString((Prefix + a + int2string(n) + "\n").c_str());
}

void float2debugString(const std::string &a, double x, int level) {
    if (level != 1) return;
    XPLMDebugString((Prefix + a + float2string(x) + "\n").c_str());
}

void Pass(int n) {
    XPLMDebugString(("PASS - " + int2string(n) + "\n").c_str());
}

void LogDroppedLine(std::string_view file, int line, std::string_view reason, std::string_view text) {
    const std::string place = std::string(file) + " line " + int2string(line) + ": ";
    string2debugString(place, std::string(reason) + " - line dropped: " + std::string(text), 1);
}

std::string NoNumber(std::string_view field, std::string_view value) {
    return std::string(field) + " \"" + std::string(value) + "\" is no number";
}
