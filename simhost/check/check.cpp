// The checker poses as the plug-in installed in the folder, lets the plug-in's readers fill its model and
// tables, and looks at what came of it.
#include "simhost/check/check.h"

#include <filesystem>
#include <string_view>

#include "simhost/check/checks.h"
#include "simhost/check/findings.h"
#include "simhost/check/folder.h"
#include "simhost/simulator.h"
#include "systems/reader.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

namespace simhost {

namespace {

// "KV FENNIC Plugin: 0 SEC TFT <file> line <n>: <reason> - line dropped: <text>"
bool AddDroppedLine(const std::string &message, const std::string &nameless) {
    constexpr std::string_view LINE = " line ", BEFORE_FILE = " SEC TFT ";
    const size_t file = message.find(BEFORE_FILE), place = message.find(LINE),
                 colon = message.find(": ", place);
    if (file == std::string::npos || place == std::string::npos || colon == std::string::npos) return false;
    int line = 0;
    if (!ParseInt(message.substr(place + LINE.size(), colon - place - LINE.size()), line)) return false;
    const size_t fileStart = file + BEFORE_FILE.size();
    const std::string name = nameless.empty() ? message.substr(fileStart, place - fileStart) : nameless;
    const std::string text = message.substr(colon + 2);

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
bool isReportedElsewhere(const std::string &message) {
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
    for (const std::string &message : TakeLogLines()) {
        if (AddDroppedLine(message, file)) {
            isAny = true;
            continue;
        }
        if (isReportedElsewhere(message)) continue;
        for (std::string_view sign : {"rror", "ERROR", "ailed", "not found"}) {
            if (message.find(sign) == std::string::npos) continue;
            const size_t text = message.find(" SEC TFT ");
            AddFinding(Severity::Error, file.empty() ? WhatPluginPath() : file, 0,
                       text == std::string::npos ? message : message.substr(text + 9));
            isAny = true;
            break;
        }
    }
    return isAny;
}

int CheckFolder(const CheckOptions &options) {
    const std::string pluginFolder = EnterFolder(options.folder, options.xplaneFolder);
    if (pluginFolder.empty()) return 2;
    CheckSettings(pluginFolder);
    CheckFigureFiles(pluginFolder);
    ReadSystems(pluginFolder);
    CheckNames();
    CheckLinks();
    CheckGraphs();
    CheckActions(!options.xplaneFolder.empty());
    CheckBlocks();
    CheckPhrases();
    CheckLinkCycles();
    CheckFonts(pluginFolder);

    std::error_code failed;
    const std::string folder = (std::filesystem::absolute(options.folder, failed) / "").lexically_normal();
    const std::string shown = options.folder + (options.folder.ends_with('/') ? "" : "/");
    return PrintFindings(pluginFolder, folder, shown) ? 0 : 1;
}

} // namespace simhost
