// Developer mode is found out in the second pass, since the editor shows the systems of the aircraft.
#include "frame/aircraft_detection.h"

#include <algorithm>

#include "figure/flight_computations.h"
#include "frame/aircraft.h"
#include "frame/aircraft_list.h"
#include "frame/datarefs.h"
#include "systems/editor/window.h"
#include "systems/reader.h"
#include "systems/writer.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"

namespace {

// A folder without the file has no developer mode.
void ReadDeveloperMode() {
    const std::string file = "data/developer.txt";
    std::vector<FileLine> lines;
    ReadLines(WhatPluginPath() + file, lines);
    for (const FileLine &line : lines) {
        if (line.text == "editor=1")
            globalDeveloper = isVAdraw = 1;
        else if (line.text != "editor=0")
            LogDroppedLine(file, line.number, "developer mode takes the line \"editor=1\"", line.text);
    }
}

const AircraftRow *RowOfThisAircraft() {
    return ServedAircraft(ReadDRF_descrString(), WhatThisAircraftPath(), aircraftState.listed);
}

// What an author wonders about whose list does not do what he expects. row: what serves the aircraft, or
// null.
void TellOfList(const std::string &description, const AircraftRow *row) {
    const auto listed =
        std::find_if(aircraftState.listed.begin(), aircraftState.listed.end(),
                     [&](const AircraftRow &each) { return description.starts_with(each.description); });
    if (!row)
        LogFileProblem("This aircraft is not described in ", AircraftListFile,
                       "its description is \"" + description + "\"");
    else if (listed == aircraftState.listed.end())
        string2debugString(AircraftListFile, " describes other aircraft than this one: " + description, 1);
    else if (row->line == 0)
        string2debugString(
            AircraftListFile,
            " line " + int2string(listed->line) + " is not used: she knows this aircraft without it", 1);
    else if (!isModelThere(*row, WhatThisAircraftPath()))
        Report({.file = AircraftListFile,
                .line = row->line,
                .reason = "there is no " + row->modelFile
                          + " in the aircraft's folder, so no systems are read for it"});
}

} // namespace

std::string ReadDRF_descrString() {
    return GetDRFs(FindDataref("sim/aircraft/view/acf_descrip"));
}

int ReadDRF_descr() {
    const bool hasList = ReadAircraftList(WhatPluginPath(), aircraftState.listed);
    const AircraftRow *row = RowOfThisAircraft();
    if (hasList) TellOfList(ReadDRF_descrString(), row);
    if (!row) return 0;
    ServeAs(*row);
    string2debugString("Aircraft detected: ", row->label, 1);
    return 1;
}

void PublishForAircraft(const AircraftRow &row) {
    if (row.traits.publishesRunways) CreateOrvikDatarefs();
    if (row.variant != 0) CreateDrf_Int("kv/fnc/lu_mode", row.variant);
}

void ReadAcfTypeAndDeveloperMode() {
    ReadDeveloperMode();
    const AircraftRow *row = RowOfThisAircraft();
    if (!row || !isModelThere(*row, WhatThisAircraftPath())) return;
    ServeAs(*row);
    PublishForAircraft(*row);
    FinishInterruptedSave();
    CreateSystemsFromFile();
    if (isVAdraw == 1) SysWindowCreate();
}
