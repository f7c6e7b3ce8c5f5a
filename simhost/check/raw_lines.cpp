// What the reader silently makes of a line. It finds its keys anywhere in a line and ignores what stands
// before anything it could belong to; both are what its format says, and seldom what the author meant.
#include <algorithm>
#include <string>
#include <string_view>

#include "simhost/check/checks.h"
#include "simhost/check/findings.h"
#include "util/files.h"
#include "util/text.h"

namespace simhost {

namespace {

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
        AddFinding(Severity::Error, file, line.number,
                   std::string("taken for ") + key.meaning + ", since \"" + key.text
                       + "\" is in it: " + line.text);
    return true;
}

} // namespace

void CheckRawLines(const std::string &file) {
    enum { Nothing, System, Device, Parameter } level = Nothing;
    for (const FileLine &line : ReadFileLines(file)) {
        const auto *structure = std::find_if(std::begin(STRUCTURE_KEYS), std::end(STRUCTURE_KEYS),
                                             [&](const auto &key) { return TakesFor(key, file, line); });
        if (structure != std::end(STRUCTURE_KEYS)) {
            const std::string_view key = structure->text;
            level = key == "sys=" ? System : key == "out=" ? Parameter : Device;
        } else if (level != Parameter) {
            AddFinding(Severity::Warning, file, line.number,
                       "ignored: it stands before the first parameter of its "
                           + std::string(level == Device   ? "device"
                                         : level == System ? "system"
                                                           : "file")
                           + ": " + line.text);
        } else {
            std::any_of(std::begin(BODY_KEYS), std::end(BODY_KEYS),
                        [&](const auto &key) { return TakesFor(key, file, line); });
        }
        if (line.text.front() == ' ' || line.text.back() == ' ')
            AddFinding(Severity::Warning, file, line.number,
                       "a blank at the " + std::string(line.text.front() == ' ' ? "beginning" : "end")
                           + " of the line is part of it");
    }
}

void CheckFileList(const std::string &pluginFolder) {
    const std::string folder = pluginFolder + "systems/", list = folder + "_systems.txt";
    std::vector<std::string> listed;
    for (const FileLine &line : ReadFileLines(list)) {
        const std::string file = line.text + ".txt";
        if (!isFileExistString(folder + file))
            AddFinding(Severity::Error, list, line.number, "there is no file " + file);
        if (std::find(listed.begin(), listed.end(), file) != listed.end())
            AddFinding(Severity::Error, list, line.number, file + " is listed twice");
        listed.push_back(file);
    }
    for (const std::string &file : ReadFileListFromFolder(folder))
        if (file.ends_with(".txt") && file.front() != '_'
            && std::find(listed.begin(), listed.end(), file) == listed.end())
            AddFinding(Severity::Warning, folder + file, 0, "not in _systems.txt, so it is not read");
}

} // namespace simhost
