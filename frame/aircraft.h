// Which aircraft is loaded, and what differs between aircraft.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

// How the figure comes into an aircraft.
enum class FigureSetup {
    None,     // there is nothing to set up
    Replaced, // the aircraft's own figure makes room for her
    Seats,    // and so do its seats
    Attached, // the figure is named in the aircraft's file (.acf), too
};

// Where the figure sits, as an aircraft file has it: feet to the right of the aircraft's reference point,
// above and behind it.
struct SeatPlace {
    double x = 0.0, y = 0.0, z = 0.0;
};

// What the rest of the plug-in asks, instead of asking for a type.
struct AircraftTraits {
    FigureSetup setup = FigureSetup::None;
    bool carriesFigure = false;         // as it is delivered
    bool needsNoSetup = false;          // she works without being set up, and there are no menu items for it
    bool publishesRunways = false;      // those of its flight management: for call-outs and spoken texts
    bool hasClickSound = false;         // the held select button confirms also before its dataref is there
    std::optional<SeatPlace> seat = {}; // where it is not that of "data/obj/acf.txt"
    int seatLine = 0;                   // of "data/aircraft.txt" that says so
};

// One description, and what it stands for.
struct AircraftRow {
    std::string description; // what the simulator's begins with
    int type = 0;            // 172, 319, 321, 345, 737, 739, 767, or ListedAircraft
    std::string label;       // for the log
    std::string modelFile;   // in the aircraft's folder; without it no systems are read. Empty: any
    int variant = 0;         // published as "kv/fnc/lu_mode"; 0: not published
    AircraftTraits traits;
    int line = 0; // of "data/aircraft.txt"; 0: she knows the aircraft without it
};

const int ListedAircraft = 1; // the type of all aircraft that "data/aircraft.txt" describes

struct AircraftState {
    int type = 0;                    // 0 when the aircraft is not served
    bool isLegal = true;             // an aircraft that the plug-in serves was detected
    int isDeveloper = 0;             // developer mode: the menu's tools
    int isEditorOffered = 0;         // developer mode: the systems editor
    AircraftTraits traits;           // of the loaded aircraft; of one that is not served, none
    std::vector<AircraftRow> listed; // what "data/aircraft.txt" describes
};
extern AircraftState aircraftState;
inline int &acfType = aircraftState.type;
inline bool &isLegalAcf = aircraftState.isLegal;
inline int &globalDeveloper = aircraftState.isDeveloper, &isVAdraw = aircraftState.isEditorOffered;

inline const AircraftTraits &ThisAircraft() {
    return aircraftState.traits;
}

// The aircraft that she knows without a list.
std::span<const AircraftRow> KnownAircraft();

// From here on the loaded aircraft is the row's.
void ServeAs(const AircraftRow &row);

// Whether the row's model file is in the aircraft's folder, which ends in "/".
bool isModelThere(const AircraftRow &row, const std::string &folder);

// The row of an aircraft, first of those that she knows and then of the listed ones: the first whose text the
// description begins with and whose model file is in the aircraft's folder (which ends in "/"). Where all
// lack their files, the first of them; nullptr when the aircraft is not served.
const AircraftRow *ServedAircraft(const std::string &description, const std::string &folder,
                                  std::span<const AircraftRow> listed);

// Everything as when the program starts.
void ResetAircraft();
