// The beginnings are those of the plug-in's own messages, and of whoever writes "Error" or "!!!" first.
#include "simhost/flights/log_problems.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace simhost {

namespace {

constexpr std::string_view PLUGIN = "KV FENNIC Plugin: ", AFTER_TIME = " SEC TFT ";
constexpr std::string_view LINE = " line ", DROPPED = " - line dropped: ", FONT = "Font ";

constexpr std::string_view BEGINNINGS[] = {
    "!!!",
    "Error",
    "ERROR",
    "CUSTOM DATAREF (",
    "FileIO:Cant ",
    "Nimbrel:FileIO:Cant ",
    "copyFile Error:",
    "System files not found at ",
    "No backup, so this file is not replaced: ",
    "Position not saved, ",
    "Settings were not read",
    "Setup was not complete",
    "Uninstall was not complete",
    "Font failed to load: ",
    "Texture failed to load: ",
    "PNG texture failed to load",
    "FENNIC Speech: cannot ",
    "FENNIC Speech: the voice ended ",
    "FENNIC Speech: speech 0",
    "FENNIC Speech: reco 0",
};

} // namespace

std::string_view WithoutLogPrefix(std::string_view line) {
    if (!line.starts_with(PLUGIN)) return line;
    line.remove_prefix(PLUGIN.size());
    const size_t digits = std::min(line.find_first_not_of("-0123456789"), line.size());
    if (line.substr(digits).starts_with(AFTER_TIME)) line.remove_prefix(digits + AFTER_TIME.size());
    return line;
}

bool ReadLineProblem(std::string_view message, LineProblem &problem) {
    if (message.find(DROPPED) == std::string_view::npos && !message.starts_with(FONT)) return false;
    // The name of the file may hold the same word.
    for (size_t place = message.find(LINE); place != std::string_view::npos;
         place = message.find(LINE, place + 1)) {
        const char *const digits = message.data() + place + LINE.size(), *const end =
                                                                             message.data() + message.size();
        const auto [behind, fault] = std::from_chars(digits, end, problem.line);
        if (fault != std::errc()
            || !std::string_view(behind, static_cast<size_t>(end - behind)).starts_with(": "))
            continue;
        problem.file = message.substr(0, place);
        problem.reason = message.substr(static_cast<size_t>(behind - message.data()) + 2);
        return true;
    }
    return false;
}

bool TellsOfProblem(std::string_view message) {
    return std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS),
                       [&](std::string_view beginning) { return message.starts_with(beginning); });
}

} // namespace simhost
