// Tables of some hundred lines are searched from top to bottom: an action begins once in a while.
#include "figure/switch_places.h"

#include <algorithm>

#include "figure/positions.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"

SwitchPlacesState switchPlaces;

namespace {

const char *const Tables[] = {"systems/_places.txt", "custom/places.txt"};
const char *const NoPosition = "none";

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || (c & 0x80);
}

// "sim/lights/Beacon_on" becomes "sim lights beacon on".
std::string WordsIn(std::string_view text) {
    std::string words;
    for (char c : text) {
        if (isWordCharacter(c))
            words += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        else if (!words.empty() && words.back() != ' ')
            words += ' ';
    }
    if (words.ends_with(' ')) words.pop_back();
    return words;
}

bool isIn(std::string_view part, std::string_view words) {
    for (size_t at = words.find(part); at != std::string_view::npos; at = words.find(part, at + 1))
        if (at == 0 || words[at - 1] == ' ') return true;
    return false;
}

std::string Trimmed(std::string_view text) {
    const char *const blanks = " \t";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

struct TableLine {
    int number;
    std::string words;
};

// The reason when the line is none.
std::string TakeLine(const std::string &text, SwitchPlace &place) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos) return "neither a comment nor words = position";
    place.words = WordsIn(std::string_view(text).substr(0, equals));
    place.position = Trimmed(std::string_view(text).substr(equals + 1));
    if (place.words.empty()) return "no words before \"=\"";
    if (place.position == NoPosition)
        place.position.clear();
    else if (!mapPos.contains(place.position))
        return "there is no position \"" + place.position + "\"";
    return "";
}

// A line behind one whose words it holds, too.
void TellIfNeverUsed(const char *file, const std::vector<TableLine> &before, const TableLine &line) {
    for (const TableLine &other : before)
        if (isIn(other.words, line.words)) {
            Report({.severity = Severity::Warning,
                    .file = file,
                    .line = line.number,
                    .reason = "never used: line " + int2string(other.number) + " has these words already",
                    .isLogged = false});
            return;
        }
}

void ReadTable(const char *file) {
    std::vector<FileLine> lines;
    if (ReadLines(WhatPluginPath() + file, lines) != Reading::Read) return;
    std::vector<TableLine> before;
    for (FileLine &line : lines) {
        if (line.number == 1 && line.text.starts_with("\xEF\xBB\xBF")) line.text.erase(0, 3);
        line.text = Trimmed(line.text);
        if (line.text.empty() || line.text.starts_with('#')) continue;
        SwitchPlace place;
        const std::string reason = TakeLine(line.text, place);
        if (!reason.empty()) {
            LogDroppedLine(file, line.number, reason, line.text);
            continue;
        }
        TellIfNeverUsed(file, before, {line.number, place.words});
        before.push_back({line.number, place.words});
        switchPlaces.lines.push_back(std::move(place));
    }
}

} // namespace

void ReadSwitchPlaces() {
    switchPlaces.lines.clear();
    for (const char *file : Tables) ReadTable(file);
}

std::string PlaceOf(std::string_view name) {
    const std::string words = WordsIn(name);
    for (const SwitchPlace &place : switchPlaces.lines)
        if (isIn(place.words, words)) return place.position;
    return "";
}

void ResetSwitchPlaces() {
    MakeFresh(switchPlaces);
}
