// Paths, versions and the log. The log goes to Log.txt in the simulator's folder, as it comes, and its newest
// lines are kept for flights and tests.
#include "XPLMUtilities.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>
#include <set>
#include <string_view>

#include "simhost/events.h"
#include "simhost/modules.h"
#include "simhost/number_text.h"
#include "simhost/simulator.h"
#include "simhost/system.h"
#include "simhost/windows/keyboard.h"

namespace simhost {

namespace {

constexpr std::size_t KeptLogLines = 100000;
constexpr std::size_t LongestLogLine = 1 << 16;
constexpr std::size_t KeptSpeech = 10000; // texts

struct Utilities {
    std::string xplaneFolder, aircraftFolder, aircraftFile;
    std::deque<std::string> logLines;
    std::deque<std::string> speech;   // of the simulator's own voice
    std::deque<std::string> problems; // among the lines
    std::string openLine;             // what came after the last line end
    bool hasDroppedLogLines = false;
    bool usesColons = false; // in paths, for plug-ins that did not ask for native ones
    std::FILE *logFile = nullptr;
    std::set<const char *> notOffered; // names, by address, of the functions that the log has named
};

Utilities &UtilitiesState() {
    static auto &state = *new Utilities;
    return state;
}

void WriteLogFile(const char *text, std::size_t length) {
    if (!UtilitiesState().logFile) return;
    std::fwrite(text, 1, length, UtilitiesState().logFile);
    std::fflush(UtilitiesState().logFile); // what a crash is about comes last
}

void KeepProblem(std::string text) {
    std::deque<std::string> &problems = UtilitiesState().problems;
    while (problems.size() >= KeptLogLines) problems.pop_front();
    problems.push_back(text);
    if (hasEventListener()) ReportEvent({EventKind::Problem, std::move(text), {}});
}

// A line by which anybody tells of a problem: "Error" or "!!!" comes first, or right behind a name and ":".
bool isProblemLine(std::string_view line) {
    const size_t colon = line.find(": ");
    const std::string_view unnamed = colon == std::string_view::npos ? "" : line.substr(colon + 2);
    for (std::string_view sign : {"Error", "ERROR", "!!!"})
        if (line.starts_with(sign) || unnamed.starts_with(sign)) return true;
    return false;
}

void KeepLogLine(std::string line) {
    while (!line.empty() && line.back() == '\r') line.pop_back();
    std::deque<std::string> &lines = UtilitiesState().logLines;
    if (lines.size() >= KeptLogLines && !UtilitiesState().hasDroppedLogLines) {
        UtilitiesState().hasDroppedLogLines = true;
        WriteLog("the oldest log lines are no longer kept in memory; Log.txt has them all");
    }
    while (lines.size() >= KeptLogLines) lines.pop_front();
    lines.push_back(line);
    if (isProblemLine(line)) KeepProblem(std::move(line));
}

void AppendToLog(const char *text) {
    WriteLogFile(text, std::strlen(text));
    std::string &openLine = UtilitiesState().openLine;
    for (; *text != '\0'; text++) {
        if (*text != '\n') openLine += *text;
        if (*text == '\n' || openLine.size() >= LongestLogLine) {
            std::string line;
            line.swap(openLine);
            KeepLogLine(std::move(line));
        }
    }
}

std::vector<std::string> TakeAll(std::deque<std::string> &texts) {
    std::vector<std::string> taken(std::make_move_iterator(texts.begin()),
                                   std::make_move_iterator(texts.end()));
    texts.clear();
    return taken;
}

char GivenSeparator() {
    return UtilitiesState().usesColons && !XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS") ? ':'
                                                                                         : NativeSeparator;
}

std::string WithSlash(std::string folder) {
    if (!folder.empty() && folder.back() != '/') folder += '/';
    return folder;
}

} // namespace

void SetFolders(const std::string &xplaneFolder, const std::string &aircraftFolder,
                const std::string &aircraftFile) {
    Utilities &state = UtilitiesState();
    const std::string before = state.xplaneFolder;
    state.xplaneFolder = WithSlash(xplaneFolder);
    state.aircraftFolder = WithSlash(aircraftFolder);
    state.aircraftFile = aircraftFile;
    if (state.xplaneFolder == before) return;
    if (state.logFile) std::fclose(state.logFile);
    state.logFile =
        state.xplaneFolder.empty() ? nullptr : std::fopen((state.xplaneFolder + "Log.txt").c_str(), "w");
}

const std::string &XplaneFolder() {
    return UtilitiesState().xplaneFolder;
}
const std::string &AircraftFolder() {
    return UtilitiesState().aircraftFolder;
}
const std::string &AircraftFile() {
    return UtilitiesState().aircraftFile;
}

void UseColonPaths(bool on) {
    UtilitiesState().usesColons = on;
}

std::string PathForPlugin(const std::string &path) {
    if (GivenSeparator() == '/' || path.empty()) return path;
    std::string given = (GivenSeparator() == ':' && path[0] == '/' ? "Macintosh HD" : "") + path;
    std::replace(given.begin(), given.end(), '/', GivenSeparator());
    return given;
}

std::string PathFromPlugin(const std::string &given) {
    std::string path = given;
    if (GivenSeparator() == ':' && !path.starts_with('/')) { // behind the volume's name
        path.erase(0, std::min(path.find(':'), path.size()));
        std::replace(path.begin(), path.end(), ':', '/');
    } else if (GivenSeparator() == '\\') {
        std::replace(path.begin(), path.end(), '\\', '/');
    }
    return std::filesystem::path(path).is_absolute() ? path : XplaneFolder() + path;
}

void WriteLog(const std::string &line) {
    FlushLog();
    AppendToLog(("simhost: " + line + "\n").c_str());
}

void ReportNotOffered(const char *function) {
    if (!UtilitiesState().notOffered.insert(function).second) return;
    WriteLog(std::string(function) + " is not offered by this simulator yet; the call does nothing");
}

void FlushLog() {
    if (!UtilitiesState().openLine.empty()) AppendToLog("\n");
}

std::vector<std::string> TakeLogLines() {
    UtilitiesState().problems.clear();
    return TakeAll(UtilitiesState().logLines);
}

std::vector<std::string> TakeSimulatorSpeech() {
    return TakeAll(UtilitiesState().speech);
}

std::vector<std::string> TakeProblems() {
    return TakeAll(UtilitiesState().problems);
}

void RecordLogText(std::string_view text) {
    const std::string_view kind = TakeField(text);
    const std::string subject(TakeField(text)), words(text);
    if (kind == "error") KeepProblem(words);
    if (!hasEventListener() || kind == "error" || kind == "speech") return; // which the speech link tells
    if (kind == "answers")
        ReportEvent({EventKind::AnswersExpected, words, {}});
    else if (kind == "command")
        ReportEvent({EventKind::ActionOnCommand, subject, {}});
    else if (kind == "dataref")
        ReportEvent({EventKind::ActionOnDataref, subject, {}});
    else
        ReportEvent({EventKind::ActionBegun, words, {}});
}

void ResetUtilities() {
    Utilities &state = UtilitiesState();
    if (state.logFile) std::fclose(state.logFile);
    state = {};
}

void CopyText(const std::string &text, char *out, std::size_t size) {
    if (!out || size == 0) return;
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(out, text.data(), length);
    out[length] = '\0';
}

} // namespace simhost

