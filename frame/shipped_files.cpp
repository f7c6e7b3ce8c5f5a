// "data/shipped_files.txt" remembers which version of each file the user has been given, and
// "shipped/versions.txt" knows the checksums of all that were ever shipped. A folder from before there was
// such a record gets one first, in which everything counts as given that was ever shipped: what is missing
// there was deleted.
#include "frame/shipped_files.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "util/checksum.h"
#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

namespace {

const char *const ShippedFolder = "shipped/";
const char *const VersionsFile = "versions.txt"; // in it
const char *const RecordFile = "data/shipped_files.txt";
const char *const BesideSuffix = "..new";
const char *const SomeVersion = "-"; // a checksum that no file has

using Record = std::map<std::string, std::string>; // path to the checksum of the version given last
using Versions = std::set<std::pair<std::string, std::string>>; // path and checksum

// A line is a checksum, a folder and the name of a file in it, with tabs between them.
Reading ReadChecksums(const std::string &file, const std::function<void(std::string, std::string)> &take) {
    std::vector<FileLine> lines;
    std::vector<std::string_view> fields;
    const Reading reading = ReadLines(file, lines);
    for (const FileLine &line : lines) {
        SplitFields(line.text, '\t', fields);
        if (fields.size() == 3)
            take(std::string(fields[1]) + "/" + std::string(fields[2]), std::string(fields[0]));
    }
    return reading;
}

std::string ChecksumLine(const std::string &path, const std::string &checksum) {
    const size_t slash = path.rfind('/');
    return checksum + "\t" + path.substr(0, slash) + "\t" + path.substr(slash + 1) + "\r\n";
}

// All files below a folder, with their paths in it.
void ListFiles(const std::string &root, const std::string &folder, std::vector<std::string> &paths) {
    for (const std::string &name : ReadFileListFromFolder(root + folder))
        if (name != ".") paths.push_back(folder + name);
    for (const std::string &inner : ReadFolderListFromFolder(root + folder))
        ListFiles(root, folder + inner.substr(inner.rfind('/') + 1) + "/", paths);
}

enum class Step { Nothing, PutInPlace, PutBeside, Unknown };

class ShippedFiles {
public:
    explicit ShippedFiles(std::string plugin) : plugin(std::move(plugin)) {}

    void PutInPlace();

private:
    std::string plugin;
    std::vector<std::string> paths;
    Record record, oldRecord;
    Versions versions;
    int placed = 0;

    bool ReadRecord();
    bool WriteRecord();
    bool isFresh() const;
    Step StepFor(const std::string &path, const std::string &shipped) const;
    void Place(const std::string &path);
};

bool ShippedFiles::WriteRecord() {
    std::string text;
    for (const auto &[path, checksum] : record) text += ChecksumLine(path, checksum);
    return WriteWholeFile(plugin + RecordFile, text);
}

// Nothing is in place yet that is shipped or ever was.
bool ShippedFiles::isFresh() const {
    const auto isAbsent = [this](const std::string &path) {
        return WhatIsAt(plugin + path) == Presence::Absent;
    };
    return std::all_of(paths.begin(), paths.end(), isAbsent)
           && std::all_of(versions.begin(), versions.end(),
                          [&](const auto &version) { return isAbsent(version.first); });
}

// False when something cannot be read or, for a folder from before there were records, written: then nothing
// is touched.
bool ShippedFiles::ReadRecord() {
    const Reading known =
        ReadChecksums(plugin + ShippedFolder + VersionsFile,
                      [this](std::string path, std::string checksum) { versions.emplace(path, checksum); });
    const Reading given =
        ReadChecksums(plugin + RecordFile, [this](const std::string &path, const std::string &checksum) {
            record[path] = checksum;
        });
    if (known == Reading::Failed || given == Reading::Failed) return false;
    if (given == Reading::Read) return true;
    if (!isFresh())
        for (const auto &[path, checksum] : versions) record[path] = SomeVersion;
    return WriteRecord();
}

Step ShippedFiles::StepFor(const std::string &path, const std::string &shipped) const {
    const auto given = record.find(path);
    std::string text;
    switch (ReadWholeFile(plugin + path, text, SystemsFile)) {
    case Reading::Failed: return Step::Unknown;
    case Reading::Absent: return given == record.end() ? Step::PutInPlace : Step::Nothing;
    case Reading::Read: break;
    }
    const std::string present = TextChecksum(text);
    if (present == shipped) return Step::Nothing;
    const bool isUntouched =
        (given != record.end() && given->second == present) || versions.contains({path, present});
    if (isUntouched) return Step::PutInPlace;
    return given != record.end() && given->second == shipped ? Step::Nothing : Step::PutBeside;
}

void ShippedFiles::Place(const std::string &path) {
    std::string text;
    if (ReadWholeFile(plugin + ShippedFolder + path, text, SystemsFile) != Reading::Read) return;
    const std::string shipped = TextChecksum(text);
    const Step step = StepFor(path, shipped);
    if (step == Step::Unknown) return;
    if (step != Step::Nothing) {
        MakeFolders(plugin, path);
        if (!WriteWholeFile(plugin + path + (step == Step::PutBeside ? BesideSuffix : ""), text)) return;
        placed++;
    }
    record[path] = shipped;
}

void ShippedFiles::PutInPlace() {
    ListFiles(plugin + ShippedFolder, "", paths);
    std::erase(paths, VersionsFile);
    if (paths.empty()) return;
    if (!ReadRecord()) {
        string2debugString(
            "Error - shipped files not put in place: ", "cannot read or write " + plugin + RecordFile, 1);
        return;
    }
    oldRecord = record;
    for (const std::string &path : paths) Place(path);
    if (record != oldRecord) WriteRecord();
    if (placed > 0) string2debugString("Shipped files put in place: ", int2string(placed), 1);
    const int beside = CountFilesBeside();
    if (beside > 0)
        string2debugString("You changed files of which there are new versions, beside yours: ",
                           int2string(beside) + " with \"" + BesideSuffix + "\" behind their names", 1);
}

} // namespace

void PutShippedFilesInPlace() {
    ShippedFiles(WhatPluginPath()).PutInPlace();
}

int CountFilesBeside() {
    const std::string plugin = WhatPluginPath();
    std::vector<std::string> paths;
    ListFiles(plugin + ShippedFolder, "", paths);
    return static_cast<int>(std::count_if(paths.begin(), paths.end(), [&](const std::string &path) {
        return WhatIsAt(plugin + path + BesideSuffix) == Presence::Present;
    }));
}
