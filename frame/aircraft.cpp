// Aircraft detection. Descriptions must begin with a text of the table: an aircraft that only mentions
// another one is not it.
#include "frame/aircraft.h"

#include "figure/flight_computations.h"
#include "frame/datarefs.h"
#include "systems/editor/window.h"
#include "systems/reader.h"
#include "systems/writer.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"

AircraftState aircraftState;

namespace {

const AircraftTraits Cessna = {};
const AircraftTraits Airbus = {.setup = FigureSetup::Seats};
const AircraftTraits Boeing737 = {
    .setup = FigureSetup::Replaced, .publishesRunways = true, .hasClickSound = true};
const AircraftTraits LevelUp = {.setup = FigureSetup::Replaced, .publishesRunways = true};
const AircraftTraits Boeing767 = {.setup = FigureSetup::Attached};
const AircraftTraits Airbus345 = {.carriesFigure = true};

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

} // namespace

const AircraftTraits &ThisAircraft() {
    static const AircraftTraits none;
    for (const AircraftRow &row : Aircraft)
        if (row.type == acfType) return row.traits;
    return none;
}

const AircraftRow *ServedAircraft(const std::string &description) {
    for (const AircraftRow &row : Aircraft)
        if (description.starts_with(row.description)) return &row;
    return nullptr;
}

std::string ReadDRF_descrString() {
    return GetDRFs(FindDataref("sim/aircraft/view/acf_descrip"));
}

int ReadDRF_descr() {
    const AircraftRow *row = ServedAircraft(ReadDRF_descrString());
    if (!row) return 0;
    isLegalAcf = true;
    acfType = row->type;
    string2debugString("Aircraft detected: ", row->label, 1);
    return 1;
}

void ReadAcfTypeAndDeveloperMode() {
    ReadDeveloperMode();
    const AircraftRow *row = ServedAircraft(ReadDRF_descrString());
    if (!row || !isFileExistString(WhatThisAircraftPath() + row->modelFile)) return;
    acfType = row->type;
    if (row->traits.publishesRunways) CreateOrvikDatarefs();
    if (row->variant != 0) CreateDrf_Int("kv/fnc/lu_mode", row->variant);
    FinishInterruptedSave();
    CreateSystemsFromFile();
    if (isVAdraw == 1) SysWindowCreate();
}

void ResetAircraft() {
    MakeFresh(aircraftState);
}
