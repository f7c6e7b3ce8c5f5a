// What the reader silently makes of a line. It finds its keys anywhere in a line and ignores what stands
// before anything it could belong to; both are what its format says, and seldom what the author meant.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "systems/model.h"
#include "systems/notation.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/text.h"

namespace simhost {

namespace {

struct LineKey {
    const char *text;
    const char *meaning;
};
constexpr LineKey STRUCTURE_KEYS[] = {{"sys=", "a new system"}, // by LineKind
                                      {"dev=", "a new device"},
                                      {"devstack=", "a new device"},
                                      {"out=", "a new parameter"}};
// In the reader's order: the first one found decides.
constexpr LineKey BODY_KEYS[] = {{"graf=", "a graph point"},
                                 {"calc=", "a calculation"},
                                 {"execute=", "an action"},
                                 {"instring=", "a phrase"}};

// Says so when the key does not begin the line. True when the key is in it.
bool TakesFor(const LineKey &key, const std::string &file, const FileLine &line) {
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

void CheckCalculation(const std::string &file, const FileLine &line, const CalculationLine &item,
                      bool isWhole) {
    const auto count = [&](char bracket) { return std::count(line.text.begin(), line.text.end(), bracket); };
    const bool isConstant = item.calculation.stack.empty() && isWhole;
    if (!isConstant && (!isWhole || count('[') != count(']')))
        AddCause(file, line.number, "each operand stands between \"[\" and \"]\": " + line.text);
}

void CheckComparison(const std::string &file, const FileLine &line, const compare_block_class &comparison,
                     bool isWhole) {
    constexpr int LAST_EQUALITY = 1; // of the operators: == and !=
    if (comparison.a.kind == LinkSpeech) return;
    const bool hasComma = Contains(line.text, ",");
    if (!Contains(line.text, comparison.cmpText))
        AddCause(file, line.number, "no comparison, but the comma is taken for ==: " + line.text);
    else if (hasComma)
        AddCause(file, line.number,
                 "what follows the comma is ignored; a number has a point, a list \";\": " + line.text);
    if (hasComma) return;
    if (comparison.cmpOp > LAST_EQUALITY && (!comparison.bList.empty() || !isWhole))
        AddFinding(Severity::Error, file, line.number, "a list is compared with == or != only: " + line.text);
    if (!isWhole)
        AddFinding(Severity::Error, file, line.number,
                   "a list holds whole numbers only, without blanks: " + line.text);
}

// What the reader makes of the line; what it cannot read at all it says itself.
void CheckBodyLine(const std::string &file, const FileLine &line) {
    for (const LineKey &key : BODY_KEYS)
        if (TakesFor(key, file, line)) break;
    bool isWhole = true;
    const BodyItem item = ReadBodyLine(line.text, isWhole);
    const auto commas = std::count(line.text.begin(), line.text.end(), ',');
    if (const auto *calculation = std::get_if<CalculationLine>(&item))
        CheckCalculation(file, line, *calculation, isWhole);
    else if (const auto *comparison = std::get_if<compare_block_class>(&item))
        CheckComparison(file, line, *comparison, isWhole);
    else if (line.text.starts_with("execute=") && commas > 2)
        AddCause(file, line.number,
                 "an action has three fields; a comma inside its text is written as \";\": " + line.text);
    else if (line.text.starts_with("graf=") && commas > 1)
        AddCause(file, line.number, "a point has two numbers, each with a point, not a comma: " + line.text);
}

// What the lines belong to. A file goes on where the one before it ended.
enum class Level { File, System, Device, Parameter, Unknown };

Level LevelBelow(LineKind kind) {
    switch (kind) {
    case LineKind::System: return Level::System;
    case LineKind::Parameter: return Level::Parameter;
    default: return Level::Device;
    }
}

void CheckLine(const std::string &file, const FileLine &line, Level &level) {
    CheckCharacters(file, line);
    const LineKind kind = KindOfLine(line.text);
    if (kind != LineKind::Body) {
        const LineKey &key = STRUCTURE_KEYS[static_cast<size_t>(kind)];
        TakesFor(key, file, line);
        level = line.text.starts_with(key.text) ? LevelBelow(kind) : Level::Unknown;
        if (level == Level::Parameter) CheckParameterLine(file, line);
    } else if (level == Level::Parameter) {
        CheckBodyLine(file, line);
    } else if (level != Level::Unknown) {
        AddFinding(Severity::Warning, file, line.number,
                   "ignored: it stands before the first parameter of its "
                       + std::string(level == Level::Device   ? "device"
                                     : level == Level::System ? "system"
                                                              : "file")
                       + ": " + line.text);
    }
}

void CheckRawLines(const std::string &file, Level &level) {
    if (!isPlainText(file)) return;
    const std::string content = ReadFileToString(file, SystemsFile);
    if (Contains(content, "\r") && !Contains(content, "\n"))
        AddCause(file, 0, "a single line to the reader: lines end with LF or CR LF, not with CR alone");
    const std::vector<FileLine> lines = ReadFileLines(file, SystemsFile);
    if (lines.empty()) AddFinding(Severity::Warning, file, 0, "an empty file");
    for (const FileLine &line : lines) {
        const bool isFirst = &line == &lines.front();
        if (isFirst && line.text == EditorMark) continue;
        if (isFirst && level != Level::File && KindOfLine(line.text) != LineKind::System)
            AddCause(file, line.number, "belongs to the end of the file before; begin with \"sys=\"");
        CheckLine(file, line, level);
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

// Whether two files are one where capitals make no difference.
bool isTwin(const std::string &file, const std::string &other) {
    return file != other && FoldCase(file) == FoldCase(other);
}

// Returns the systems files that are read, in order.
std::vector<std::string> CheckFileList(const std::string &folder) {
    const std::vector<std::string> present = ReadFileListFromFolder(folder);
    const std::string list = folder + "_systems.txt";
    if (!isPlainText(list)) return {};
    std::set<std::string> listed;
    std::vector<std::string> read;
    for (const FileLine &line : ReadFileLines(list)) {
        std::string file = line.text + ".txt";
        if (!isSafeFileName(line.text)) continue; // the reader says so
        if (isFileExistString(folder + file)) {
            read.push_back(folder + file);
        } else {
            const std::string meant = MeantFile(present, line.text);
            AddFinding(Severity::Error, list, line.number,
                       "there is no file " + file
                           + (meant.empty() ? ""
                                            : "; for " + meant + " write \""
                                                  + meant.substr(0, meant.size() - 4) + "\""));
            if (!meant.empty()) file = meant;
        }
        for (const std::string &other : listed)
            if (isTwin(file, other))
                AddFinding(Severity::Error, list, line.number,
                           "only capitals tell " + file + " from " + other
                               + "; on most disks both are one file");
        if (listed.insert(file).second) continue;
        AddFinding(Severity::Error, list, line.number, file + " is listed twice");
        read.pop_back();
    }
    for (const std::string &file : present)
        if (file.ends_with(".txt") && file.front() != '_' && !listed.contains(file)) {
            const auto twin = std::find_if(listed.begin(), listed.end(),
                                           [&](const std::string &other) { return isTwin(file, other); });
            AddFinding(Severity::Warning, folder + file, 0,
                       "not in _systems.txt, so it is not read"
                           + (twin == listed.end() ? "" : "; on most disks it is one file with " + *twin));
        }
    return read;
}

} // namespace

bool isPlainText(const std::string &file) {
    const std::string content = ReadFileToString(file, SystemsFile);
    const bool isPlain = content.find('\0') == std::string::npos;
    if (!isPlain) AddCause(file, 0, "this is no plain text but UTF-16 or the like; save the file as UTF-8");
    if (content.starts_with("\xEF\xBB\xBF"))
        AddCause(file, 1,
                 "an invisible mark stands before the first letter; save the file as UTF-8 without it");
    return isPlain;
}

void CheckSystemsFiles(const std::string &pluginFolder) {
    Level level = Level::File;
    if (isSeparateSysSaving == 0) CheckRawLines(pluginFolder + "sys.txt", level);
    if (isSeparateSysSaving == 1)
        for (const std::string &file : CheckFileList(pluginFolder + "systems/")) CheckRawLines(file, level);
}

} // namespace simhost