using namespace simhost;

void XPLMGetSystemPath(char *outSystemPath) {
    CopyText(PathForPlugin(XplaneFolder()), outSystemPath, 512);
}

void XPLMGetPrefsPath(char *outPrefsPath) {
    CopyText(PathForPlugin(XplaneFolder() + "Output/preferences/X-Plane.prf"), outPrefsPath, 512);
}

const char *XPLMGetDirectorySeparator(void) {
    static const char separators[][2] = {"/", ":", "\\"};
    return separators[GivenSeparator() == '/' ? 0 : GivenSeparator() == ':' ? 1 : 2];
}

char *XPLMExtractFileAndPath(char *inFullPath) {
    if (!inFullPath) return nullptr;
    char *separator = std::strrchr(inFullPath, GivenSeparator());
    if (!separator) return inFullPath;
    *separator = '\0';
    return separator + 1;
}

void XPLMGetVersions(int *outXPlaneVersion, int *outXPLMVersion, int *outHostID) {
    if (outXPlaneVersion) *outXPlaneVersion = 12100; // 12.1.0
    if (outXPLMVersion) *outXPLMVersion = kXPLM_Version;
    if (outHostID) *outHostID = 1; // X-Plane
}

int XPLMGetLanguage(void) {
    return 1; // English
}

void *XPLMFindSymbol(const char *inString) {
    // Only the interface itself, not everything else that lies in the process.
    if (!inString || std::strncmp(inString, "XP", 2) != 0) return nullptr;
    return FindOwnCall(inString);
}

void XPLMSetErrorCallback(XPLMError_f inCallback) {
    SetErrorCallback(inCallback);
}

void XPLMDebugString(const char *inString) {
    if (inString) AppendToLog(inString);
}

void XPLMSpeakString(const char *inString) {
    if (inString == nullptr) return;
    std::deque<std::string> &speech = UtilitiesState().speech;
    if (speech.size() >= KeptSpeech) speech.pop_front();
    speech.emplace_back(inString);
    ReportEvent({EventKind::SimulatorSpeech, inString, {}});
}

const char *XPLMGetVirtualKeyDescription(char inVirtualKey) {
    return NameOfVirtualKey(static_cast<unsigned char>(inVirtualKey)).c_str();
}

int XPLMGetDirectoryContents(const char *inDirectoryPath, int inFirstReturn, char *outFileNames,
                             int inFileNameBufSize, char **outIndices, int inIndexCount, int *outTotalFiles,
                             int *outReturnedFiles) {
    std::vector<std::string> names;
    std::error_code failed;
    std::filesystem::directory_iterator entry(PathFromPlugin(inDirectoryPath ? inDirectoryPath : ""), failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());

    const auto room = static_cast<std::size_t>(outFileNames ? std::max(inFileNameBufSize, 0) : 0);
    std::size_t used = 0, next = static_cast<std::size_t>(std::max(inFirstReturn, 0));
    int returned = 0;
    for (; next < names.size() && used + names[next].size() < room; next++, returned++) {
        if (outIndices && returned >= inIndexCount) break;
        char *const name = outFileNames + used;
        CopyText(names[next], name, names[next].size() + 1);
        if (outIndices) outIndices[returned] = name;
        used += names[next].size() + 1;
    }
    if (outTotalFiles) *outTotalFiles = static_cast<int>(names.size());
    if (outReturnedFiles) *outReturnedFiles = returned;
    return next >= names.size() ? 1 : 0;
}

int XPLMLoadDataFile(XPLMDataFileType, const char *) {
    ReportNotOffered(__func__);
    return 0;
}

int XPLMSaveDataFile(XPLMDataFileType, const char *) {
    ReportNotOffered(__func__);
    return 0;
}

void XPLMReloadScenery(void) {
    ReportNotOffered(__func__);
}
