// The list of systems files keeps what it has; the imported systems come last, so that they see this frame's
// values of all others.
#include "systems/import/clist_folder.h"
#include "systems/dataref_binding.h"

#include <algorithm>
#include <vector>

#include "XPLMDataAccess.h"
#include "util/file_set.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/text.h"

namespace {

const char *const ButtonDataref = "kv/fennic/click_snd";
const char *const OneOfTheWords = "instring=say again";
const char *const LineEnd = "\r\n";

bool isListed(const std::vector<FileLine> &list, const std::string &name) {
    return std::any_of(list.begin(), list.end(),
                       [&](const FileLine &line) { return FoldCase(line.text) == FoldCase(name); });
}

// Whether a systems file has a line with the text in it.
bool isInSystems(const char *text, const std::string &systemsFolder, const std::vector<FileLine> &list) {
    for (const FileLine &name : list) {
        std::vector<FileLine> lines;
        if (isSafeFileName(name.text)) ReadLines(systemsFolder + name.text + ".txt", lines, SystemsFile);
        for (const FileLine &line : lines)
            if (Contains(line.text, text)) return true;
    }
    return false;
}

bool isWholeDataref(const std::string &name) {
    const XPLMDataRef dataref = FindDataref(DatarefName(name).name.c_str());
    const int fractions = xplmType_Float | xplmType_Double | xplmType_FloatArray;
    return dataref && (XPLMGetDataRefTypes(dataref) & fractions) == 0;
}

} // namespace

bool ImportClistFile(const std::string &path, const std::string &pluginFolder, ClistImport &import,
                     std::string &reason) {
    const std::string folder = pluginFolder + "systems/";
    if (isFileExistString(path) != 1) {
        reason = "there is no file " + path;
        return false;
    }
    std::vector<FileLine> list;
    if (ReadLines(folder + "_systems.txt", list) == Reading::Failed) {
        reason = "cannot read " + folder + "_systems.txt";
        return false;
    }
    for (const char *name : ImportedSystemNames) {
        if (!isListed(list, name) && WhatIsAt(folder + name + ".txt") == Presence::Absent) continue;
        reason = std::string("checklists were imported before: ") + name + ".txt is there";
        return false;
    }
    ClistImportOptions options;
    options.isWhole = isWholeDataref;
    options.publishesButton = !isInSystems(ButtonDataref, folder, list);
    options.bringsWords = !isInSystems(OneOfTheWords, folder, list);
    import = ImportClist(ReadFileToString(path, SystemsFile), options);
    if (import.systems.empty()) {
        reason = "there is no checklist in " + path;
        return false;
    }
    std::vector<FileOfSet> files;
    std::string names;
    for (const FileLine &line : list) names += line.text + LineEnd;
    for (const ImportedSystem &system : import.systems) {
        files.push_back({folder + system.name + ".txt", system.content});
        names += system.name + LineEnd;
    }
    files.push_back({folder + "_systems.txt", names});
    if (WriteFileSet(files, reason)) return true;
    reason = "cannot write " + reason;
    return false;
}

std::string FindClist(const std::string &aircraftFolder, const std::string &acfName) {
    const std::string name = acfName.substr(0, acfName.rfind('.'));
    for (const std::string &file : {name + "_clist.txt", std::string("clist.txt")})
        if (isFileExistString(aircraftFolder + file) == 1) return aircraftFolder + file;
    return "";
}
