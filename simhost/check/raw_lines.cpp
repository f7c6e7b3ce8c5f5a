// What the reader silently makes of a line. It finds its keys anywhere in a line and ignores what stands
// before anything it could belong to; both are what its format says, and seldom what the author meant.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "simhost/check/checks.h"
#include "simhost/check/findings.h"
#include "systems/model.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/text.h"

namespace simhost {

namespace {

constexpr const char *OPERATORS = "=!<>"; // the characters of which they are made

struct StructureKey {
    const char *text;
    const char *meaning;
};
// In the reader's order: the first one found decides.
constexpr StructureKey STRUCTURE_KEYS[] = {{"sys=", "a new system"},
                                           {"dev=", "a new device"},
                                           {"devstack=", "a new device"},
                                           {"out=", "a new parameter"}};
constexpr StructureKey BODY_KEYS[] = {{"graf=", "a graph point"},
                                      {"calc=", "a calculation"},
                                      {"execute=", "an action"},
                                      {"instring=", "a phrase"}};

// Says so when the key does not begin the line. True when the key is in it.
bool TakesFor(const StructureKey &key, const std::string &file, const FileLine &line) {
    const size_t place = line.text.find(key.text);
    if (place == std::string::npos) return false;
    if (place > 0)
        AddCause(file, line.number,
                 std::string("taken for ") + key.meaning + ", since \"" + key.text
                     + "\" is in it: " + line.text);
    return true;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Whether letters over 127 are UTF-8, and not as an old editor writes them.
bool isUtf8(std::string_view text) {
    size_t following = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isFollowing = (byte & 0xC0U) == 0x80U;
        if (isFollowing != (following > 0)) return false;
        if (isFollowing)
            following--;
        else if (byte >= 0xC0U)
            following = byte >= 0xF0U ? 3 : byte >= 0xE0U ? 2 : 1;
    }
    return following == 0;
}

void CheckCharacters(const std::string &file, const FileLine &line) {
    const bool isAtBeginning = isBlank(line.text.front());
    const char blank = isAtBeginning ? line.text.front() : line.text.back();
    if (isBlank(blank))
        AddCause(file, line.number,
                 std::string(blank == '\t' ? "a tab" : "a blank") + " at the "
                     + (isAtBeginning ? "beginning" : "end") + " of the line is part of it; take it out");
    if (!isUtf8(line.text)) AddCause(file, line.number, "letters that are not UTF-8; save the file as UTF-8");
    for (std::string_view key :
         {"sys=", "dev=", "devstack=", "out=", "logic:", "graf=", "calc=", "execute=", "instring="})
        if (!line.text.starts_with(key) && line.text.size() >= key.size()
            && UpperToLowerCase(line.text.substr(0, key.size())) == key)
            AddCause(file, line.number, "keys are written in lower case: " + line.text);
}

void CheckParameterLine(const std::string &file, const FileLine &line) {
    const std::vector<std::string> fields = StringToWordsArray(line.text, ',');
    if (fields.size() > 12)
        AddCause(file, line.number, "more than twelve fields: is there a comma in the text?");
    if (fields.size() < 10) return; // the reader says so
    constexpr std::string_view TYPES[] = {"int", "integer", "execute", "double"};
    if (std::find(std::begin(TYPES), std::end(TYPES), fields[1]) == std::end(TYPES))
        AddFinding(Severity::Error, file, line.number,
                   "the type is \"int\" or \"double\", else the initial value is not read: " + fields[1]);
    for (size_t name : {6U, 8U})
        if (fields[name].empty() && !fields[name + 1].empty())
            AddFinding(Severity::Error, file, line.number, "a mode without a dataref: " + fields[name + 1]);
    if (fields.size() > 11 && !fields[11].empty() && fields[11] != "0" && fields[11] != "1")
        AddFinding(Severity::Warning, file, line.number,
                   "only \"1\" in the last field saves the value: " + fields[11]);
}

void CheckCalculation(const std::string &file, const FileLine &line, std::string_view text) {
    const auto opened = std::count(text.begin(), text.end(), '['),
               closed = std::count(text.begin(), text.end(), ']');
    if (opened == 0 && closed == 0 && isNumber(text)) return;
    if (opened == 0 || opened != closed || text.back() != ']')
        AddCause(file, line.number, "each operand stands between \"[\" and \"]\": " + line.text);
}

// A comparison as the reader splits it.
void CheckComparison(const std::string &file, const FileLine &line) {
    if (Contains(line.text, ",")) {
        AddCause(file, line.number,
                 "what follows the comma is ignored; a number has a point, a list \";\": " + line.text);
        return;
    }
    const size_t oper = line.text.find_first_of(OPERATORS);
    std::string right =
        line.text.substr(std::min(line.text.find_first_not_of(OPERATORS, oper), line.text.size()));
    if (!Contains(right, ";")) return;
    if (line.text[oper] == '<' || line.text[oper] == '>')
        AddFinding(Severity::Error, file, line.number, "a list is compared with == or != only: " + line.text);
    std::erase_if(right, [](char c) { return c == '[' || c == ']'; });
    for (const std::string &piece : StringToWordsArray(right, ';'))
        if (piece.find_first_not_of("-0123456789") != std::string::npos)
            AddFinding(Severity::Error, file, line.number, "a list holds whole numbers only: " + piece);
}

void CheckBodyLine(const std::string &file, const FileLine &line) {
    const auto *found = std::find_if(std::begin(BODY_KEYS), std::end(BODY_KEYS),
                                     [&](const auto &key) { return TakesFor(key, file, line); });
    if (found == std::end(BODY_KEYS)) {
        if (line.text.find_first_of(OPERATORS) != std::string::npos) CheckComparison(file, line);
        return;
    }
    const std::string_view key = found->text;
    const auto commas = std::count(line.text.begin(), line.text.end(), ',');
    if (key == "calc=" && line.text.starts_with(key))
        CheckCalculation(file, line, std::string_view(line.text).substr(key.size()));
    if (key == "execute=" && commas > 2)
        AddCause(file, line.number,
                 "an action has three fields; a comma inside its text is written as \";\": " + line.text);
    if (key == "graf=" && commas > 1)
        AddCause(file, line.number, "a point has two numbers, each with a point, not a comma: " + line.text);
}

void CheckRawLines(const std::string &file) {
    if (!isPlainText(file)) return;
    const std::string content = ReadFileToString(file);
    if (Contains(content, "\r") && !Contains(content, "\n"))
        AddCause(file, 0, "a single line to the reader: lines end with LF or CR LF, not with CR alone");

    enum { Nothing, System, Device, Parameter, Unknown } level = Nothing;
    const std::vector<FileLine> lines = ReadFileLines(file);
    if (lines.empty()) AddFinding(Severity::Warning, file, 0, "an empty file");
    for (const FileLine &line : lines) {
        if (level == Nothing && line.text == "draw=1") continue; // the editor's mark
        CheckCharacters(file, line);
        const auto *structure = std::find_if(std::begin(STRUCTURE_KEYS), std::end(STRUCTURE_KEYS),
                                             [&](const auto &key) { return TakesFor(key, file, line); });
        if (structure != std::end(STRUCTURE_KEYS)) {
            const std::string_view key = structure->text;
            level = !line.text.starts_with(key) ? Unknown
                    : key == "sys="             ? System
                    : key == "out="             ? Parameter
                                                : Device;
            if (level == Parameter) CheckParameterLine(file, line);
        } else if (level == Parameter) {
            CheckBodyLine(file, line);
        } else if (level != Unknown) {
            AddFinding(Severity::Warning, file, line.number,
                       "ignored: it stands before the first parameter of its "
                           + std::string(level == Device   ? "device"
                                         : level == System ? "system"
                                                           : "file")
                           + ": " + line.text);
        }
    }
}

// The file in the folder that an entry of the list may mean; "" when there is none.
std::string MeantFile(const std::vector<std::string> &present, std::string entry) {
    std::erase_if(entry, isBlank);
    const std::string wanted = UpperToLowerCase(entry);
    for (const std::string &file : present)
        if (UpperToLowerCase(file) == wanted || UpperToLowerCase(file) == wanted + ".txt") return file;
    return "";
}

// Returns the systems files that are read.
std::set<std::string> CheckFileList(const std::string &folder) {
    const std::vector<std::string> present = ReadFileListFromFolder(folder);
    const std::string list = folder + "_systems.txt";
    if (!isPlainText(list)) return {};
    std::set<std::string> listed, read;
    for (const FileLine &line : ReadFileLines(list)) {
        std::string file = line.text + ".txt";
        if (!isSafeFileName(line.text)) continue; // the reader says so
        if (isFileExistString(folder + file)) {
            read.insert(folder + file);
        } else {
            const std::string meant = MeantFile(present, line.text);
            AddFinding(Severity::Error, list, line.number,
                       "there is no file " + file
                           + (meant.empty() ? ""
                                            : "; for " + meant + " write \""
                                                  + meant.substr(0, meant.size() - 4) + "\""));
            if (!meant.empty()) file = meant;
        }
        if (!listed.insert(file).second)
            AddFinding(Severity::Error, list, line.number, file + " is listed twice");
    }
    for (const std::string &file : present)
        if (file.ends_with(".txt") && file.front() != '_' && !listed.contains(file))
            AddFinding(Severity::Warning, folder + file, 0, "not in _systems.txt, so it is not read");
    return read;
}

} // namespace

bool isPlainText(const std::string &file) {
    const std::string content = ReadFileToString(file);
    const bool isPlain = content.find('\0') == std::string::npos;
    if (!isPlain) AddCause(file, 0, "this is no plain text but UTF-16 or the like; save the file as UTF-8");
    if (content.starts_with("\xEF\xBB\xBF"))
        AddCause(file, 1,
                 "an invisible mark stands before the first letter; save the file as UTF-8 without it");
    return isPlain;
}

void CheckSystemsFiles(const std::string &pluginFolder) {
    if (isSeparateSysSaving == 0) CheckRawLines(pluginFolder + "sys.txt");
    if (isSeparateSysSaving == 1)
        for (const std::string &file : CheckFileList(pluginFolder + "systems/")) CheckRawLines(file);
}

} // namespace simhost
