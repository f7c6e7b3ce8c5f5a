// Descriptions must begin with a text of the table, or of the list of aircraft behind it: an aircraft that
// only mentions another one is not it.
#include "frame/aircraft.h"

#include "util/files.h"
#include "util/make_fresh.h"

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

} // namespace

std::span<const AircraftRow> KnownAircraft() {
    return Aircraft;
}

void ServeAs(const AircraftRow &row) {
    isLegalAcf = true;
    acfType = row.type;
    aircraftState.traits = row.traits;
}

bool isModelThere(const AircraftRow &row, const std::string &folder) {
    return row.modelFile.empty() || isFileExistString(folder + row.modelFile) == 1;
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

void ResetAircraft() {
    MakeFresh(aircraftState);
}
