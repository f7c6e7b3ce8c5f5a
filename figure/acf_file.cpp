// An aircraft file as text. It can be gigabytes long, so it is read line by line, once to judge it and once
// to copy it, and never held as a whole. Whatever looks wrong is refused: a pilot rather misses the figure
// than his aircraft.
#include "figure/acf_file.h"

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
