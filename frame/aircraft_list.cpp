// Lines of "key=value", and each "aircraft=" opens a row. Blanks around keys and values do not count. Text of
// any line ends is read, also those of one carriage return, which some old editors write.
#include "frame/aircraft_list.h"

#include <cmath>
#include <string_view>

#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const double FarthestSeat = 1000.0; // feet; beyond it somebody has left out a point

std::string_view Trimmed(std::string_view text) {
    while (text.starts_with(' ') || text.starts_with('\t')) text.remove_prefix(1);
    while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
    return text;
}

// How long the line at the beginning of a text is: without its end, and with it.
size_t LineLength(std::string_view text) {
    return std::min(text.find_first_of("\r\n"), text.size());
}
size_t WholeLineLength(std::string_view text) {
    const size_t length = LineLength(text);
    return std::min(length + (text.substr(length).starts_with("\r\n") ? 2 : 1), text.size());
}

std::vector<FileLine> CutLines(std::string_view text) {
    std::vector<FileLine> lines;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3); // a byte-order mark
    for (int number = 1; !text.empty(); number++) {
        lines.push_back({number, std::string(Trimmed(text.substr(0, LineLength(text))))});
        text.remove_prefix(WholeLineLength(text));
    }
    return lines;
}

// Each takes a value over into the row; the reason when it is not one.
using Take = std::string (*)(AircraftRow &row, const std::string &value);

std::string TakeFile(AircraftRow &row, const std::string &value) {
    if (!value.empty() && (!isSafeFileName(value) || !UpperToLowerCase(value).ends_with(".acf")))
        return "\"file=\" is the name of an aircraft's file, which ends in .acf";
    row.modelFile = value;
    return "";
}

std::string TakeSetup(AircraftRow &row, const std::string &value) {
    if (value != "none" && value != "figure" && value != "acf") return "\"setup=\" is none, figure or acf";
    row.traits.setup = value == "acf"      ? FigureSetup::Attached
                       : value == "figure" ? FigureSetup::Replaced
                                           : FigureSetup::None;
    row.traits.needsNoSetup = value == "none";
    return "";
}

std::string TakeSeat(AircraftRow &row, const std::string &value) {
    const std::vector<std::string> numbers = StringToWordsArray(value, ',');
    SeatPlace place;
    const bool isPlace = numbers.size() == 3 && ParseDouble(numbers[0], place.x)
                         && ParseDouble(numbers[1], place.y) && ParseDouble(numbers[2], place.z);
    if (!isPlace) return "\"seat=\" is three numbers with commas between them, x,y,z in feet";
    for (const double feet : {place.x, place.y, place.z})
        if (std::abs(feet) > FarthestSeat) return "a seat is no thousand feet away";
    row.traits.seat = place;
    return "";
}

std::string TakeSwitch(const char *key, bool &trait, const std::string &value) {
    if (value != "0" && value != "1") return std::string("\"") + key + "=\" is 0 or 1";
    trait = value == "1";
    return "";
}

struct Key {
    std::string_view name;
    Take take;
};

const Key AircraftKeys[] = {
    {"file", TakeFile},
    {"setup", TakeSetup},
    {"seat", TakeSeat},
    {"runways",
     [](AircraftRow &row, const std::string &value) {
         return TakeSwitch("runways", row.traits.publishesRunways, value);
     }},
    {"clicksound",
     [](AircraftRow &row, const std::string &value) {
         return TakeSwitch("clicksound", row.traits.hasClickSound, value);
     }},
};

class ListReader {
public:
    explicit ListReader(std::vector<AircraftRow> &rows) : rows(rows) {}

    void TakeLine(const FileLine &line) {
        if (line.text.empty() || line.text.starts_with('#')) return;
        const std::string reason = TakeText(line);
        if (!reason.empty()) LogDroppedLine(AircraftListFile, line.number, reason, line.text);
    }

    // What only a whole row shows.
    void EndRow() {
        if (rows.empty()) return;
        if (rows.back().traits.seat && rows.back().traits.setup != FigureSetup::Attached) {
            Tell(rows.back().traits.seatLine,
                 "a seat counts with setup=acf alone, by which the figure comes into the aircraft's file",
                 true);
            rows.back().traits.seat.reset();
        }
        TellIfNeverUsed(rows.back());
    }

private:
    std::vector<AircraftRow> &rows;
    std::vector<std::string_view> seen; // keys of the row

    static void Tell(int line, const std::string &reason, bool isLogged) {
        Report({.severity = Severity::Warning,
                .file = AircraftListFile,
                .line = line,
                .reason = reason,
                .isLogged = isLogged});
    }

    // A row behind another one that serves all its aircraft.
    void TellIfNeverUsed(const AircraftRow &row) const {
        for (const AircraftRow &before : rows)
            if (&before != &row && row.description.starts_with(before.description)
                && (before.modelFile.empty() || before.modelFile == row.modelFile)) {
                Tell(row.line, "never used: line " + int2string(before.line) + " serves these aircraft",
                     false);
                return;
            }
    }

    void OpenRow(int line, const std::string &description) {
        EndRow();
        seen.clear();
        AircraftRow &row = rows.emplace_back();
        row.description = description;
        row.type = ListedAircraft;
        row.label = (description.empty() ? "any aircraft" : description) + ", by " + AircraftListFile
                    + " line " + int2string(line);
        row.traits.needsNoSetup = true;
        row.line = line;
    }

    // The reason when nothing can be taken from the line.
    std::string TakeText(const FileLine &line) {
        const size_t equals = line.text.find('=');
        if (equals == std::string::npos) return "neither a comment nor key=value";
        const std::string_view text = line.text, name = Trimmed(text.substr(0, equals));
        std::string value(Trimmed(text.substr(equals + 1)));
        if (name == "aircraft") {
            OpenRow(line.number, value);
            return "";
        }
        for (const Key &key : AircraftKeys) {
            if (key.name != name) continue;
            if (rows.empty()) return "it stands before the first \"aircraft=\"";
            for (const std::string_view before : seen)
                if (before == name) return "the aircraft has a line \"" + std::string(name) + "=\" already";
            if (name != "file") value = Trimmed(value.substr(0, value.find('#')));
            std::string reason = key.take(rows.back(), value);
            if (reason.empty()) seen.push_back(key.name);
            if (name == "seat") rows.back().traits.seatLine = line.number;
            return reason;
        }
        return "the keys are aircraft, file, setup, seat, runways and clicksound";
    }
};

} // namespace

bool ReadAircraftList(const std::string &pluginFolder, std::vector<AircraftRow> &rows) {
    rows.clear();
    std::string text;
    if (ReadWholeFile(pluginFolder + AircraftListFile, text) != Reading::Read) return false;
    ListReader reader(rows);
    for (const FileLine &line : CutLines(text)) reader.TakeLine(line);
    reader.EndRow();
    return true;
}

std::string WithSeat(const std::string &list, int line, const SeatPlace &seat) {
    size_t begin = 0;
    for (int number = 1; number < line; number++)
        begin += WholeLineLength(std::string_view(list).substr(begin));
    std::string text = "seat=";
    for (const double feet : {seat.x, seat.y, seat.z})
        text += (text.ends_with('=') ? "" : ",") + ShortDecimal(feet);
    return std::string(list).replace(begin, LineLength(std::string_view(list).substr(begin)), text);
}
