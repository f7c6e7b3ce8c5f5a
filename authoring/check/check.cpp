// The checker poses as the plug-in installed in the folder, lets the plug-in's readers fill its model and
// tables, and looks at what came of it.
#include "authoring/check/check.h"

#include <filesystem>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "authoring/check/folder.h"
#include "systems/checklists.h"
#include "systems/reader.h"
#include "util/log.h"

namespace simhost {

namespace {

std::vector<LogRecord> records; // of the plug-in's readers, that are not told yet

// What names no file is of the model at work; the checks of the model find it, with its file and line.
void Collect(const LogRecord &record, const std::string &) {
    if (!record.file.empty()) records.push_back(record);
}

// A missing beginning costs all lines that need it: the first of them is told.
bool isToldBefore(const LogRecord &record, const LogRecord &before) {
    return record.isMisplaced && before.isMisplaced && record.file == before.file
           && record.line == before.line + 1;
}

void Tell(const LogRecord &record) {
    const std::string text = WordsOf(record);
    if (record.isMisplaced)
        AddSymptom(record.severity, record.file, record.line, record.line, text);
    else if (!record.isLogged && record.severity == Severity::Error)
        AddCause(record.file, record.line, text);
    else
        AddFinding(record.severity, record.file, record.line, text);
}

void ReadSystems(const std::string &pluginFolder) {
    CreateChecklistDatarefs();
    CreateSystemsFromFile();
    CheckSystemsFiles(pluginFolder);
    TellReaderRecords();
}

} // namespace

bool TellReaderRecords() {
    for (size_t i = 0; i < records.size(); i++)
        if (i == 0 || !isToldBefore(records[i], records[i - 1])) Tell(records[i]);
    const bool isAny = !records.empty();
    records.clear();
    return isAny;
}

int CheckFolder(const CheckOptions &options) {
    const std::string pluginFolder = EnterFolder(options.folder, options.xplaneFolder);
    if (pluginFolder.empty()) return 2;
    ResetLog();
    ListenToLog(Collect);
    CheckAircraft(pluginFolder);
    CheckSettings(pluginFolder);
    CheckFigureFiles(pluginFolder);
    ReadSystems(pluginFolder);
    CheckNames();
    CheckLinks();
    CheckGraphs();
    CheckActions(!options.xplaneFolder.empty());
    CheckBlocks();
    CheckRepeats();
    CheckFractions();
    CheckPhrases(options.speechFolder);
    CheckLinkCycles();
    CheckFonts(pluginFolder);

    std::error_code failed;
    const std::string folder =
        (std::filesystem::absolute(options.folder, failed) / "").lexically_normal().generic_string();
    const std::string shown = options.folder + (options.folder.ends_with('/') ? "" : "/");
    return PrintFindings(pluginFolder, folder, shown) ? 0 : 1;
}

} // namespace simhost
