// An aircraft file as text. It can be hundreds of megabytes long, so it is walked in place, line by line, and
// never split into a list. Whatever looks wrong is refused: a pilot rather misses the figure than his
// aircraft.
#include "figure/acf_file.h"

#include "util/numbers.h"
#include "util/text.h"

namespace {

const char *const FigureObject = "kvfennic.obj";
const char *const CountKey = "P _obja/count";
const int MostObjects = 9999; // far above what any simulator takes

// The next line of text without its end, and text behind it.
std::string_view NextLine(std::string_view &text) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
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

// The one line that states the count; false with the reason when there is none, or more than one.
bool FindCount(std::string_view acf, int &count, std::string &reason) {
    int lines = 0, number = 0;
    while (!acf.empty()) {
        const std::string_view line = NextLine(acf);
        number++;
        if (!Contains(line, CountKey)) continue;
        count = ReadCount(line);
        if (count < 0) {
            reason = "line " + int2string(number) + " states no number of objects";
            return false;
        }
        if (++lines > 1) {
            reason = "line " + int2string(number) + " states the number of objects again";
            return false;
        }
    }
    if (lines == 0) reason = std::string("no line \"") + CountKey + "\"";
    return lines == 1;
}

} // namespace

int CountFigureLines(std::string_view acf) {
    int count = 0;
    while (!acf.empty())
        if (Contains(NextLine(acf), FigureObject)) count++;
    return count;
}

bool AttachObject(std::string_view acf, const std::vector<FileLine> &properties, std::string &changed,
                  std::string &reason) {
    int count = 0;
    if (!FindCount(acf, count, reason)) return false;

    std::string object;
    for (const FileLine &property : properties) {
        const std::vector<std::string> parts = StringToWordsArray(property.text, '/');
        if (parts.size() < 3) {
            reason = "line " + int2string(property.number) + " of the object has no index";
            return false;
        }
        object += ReplaceString(property.text, "/" + parts[1] + "/", "/" + int2string(count) + "/") + "\r\n";
    }

    std::string text;
    text.reserve(acf.size() + acf.size() / 16 + object.size());
    while (!acf.empty()) {
        const std::string_view line = NextLine(acf);
        if (Contains(line, CountKey)) {
            const std::vector<std::string> words = StringToWordsArray(std::string(line), ' ');
            text += object + words[0] + " " + words[1] + " " + int2string(count + 1);
        } else {
            text += line;
        }
        text += "\r\n";
    }
    changed = std::move(text);
    return true;
}
