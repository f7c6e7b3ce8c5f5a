// She looks at an aircraft's description and at the name of its model file before she reads anything else.
#include <filesystem>
#include <string>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "figure/acf_file.h"
#include "frame/aircraft.h"
#include "frame/aircraft_detection.h"
#include "frame/aircraft_list.h"
#include "simhost/world/aircraft_folder.h"

namespace simhost {

namespace {

// Whether the figure can come into the aircraft's file as its row wants it.
void CheckSetup(const AircraftRow &row, const std::string &acf) {
    if (row.traits.setup == FigureSetup::None) return;
    const AircraftFileFacts facts = ExamineAircraftFile(acf);
    const std::string name = acf.substr(acf.rfind('/') + 1);
    if (row.traits.setup == FigureSetup::Replaced && facts.figureLines == 0)
        AddFinding(Severity::Warning, AircraftListFile, row.line,
                   name + " names no kvfennic.obj, so nobody sees the figure; setup=acf attaches her");
    else if (row.traits.setup == FigureSetup::Attached && facts.figureLines == 0 && !facts.reason.empty())
        AddFinding(Severity::Error, AircraftListFile, row.line,
                   "the figure cannot be put into " + name + ": " + facts.reason);
}

// What the list says of an aircraft with this description, in its folder.
void CheckList(const std::vector<AircraftRow> &listed, const std::string &folder, const AircraftFile &found,
               const AircraftRow *served) {
    for (const AircraftRow &row : listed) {
        if (!row.modelFile.empty() && !std::filesystem::exists(folder + row.modelFile))
            AddFinding(Severity::Warning, AircraftListFile, row.line,
                       "there is no " + row.modelFile + " in the aircraft's folder");
        else if (served && served->line == 0 && found.description.starts_with(row.description))
            AddFinding(Severity::Note, AircraftListFile, row.line,
                       "not used for this aircraft, which she knows without it");
    }
    if (served && served->line > 0) CheckSetup(*served, folder + found.name);
}

} // namespace

void CheckAircraft(const std::string &pluginFolder) {
    std::vector<AircraftRow> listed;
    const bool hasList = ReadAircraftList(pluginFolder, listed);
    TellReaderRecords();
    if (hasList && listed.empty())
        AddFinding(Severity::Error, AircraftListFile, 0, "it describes no aircraft: no line \"aircraft=\"");
    // <aircraft>/plugins/<folder>/64/
    const std::filesystem::path folder =
        std::filesystem::path(pluginFolder).parent_path().parent_path().parent_path().parent_path() / "";
    const AircraftFile found = FindAircraftFile(folder.generic_string());
    if (found.name.empty()) { // the plug-in's folder alone
        if (!hasList)
            AddFinding(Severity::Note, AircraftListFile, 0,
                       "not here, nor an aircraft around the folder: as it is, it serves no aircraft");
        return;
    }
    const AircraftRow *const served = ServedAircraft(found.description, folder.generic_string(), listed);
    CheckList(listed, folder.generic_string(), found, served);
    if (served) PublishForAircraft(*served);
    if (!served)
        AddFinding(Severity::Error, (folder / found.name).generic_string(), 0,
                   found.hasDescription
                       ? "she does not serve this aircraft, so nothing here is read; its description is \""
                             + found.description + "\", which no line of " + AircraftListFile + " begins"
                       : "without a description she does not know the aircraft, so nothing here is read");
    else if (!served->modelFile.empty() && !std::filesystem::exists(folder / served->modelFile))
        AddFinding(Severity::Error, (folder / found.name).generic_string(), 0,
                   "the file of this aircraft must be named " + served->modelFile
                       + ", else none of the systems files is read");
}

} // namespace simhost
