// An aircraft file as text. It can be gigabytes long, so it is read line by line, once to judge it and once
// to copy it, and never held as a whole. Whatever looks wrong is refused: a pilot rather misses the figure
// than his aircraft.
#include "figure/acf_file.h"

#include <map>

#include "util/log.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const char *const FigureObject = "kvfennic.obj";
const char *const CountKey = "P _obja/count";
const int MostObjects = 9999; // far above what any simulator takes

std::string_view WithoutReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

const char *const PlaceKeys[] = {"_v10_att_x_acf_prt_ref", "_v10_att_y_acf_prt_ref",
                                 "_v10_att_z_acf_prt_ref"};
const char *const TurnKeys[] = {"_v10_att_phi_ref", "_v10_att_psi_ref", "_v10_att_the_ref"};

// A line such as "P _obja/7/_v10_att_file_stl seat.obj".
struct Property {
    int number = -1; // 7; -1: the line is another one
    std::string_view key, value;
    size_t valueBegin = 0; // in the line
};

Property ReadProperty(std::string_view line) {
    const std::string_view start = "P _obja/";
    Property property;
    const size_t slash = line.find('/', start.size()), blank = line.find(' ', start.size());
    if (!line.starts_with(start) || blank == std::string_view::npos || slash > blank) return property;
    property.key = line.substr(slash + 1, blank - slash - 1);
    property.valueBegin = blank + 1;
    property.value = line.substr(property.valueBegin);
    while (property.value.ends_with(' ')) property.value.remove_suffix(1);
    if (!ParseInt(line.substr(start.size(), slash - start.size()), property.number)) property.number = -1;
    return property;
}

double &AxisOf(SeatPlace &seat, size_t axis) {
    return axis == 0 ? seat.x : axis == 1 ? seat.y : seat.z;
}

// Puts the seat's number into a line that has one of an object's place; its axis, or -1 for any other line.
int TakePlace(std::string &line, int number, SeatPlace seat) {
    const Property property = ReadProperty(line);
    for (size_t axis = 0; axis < std::size(PlaceKeys) && property.number == number; axis++)
        if (property.key == PlaceKeys[axis]) {
            line.replace(property.valueBegin, std::string::npos, double2string(AxisOf(seat, axis)));
            return static_cast<int>(axis);
        }
    return -1;
}

// What an aircraft file says of one of its objects.
struct AttachedObject {
    bool isFigure = false, isTurned = false;
    SeatPlace seat;
    int axes = 0; // of its place that are numbers
};

void TakeProperty(const Property &property, AttachedObject &object) {
    if (property.key == "_v10_att_file_stl" && property.value == FigureObject) object.isFigure = true;
    for (size_t axis = 0; axis < std::size(PlaceKeys); axis++)
        if (property.key == PlaceKeys[axis])
            object.axes += ParseDouble(property.value, AxisOf(object.seat, axis)) ? 1 : 0;
    for (const char *turn : TurnKeys)
        if (property.key == turn && LeadingNumber(property.value) != 0.0) object.isTurned = true;
}

// The number of objects that a line "P _obja/count N" states, or -1.
int ReadCount(std::string_view line) {
    while (line.ends_with(' ')) line.remove_suffix(1);
    const std::vector<std::string> words = StringToWordsArray(std::string(line), ' ');
    int count = -1;
    if (words.size() != 3 || !ParseInt(words[2], count) || int2string(count) != words[2]) return -1;
    return count <= MostObjects ? count : -1;
}

// A line that states the number of objects, the first or not.
void ReadCountLine(std::string_view line, const std::string &place, int &countLines,
                   AircraftFileFacts &facts) {
    if (!facts.reason.empty()) return;
    facts.objects = ReadCount(line);
    if (facts.objects < 0)
        facts.reason = place + " states no number of objects";
    else if (++countLines > 1)
        facts.reason = place + " states the number of objects again";
}

} // namespace

