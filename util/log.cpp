// Every line goes out in one call, so that lines of other plug-ins cannot come in between. Lines are counted
// by their kind, over seconds of the simulator's own clock, which goes on while it is paused.
#include "util/log.h"

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "util/clock.h"
#include "util/make_fresh.h"
#include "util/numbers.h"

namespace {

const char *const Prefix = "KV FENNIC Plugin: ";
const long LinesOfAKind = 20; // in a second

struct KindHash {
    using is_transparent = void;
    size_t operator()(std::string_view kind) const { return std::hash<std::string_view>()(kind); }
};

struct LogState {
    std::unordered_map<std::string, long, KindHash, std::equal_to<>> kinds; // lines of this second
    float secondEnds = 0.0F;                                                // XPLMGetElapsedTime
    bool isLeftOut = false;                                                 // lines of some kind
    std::vector<LogListener> listeners;
};
LogState state;

void WriteLine(std::string line) {
    std::erase(line, '\0'); // one quoted from a damaged file would cut the line's end off
    XPLMDebugString((line + "\n").c_str());
}

std::string TimePrefix() {
    return Prefix + int2string(TruncateToInt(FlightTimeSEC)) + " SEC TFT ";
}

void EndSecond() {
    for (const auto &[kind, count] : state.kinds)
        if (count > LinesOfAKind)
            WriteLine(TimePrefix() + int2string(static_cast<int>(count - LinesOfAKind))
                      + " more left out: " + kind);
    state.kinds.clear();
    state.isLeftOut = false;
}

// Counts a line, and says whether it is to be written.
bool isWanted(std::string_view kind) {
    const float now = XPLMGetElapsedTime();
    if (now >= state.secondEnds || now < state.secondEnds - 1.0F) {
        EndSecond();
        state.secondEnds = now + 1.0F;
    }
    auto entry = state.kinds.find(kind);
    if (entry == state.kinds.end()) entry = state.kinds.emplace(kind, 0).first;
    if (++entry->second <= LinesOfAKind) return true;
    state.isLeftOut = true;
    return false;
}

// A record whose line reads so, of a kind of lines.
void Report(const LogRecord &record, std::string_view kind, const std::string &text) {
    const bool isWritten = record.isLogged && isWanted(kind);
    if (isWritten) WriteLine(TimePrefix() + text);
    for (const LogListener &listener : state.listeners) listener(record, isWritten ? text : "");
}

} // namespace

void string2debugString(const std::string &a, const std::string &b, int level) {
    if (level == 1 && isWanted(a)) WriteLine(TimePrefix() + a + b);
}

void int2debugString(const std::string &a, int n, int level) {
    if (level == 1 && isWanted(a)) WriteLine(Prefix + a + int2string(n));
}

void float2debugString(const std::string &a, double x, int level) {
    if (level == 1 && isWanted(a)) WriteLine(Prefix + a + float2string(x));
}

void Pass(int n) {
    if (isWanted("PASS - ")) WriteLine("PASS - " + int2string(n));
}

void LogProblem(const std::string &a, const std::string &b) {
    Report({.reason = a + b}, a, a + b);
}

void LogFileProblem(const std::string &what, const std::string &path, const std::string &reason) {
    const std::string text = what + path + (reason.empty() ? "" : ": ") + reason;
    Report({.file = path, .reason = text}, what + path, text);
}

void LogListed(const std::string &a, const std::string &b) {
    WriteLine(TimePrefix() + a + b);
}

void Report(const LogRecord &record) {
    Report(record, record.file, record.file + " line " + int2string(record.line) + ": " + WordsOf(record));
}

std::string WordsOf(const LogRecord &record) {
    return record.text.empty() ? record.reason : record.reason + " - line dropped: " + record.text;
}

void LogDroppedLine(std::string_view file, int line, std::string_view reason, std::string_view text) {
    Report(
        {.file = std::string(file), .line = line, .reason = std::string(reason), .text = std::string(text)});
}

void ListenToLog(LogListener listener) {
    state.listeners.push_back(std::move(listener));
}

std::string NoNumber(std::string_view field, std::string_view value) {
    return std::string(field) + " \"" + std::string(value) + "\" is no number";
}

void ReportLeftOutLines() {
    if (state.isLeftOut && XPLMGetElapsedTime() >= state.secondEnds) EndSecond();
}

void EndLog() {
    EndSecond();
}

void ResetLog() {
    MakeFresh(state);
}
