// The writer always produces the list form, whichever form was loaded. A model read back from it is equal
// but for its live values, which start over from the initial ones; what the loader did not understand stands
// where it stood.
#include "systems/writer.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "frame/aircraft.h"
#include "systems/kept_lines.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/notation.h"
#include "systems/reader.h"
#include "util/file_set.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"
#include "util/text.h"

std::string saveFailure;

namespace {

const char *const LineEnd = "\r\n";

bool areFilesWhole = true; // no save is left half done

// The text of a file, line by line. A record that would be read back as something else is not written: its
// place is told, and nothing is saved.
class SystemsText {
public:
    std::string text;
    std::string failure; // of the first record that is not written

    void Put(const system_class &system);
    void Put(const KeptLines &lines);

private:
    std::string place; // SYSTEM.DEVICE.PARAMETER

    void Put(const std::string &line) { text += line + LineEnd; }
    void Put(const device_struct &device);
    void Put(const out_parameter_struct &parameter);
    void Put(const logicblock_struct &block);
    void PutComparisons(const logicblock_struct &block);
    bool PutKept(const logicblock_struct &block, int list, size_t behind);
    template <typename Records> void PutAll(const logicblock_struct &block, int list, const Records &records);

    template <typename Record> void PutChecked(const std::string &line, const Record &record) {
        Put(line);
        if (failure.empty() && !Says(line, record))
            failure = "in " + place + " this would be read as something else: " + line;
    }
};

void SystemsText::Put(const KeptLines &lines) {
    for (const kept_line_struct &kept : lines) Put(kept.text);
}

void SystemsText::Put(const system_class &system) {
    place = system.name;
    PutChecked(LineOf(system), system);
    Put(system.kept);
    for (const device_struct &device : system.devices) {
        if (device.deleted) continue;
        place = system.name + "." + device.name;
        Put(device);
    }
}

// Lines that stand behind a parameter are not deleted with it.
void SystemsText::Put(const device_struct &device) {
    const std::string deviceName = place;
    PutChecked(LineOf(device), device);
    Put(device.kept);
    for (const out_parameter_struct &parameter : device.outs) {
        place = deviceName + "." + parameter.name;
        if (!parameter.deleted) Put(parameter);
        Put(parameter.keptBehind);
    }
}

void SystemsText::Put(const out_parameter_struct &parameter) {
    PutChecked(LineOf(parameter), parameter);
    Put(parameter.kept);
    for (const logicblock_struct &block : parameter.logic) Put(block);
}

std::string Line(const calcBlock_struct &calculation, const logicblock_struct &block) {
    return LineOf(calculation, block);
}
template <typename Record> std::string Line(const Record &record, const logicblock_struct &) {
    return LineOf(record);
}

template <typename Records>
void SystemsText::PutAll(const logicblock_struct &block, int list, const Records &records) {
    PutKept(block, list, 0);
    for (size_t i = 0; i < records.size(); i++) {
        PutChecked(Line(records[i], block), records[i]);
        PutKept(block, list, i + 1);
    }
}

void SystemsText::Put(const logicblock_struct &block) {
    Put(BlockKey);
    PutComparisons(block);
    PutAll(block, ListOfCalculations, block.calcs);
    PutAll(block, ListOfActions, block.executes);
    PutAll(block, ListOfPoints, block.graph);
}

// A first comparison is joined to nothing, so its "&&" goes without saying, unless a kept "||" stands before
// it; its "||" would be lost.
void SystemsText::PutComparisons(const logicblock_struct &block) {
    bool isJoinTold = PutKept(block, ListOfComparisons, 0);
    for (size_t i = 0; i < block.compares.size(); i++) {
        const compare_block_class &comparison = block.compares[i];
        if (i > 0 || isJoinTold || comparison.joinOp == 1) Put(comparison.joinText);
        PutChecked(LineOf(comparison), comparison);
        PutKept(block, ListOfComparisons, i + 1);
    }
}

// The kept lines behind the first so many records of a list; behind all of them, also those whose place is
// gone. True when one of them is a join.
bool SystemsText::PutKept(const logicblock_struct &block, int list, size_t behind) {
    bool isJoin = false;
    for (const kept_line_struct &kept : block.kept) {
        const size_t place = std::min(static_cast<size_t>(kept.behind), CountOf(block, list));
        if (kept.list != list || place != behind) continue;
        Put(kept.text);
        isJoin = isJoin || kept.text == JoinKeys[0] || kept.text == JoinKeys[1];
    }
    return isJoin;
}

// A system's file is named after it and must neither leave the folder nor replace the other files there.
bool hasFileName(const system_class &system) {
    const std::string key = FoldCase(system.name);
    if (isSafeFileName(system.name) && key != "_systems" && key != "_save") return true;
    saveFailure = "no file can have the name of the system " + system.name + "; rename it";
    return false;
}

// What is missing in the model would be missing in the files, too.
bool isComplete() {
    const bool isComplete = isModelComplete && areFilesWhole;
    if (!isComplete) {
        saveFailure = "a systems file could not be read at the start";
        LogProblem("Error - systems not saved: ", saveFailure);
    }
    return isComplete;
}

// The files of the systems, in order, and the list of their names.
class SystemsFiles {
public:
    explicit SystemsFiles(std::string folder) : folder(std::move(folder)) {}