AircraftFileFacts ExamineAircraftFile(const std::string &acf) {
    AircraftFileFacts facts;
    int number = 0, countLines = 0;
    const auto examine = [&](std::string_view whole) {
        const std::string_view line = WithoutReturn(whole);
        number++;
        if (line.find_first_not_of('\r') != std::string_view::npos) facts.hasLines = true;
        if (Contains(line, FigureObject)) facts.figureLines++;
        if (Contains(line, CountKey)) ReadCountLine(line, "line " + int2string(number), countLines, facts);
        return true;
    };
    facts.reading = ReadEachLine(acf, AircraftFile, examine);
    if (facts.reading == Reading::Absent) LogFileProblem("FileIO:Cant open file ", acf);
    if (facts.reading != Reading::Read) return {.reading = facts.reading, .reason = "it cannot be read"};
    if (countLines == 0 && facts.reason.empty()) facts.reason = std::string("no line \"") + CountKey + "\"";
    return facts;
}

bool NumberObject(const std::vector<FileLine> &properties, int number, std::string &object,
                  std::string &reason) {
    object.clear();
    for (const FileLine &property : properties) {
        const std::vector<std::string> parts = StringToWordsArray(property.text, '/');
        if (parts.size() < 3) {
            reason = "line " + int2string(property.number) + " of the object has no index";
            return false;
        }
        object += ReplaceString(property.text, "/" + parts[1] + "/", "/" + int2string(number) + "/") + "\r\n";
    }
    return true;
}

bool AttachObject(const std::string &acf, const AircraftFileFacts &facts, const std::string &object) {
    const auto copyLines = [&](const WritePiece &write) {
        int attached = 0;
        const auto copyLine = [&](std::string_view whole) {
            const std::string_view line = WithoutReturn(whole);
            if (!Contains(line, CountKey)) return write(line) && write("\r\n");
            if (ReadCount(line) != facts.objects || ++attached > 1) return false;
            const std::vector<std::string> words = StringToWordsArray(std::string(line), ' ');
            const std::string count = words[0] + " " + words[1] + " " + int2string(facts.objects + 1);
            return write(object) && write(count) && write("\r\n");
        };
        return ReadEachLine(acf, AircraftFile, copyLine) == Reading::Read && attached == 1;
    };
    return WriteFileInPieces(acf, copyLines);
}

std::vector<FileLine> PlaceObject(std::vector<FileLine> properties, const SeatPlace &seat) {
    bool isPlaced[std::size(PlaceKeys)] = {};
    for (FileLine &property : properties) {
        const int axis = TakePlace(property.text, ReadProperty(property.text).number, seat);
        if (axis >= 0) isPlaced[axis] = true;
    }
    for (size_t axis = 0; axis < std::size(PlaceKeys); axis++) {
        if (isPlaced[axis]) continue;
        properties.push_back({0, std::string("P _obja/0/") + PlaceKeys[axis] + " 0"});
        TakePlace(properties.back().text, 0, seat);
    }
    return properties;
}

AttachedFigure FindAttachedFigure(const std::string &acf) {
    std::map<int, AttachedObject> objects;
    const auto take = [&](std::string_view whole) {
        const Property property = ReadProperty(WithoutReturn(whole));
        if (property.number >= 0 && property.number <= MostObjects)
            TakeProperty(property, objects[property.number]);
        return true;
    };
    const Reading reading = ReadEachLine(acf, AircraftFile, take);
    if (reading == Reading::Absent) LogFileProblem("FileIO:Cant open file ", acf);
    if (reading != Reading::Read) return {.reason = "it cannot be read"};
    AttachedFigure figure = {.reason = std::string("no object in it is ") + FigureObject};
    for (const auto &[number, object] : objects) {
        if (!object.isFigure) continue;
        if (figure.number >= 0)
            return {.reason = std::string("more than one object in it is ") + FigureObject};
        figure = {.number = number, .seat = object.seat};
        if (object.axes != 3) figure.reason = "her object in it has no place";
        if (object.isTurned) figure.reason = "her object in it is turned";
    }
    return figure;
}

bool MoveObject(const std::string &acf, int number, const SeatPlace &seat) {
    const auto copyLines = [&](const WritePiece &write) {
        int moved = 0;
        const auto copyLine = [&](std::string_view whole) {
            std::string line(WithoutReturn(whole));
            const size_t length = line.size();
            if (TakePlace(line, number, seat) >= 0) moved++;
            return write(line) && write(whole.substr(length)) && write("\n");
        };
        return ReadEachLine(acf, AircraftFile, copyLine) == Reading::Read && moved == 3;
    };
    return WriteFileInPieces(acf, copyLines);
}
