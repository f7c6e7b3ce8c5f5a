// A word with a slash in a line that may name datarefs is taken for one. Log lines are all that comes of it.
#include "figure/dataref_list.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"
#include "util/text.h"

namespace {

using Keywords = std::vector<const char *>;

// Of the file that is being read.
struct {
    std::vector<std::string> datarefs;
    std::unordered_set<std::string> listed; // the same
} file;

void ReadDatarefs(const std::string &path, const Keywords &keywords) {
    for (const FileLine &line : ReadFileLines(path)) {
        if (std::none_of(keywords.begin(), keywords.end(),
                         [&](const char *keyword) { return Contains(line.text, keyword); }))
            continue;
        std::string text = line.text;
        std::replace(text.begin(), text.end(), '\t', ' ');
        for (const std::string &word : StringToWordsArray(ReplaceStringDoubleSpace(text), ' '))
            if (Contains(word, "/")) AddToCockpitObjDrfVector(word);
    }
}

void LogDatarefsOf(const std::string &name, const Keywords &keywords) {
    const std::string path = WhatThisAircraftPath() + name;
    MakeFresh(file);
    if (isFileExistString(path))
        ReadDatarefs(path, keywords);
    else
        LogFileProblem("!!! Error: Cant read file ", name);
    LogListed(std::string(59, '-'), "");
    LogListed("DRF List from: ", path);
    for (const std::string &dataref : file.datarefs) LogListed("DRF: ", dataref);
}

} // namespace

void AddToCockpitObjDrfVector(const std::string &name) {
    if (file.listed.insert(name).second) file.datarefs.push_back(name);
}

void ReadDrfListFromCockpitAndAcf() {
    for (const std::string &name : ReadFileListFromFolder(WhatThisAircraftPath())) {
        if (Contains(name, ".obj") || Contains(name, ".OBJ"))
            LogDatarefsOf(name, {"ANIM_", "LIGHT_CUSTOM", "LIGHT_SPILL_CUSTOM", "ATTR_light_level",
                                 "ATTR_manip", "ATTR_axis"});
        if (Contains(name, ".acf") && !Contains(name, ".acf~"))
            LogDatarefsOf(name, {"DATAREF", "SHOW", "HIDE"});
    }
}
