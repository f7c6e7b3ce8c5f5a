// What the reader does not see: letters that look like others, and files beside those it reads.
#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "systems/model.h"
#include "systems/notation.h"
#include "util/files.h"
#include "util/text.h"

namespace simhost {

namespace {

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
    const auto isInCapitals = [&](std::string_view key) {
        return !line.text.starts_with(key) && UpperToLowerCase(line.text.substr(0, key.size())) == key;
    };
    if (isInCapitals(BlockKey)
        || std::any_of(std::begin(LineKeys), std::end(LineKeys),
                       [&](const LineKey &key) { return isInCapitals(key.text); }))
        AddCause(file, line.number, "keys are written in lower case: " + line.text);
}

// hasSystem: a file before has begun a system, which goes on.
void CheckRawLines(const std::string &file, bool &hasSystem) {
    if (!isPlainText(file)) return;
    const std::string content = ReadFileToString(file, SystemsFile);
    if (Contains(content, "\r") && !Contains(content, "\n"))
        AddCause(file, 0, "a single line to the reader: lines end with LF or CR LF, not with CR alone");
    const std::vector<FileLine> lines = ReadFileLines(file, SystemsFile);
    if (lines.empty()) AddFinding(Severity::Warning, file, 0, "an empty file");
    for (const FileLine &line : lines) {
        const bool isFirst = &line == &lines.front();
        if (isFirst && line.text == EditorMark) continue;
        const LineKind kind = KindOfLine(line.text);
        if (isFirst && hasSystem && kind != LineKind::System)
            AddCause(file, line.number, "belongs to the end of the file before; begin with \"sys=\"");
        hasSystem = hasSystem || kind != LineKind::Body;
        CheckCharacters(file, line);
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
    bool hasSystem = false;
    if (isSeparateSysSaving == 0) CheckRawLines(pluginFolder + "sys.txt", hasSystem);
    if (isSeparateSysSaving == 1)
        for (const std::string &file : CheckFileList(pluginFolder + "systems/"))
            CheckRawLines(file, hasSystem);
}

} // namespace simhost
