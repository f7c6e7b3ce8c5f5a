// Aircraft detection. Descriptions must begin with a text of the table, or of the list of aircraft behind it:
// an aircraft that only mentions another one is not it.
#include "frame/aircraft.h"

#include <algorithm>

#include "figure/flight_computations.h"
#include "frame/aircraft_list.h"
#include "frame/datarefs.h"
#include "systems/editor/window.h"
#include "systems/reader.h"
#include "systems/writer.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"

AircraftState aircraftState;

namespace {

const AircraftTraits Cessna = {};
const AircraftTraits Airbus = {.setup = FigureSetup::Seats};
const AircraftTraits Boeing737 = {
    .setup = FigureSetup::Replaced, .publishesRunways = true, .hasClickSound = true};
const AircraftTraits LevelUp = {.setup = FigureSetup::Replaced, .publishesRunways = true};
const AircraftTraits Boeing767 = {.setup = FigureSetup::Attached};
const AircraftTraits Airbus345 = {.carriesFigure = true, .needsNoSetup = true};

const AircraftRow Aircraft[] = {
    {"Cessna 172 SP Skyhawk - 180HP", 172, "Cessna 172 SP Skyhawk", "Cessna_172SP.acf", 0, Cessna},
    {"A319 with high fidelity system modelling", 319, "TL319", "a319.acf", 0, Airbus},
    {"A321 with high fidelity system modelling", 321, "TL321", "a321.acf", 0, Airbus},
    {"Boeing 737-800X", 737, "O737X", "b738_4k.acf", 0, Boeing737},
    {"Boeing 737-800NG", 739, "737 Level Up", "737_80NG.acf", 738, LevelUp},
    {"Boeing 737-900ER", 739, "737 Level Up", "737_80NG.acf", 739, LevelUp},
    {"Boeing 737-600NG", 739, "737 Level Up", "737_80NG.acf", 736, LevelUp},
    {"Boeing 737-700NG", 739, "737 Level Up", "737_80NG.acf", 737, LevelUp},
    {"Boeing 737-900NG", 739, "737 Level Up", "737_80NG.acf", 739, LevelUp},
    {"Boeing 767 300ER", 767, "FF767", "767-300ER_xp11.acf", 0, Boeing767},
    {"KV340-500", 345, "KV345", "a340.acf", 0, Airbus345},
};

// A folder without the file has no developer mode.
void ReadDeveloperMode() {
    const std::string file = WhatPluginPath() + "data/developer.txt";
    if (!isFileExistString(file)) return;
    for (const std::string &line : ReadFileToVector(file))
        if (line == "editor=1") globalDeveloper = isVAdraw = 1;
}

bool isModelThere(const AircraftRow &row, const std::string &folder) {
    return row.modelFile.empty() || isFileExistString(folder + row.modelFile) == 1;
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

std::span<const AircraftRow> KnownAircraft() {
    return Aircraft;
}

void ServeAs(const AircraftRow &row) {
    isLegalAcf = true;
    acfType = row.type;
    aircraftState.traits = row.traits;
}

const AircraftRow *ServedAircraft(const std::string &description, const std::string &folder,
                                  std::span<const AircraftRow> listed) {
    const AircraftRow *first = nullptr;
    for (const std::span<const AircraftRow> rows : {KnownAircraft(), listed})
        for (const AircraftRow &row : rows) {
            if (!description.starts_with(row.description)) continue;
            if (isModelThere(row, folder)) return &row;
            if (!first) first = &row;
        }
    return first;
}

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

void ReadAcfTypeAndDeveloperMode() {
    ReadDeveloperMode();
    const AircraftRow *row = RowOfThisAircraft();
    if (!row || !isModelThere(*row, WhatThisAircraftPath())) return;
    ServeAs(*row);
    if (row->traits.publishesRunways) CreateOrvikDatarefs();
    if (row->variant != 0) CreateDrf_Int("kv/fnc/lu_mode", row->variant);
    FinishInterruptedSave();
    CreateSystemsFromFile();
    if (isVAdraw == 1) SysWindowCreate();
}

void ResetAircraft() {
    MakeFresh(aircraftState);
}
