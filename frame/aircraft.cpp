// Aircraft detection. Descriptions must begin with a text of the table: an aircraft that only mentions
// another one is not it.
#include "frame/aircraft.h"

#include "figure/flight_computations.h"
#include "frame/datarefs.h"
#include "systems/reader.h"
#include "systems/writer.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"

int acfType = 0;
bool isLegalAcf = true;
int globalDeveloper = 0;
int isVAdraw = 0;

namespace {

struct AircraftRow {
    const char *description; // what it begins with
    int type;
    const char *label; // for the log
    const char *modelFile;
    int variant; // published for type 739, else 0
};

const AircraftRow Aircraft[] = {
    {"Cessna 172 SP Skyhawk - 180HP", 172, "Cessna 172 SP Skyhawk", "Cessna_172SP.acf", 0},
    {"A319 with high fidelity system modelling", 319, "TL319", "a319.acf", 0},
    {"A321 with high fidelity system modelling", 321, "TL321", "a321.acf", 0},
    {"Boeing 737-800X", 737, "O737X", "b738_4k.acf", 0},
    {"Boeing 737-800NG", 739, "737 Level Up", "737_80NG.acf", 738},
    {"Boeing 737-900ER", 739, "737 Level Up", "737_80NG.acf", 739},
    {"Boeing 737-600NG", 739, "737 Level Up", "737_80NG.acf", 736},
    {"Boeing 737-700NG", 739, "737 Level Up", "737_80NG.acf", 737},
    {"Boeing 737-900NG", 739, "737 Level Up", "737_80NG.acf", 739},
    {"Boeing 767 300ER", 767, "FF767", "767-300ER_xp11.acf", 0},
    {"KV340-500", 345, "KV345", "a340.acf", 0},
};

// A folder without the file has no developer mode.
void ReadDeveloperMode() {
    const std::string file = WhatPluginPath() + "data/developer.txt";
    if (!isFileExistString(file)) return;
    for (const std::string &line : ReadFileToVector(file))
        if (line == "editor=1") globalDeveloper = isVAdraw = 1;
}

const AircraftRow *FindAircraft(const std::string &description) {
    for (const AircraftRow &row : Aircraft)
        if (description.starts_with(row.description)) return &row;
    return nullptr;
}

} // namespace

const char *ServedModelFile(const std::string &description) {
    const AircraftRow *row = FindAircraft(description);
    return row ? row->modelFile : nullptr;
}

std::string ReadDRF_descrString() {
    return GetDRFs(FindDataref("sim/aircraft/view/acf_descrip"));
}

int ReadDRF_descr() {
    const AircraftRow *row = FindAircraft(ReadDRF_descrString());
    if (!row) return 0;
    isLegalAcf = true;
    acfType = row->type;
    string2debugString("Aircraft detected: ", row->label, 1);
    return 1;
}

void ReadAcfTypeAndDeveloperMode() {
    ReadDeveloperMode();
    const AircraftRow *row = FindAircraft(ReadDRF_descrString());
    if (!row || !isFileExistString(WhatThisAircraftPath() + row->modelFile)) return;
    acfType = row->type;
    if (acfType == 737 || acfType == 739) CreateOrvikDatarefs();
    if (acfType == 739) CreateDrf_Int("kv/fnc/lu_mode", row->variant);
    FinishInterruptedSave();
    CreateSystemsFromFile();
}

void ResetAircraft() {
    MakeFresh(acfType, globalDeveloper, isVAdraw);
    isLegalAcf = true;
}
