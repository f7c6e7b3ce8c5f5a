// The checker poses as the plug-in installed in the folder, lets the plug-in's readers fill its model and
// tables, and looks at what came of it.
#include "authoring/check/check.h"

#include <filesystem>
#include <string_view>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "authoring/check/folder.h"
#include "simhost/flights/log_problems.h"
#include "simhost/simulator.h"
#include "systems/reader.h"
#include "util/files.h"
#include "util/paths.h"
#include "util/text.h"

namespace simhost {

namespace {

bool AddLineProblem(std::string_view message, const std::string &nameless) {
    LineProblem problem;
    if (!ReadLineProblem(message, problem)) return false;
    const int line = problem.line;
    const std::string name = nameless.empty() ? std::string(problem.file) : nameless;
    const std::string text(problem.reason);

    // A missing beginning costs all lines that need it: the first of them is told.
    static std::string lastFile;
    static int lastLine = 0;
    const bool needsBeginning = text.starts_with("stands before") || Contains(text, " needs a ");
    const bool isTold = needsBeginning && name == lastFile && line == lastLine + 1;
    lastFile = needsBeginning ? name : "";
    lastLine = line;
    if (!isTold && needsBeginning)
        AddSymptom(Severity::Error, name, line, line, text);
    else if (!isTold)
        AddFinding(Severity::Error, name, line, text);
    return true;
}

// What a check of the model reports better, with file and line.
bool isReportedElsewhere(std::string_view message) {
    for (std::string_view text : {"Cant find parameter", "CUSTOM DATAREF", "array index outside"})
        if (message.find(text) != std::string::npos) return true;
    return false;
}

void ReadSystems(const std::string &pluginFolder) {
    CreateSystemsFromFile();
    CollectReaderMessages();
    CheckSystemsFiles(pluginFolder);
}

} // namespace

bool CollectReaderMessages(const std::string &file) {
    bool isAny = false;
    for (const std::string &logLine : TakeLogLines()) {
        const std::string_view message = WithoutLogPrefix(logLine);
        if (isReportedElsewhere(message)) continue;
        if (!AddLineProblem(message, file)) {
            if (!TellsOfProblem(message)) continue;
            AddFinding(Severity::Error, file.empty() ? WhatPluginPath() : file, 0, std::string(message));
        }
        isAny = true;
    }
    return isAny;
}

int CheckFolder(const CheckOptions &options) {
    const std::string pluginFolder = EnterFolder(options.folder, options.xplaneFolder);
    if (pluginFolder.empty()) return 2;
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
    CheckPhrases();
    CheckLinkCycles();
    CheckFonts(pluginFolder);

    std::error_code failed;
    const std::string folder = (std::filesystem::absolute(options.folder, failed) / "").lexically_normal();
    const std::string shown = options.folder + (options.folder.ends_with('/') ? "" : "/");
    return PrintFindings(pluginFolder, folder, shown) ? 0 : 1;
}

} // namespace simhost