    bool Collect(); // false with the reason in saveFailure
    std::vector<FileOfSet> Files() const;

private:
    struct File {
        std::string name;
        SystemsText content;
        KeptLines keptInList; // behind its name
    };
    std::string folder;
    std::vector<File> files;
    KeptLines keptInList;                     // before the first name
    std::map<std::string, size_t> fileOfName; // of names that are one file on some disk

    File &FileFor(const system_class &system);
    std::string List() const;
    void PutKept(const KeptLines &lines, std::string &list) const;
};

void Append(KeptLines &lines, const KeptLines &more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

bool SystemsFiles::Collect() {
    keptInList = keptBeforeSystems.inList;
    for (const system_class &system : systems_vector) {
        if (!system.deleted) {
            if (!hasFileName(system)) return false;
            SystemsText &content = FileFor(system).content;
            content.Put(system);
            if (saveFailure.empty()) saveFailure = content.failure;
        }
        Append(files.empty() ? keptInList : files.back().keptInList, system.keptInList);
    }
    if (files.empty() && !keptBeforeSystems.lines.empty())
        saveFailure = "there is no system whose file could hold what was not understood; make one";
    return saveFailure.empty();
}

// Systems whose names are the same, or differ in capitals only, share a file, since on some disks there is
// but one. So do those between them: the order of the systems is what the model is.
SystemsFiles::File &SystemsFiles::FileFor(const system_class &system) {
    const auto [entry, isNew] = fileOfName.emplace(FoldCase(system.name), files.size());
    if (isNew) {
        files.push_back({system.name, {}, {}});
        if (files.size() == 1) {
            if (isVAdraw == 1) files[0].content.text = std::string(EditorMark) + LineEnd;
            files[0].content.Put(keptBeforeSystems.lines);
        }
        return files.back();
    }
    const size_t shared = entry->second;
    while (files.size() > shared + 1) {
        const File &next = files[shared + 1];
        files[shared].content.text += next.content.text;
        Append(files[shared].keptInList, next.keptInList);
        files.erase(files.begin() + static_cast<std::ptrdiff_t>(shared) + 1);
    }
    for (auto &[name, index] : fileOfName) index = std::min(index, shared);
    return files[shared];
}

// A name that a system has taken meanwhile is that system's.
void SystemsFiles::PutKept(const KeptLines &lines, std::string &list) const {
    for (const kept_line_struct &kept : lines)
        if (!fileOfName.contains(FoldCase(kept.text))) list += kept.text + LineEnd;
}

std::string SystemsFiles::List() const {
    std::string list;
    PutKept(keptInList, list);
    for (const File &file : files) {
        list += file.name + LineEnd;
        PutKept(file.keptInList, list);
    }
    return list;
}

// The list stands behind the files that it names: a program that ends in between leaves a list of what there
// is.
std::vector<FileOfSet> SystemsFiles::Files() const {
    std::vector<FileOfSet> set;
    for (const File &file : files) set.push_back({folder + file.name + ".txt", file.content.text});
    set.push_back({folder + "_systems.txt", List()});
    return set;
}

} // namespace

bool WriteSystem(const system_class &system, std::string &text, std::string &reason) {
    SystemsText written;
    written.Put(system);
    text = std::move(written.text);
    reason = std::move(written.failure);
    return reason.empty();
}

void FinishInterruptedSave() {
    areFilesWhole = FinishFileSet(WhatPluginPath() + "systems/");
}

bool SaveSysToTxtFile() {
    SysLinkRefresh(0);
    saveFailure.clear();
    if (!isComplete()) return false;
    const std::string folder = WhatPluginPath() + "systems/";
    SystemsFiles systems(folder);
    if (!systems.Collect()) {
        LogProblem("Error - systems not saved: ", saveFailure);
        return false;
    }
    const std::vector<FileOfSet> files = systems.Files();
    std::string failed;
    if (WriteFileSet(files, failed)) return true;
    saveFailure = "cannot write " + failed.substr(folder.size());
    return false;
}

void ResetWriter() {
    areFilesWhole = true;
    MakeFresh(saveFailure);
    areFilesWhole = true;
}
