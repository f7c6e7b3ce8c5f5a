// Which aircraft is loaded, and what differs between aircraft.
#pragma once

#include <string>

// How the figure comes into an aircraft.
enum class FigureSetup {
    None,     // there is nothing to set up
    Replaced, // the aircraft's own figure makes room for her
    Seats,    // and so do its seats
    Attached, // the figure is named in the aircraft's file (.acf), too
};

// What the rest of the plug-in asks, instead of asking for a type.
struct AircraftTraits {
    FigureSetup setup = FigureSetup::None;
    bool carriesFigure = false;    // as it is delivered: no setup, and no menu items for it
    bool publishesRunways = false; // those of its flight management: for call-outs and spoken texts
    bool hasClickSound = false;    // the held select button confirms also before its dataref is there
};

// One description, and what it stands for.
struct AircraftRow {
    std::string description; // what the simulator's begins with
    int type = 0;            // 172, 319, 321, 345, 737, 739, 767
    std::string label;       // for the log
    std::string modelFile;   // in the aircraft's folder; without it no systems are read
    int variant = 0;         // published as "kv/fnc/lu_mode"; 0: not published
    AircraftTraits traits;
};

struct AircraftState {
    int type = 0;            // 0 when the aircraft is not served
    bool isLegal = true;     // an aircraft that the plug-in serves was detected
    int isDeveloper = 0;     // developer mode: the menu's tools
    int isEditorOffered = 0; // developer mode: the systems editor
};
extern AircraftState aircraftState;
inline int &acfType = aircraftState.type;
inline bool &isLegalAcf = aircraftState.isLegal;
inline int &globalDeveloper = aircraftState.isDeveloper, &isVAdraw = aircraftState.isEditorOffered;

// The traits of the aircraft of the type acfType; of one that is not served, none.
const AircraftTraits &ThisAircraft();

// The aircraft's description as the simulator publishes it.
std::string ReadDRF_descrString();

// The first row whose description this one begins with; nullptr when the aircraft is not served.
const AircraftRow *ServedAircraft(const std::string &description);

// First pass: sets acfType from the description and logs what was found. 1 when the aircraft is served.
int ReadDRF_descr();

// Second pass: developer mode, which a line "editor=1" in "data/developer.txt" switches on; and, when the
// aircraft's model file is in its folder, the datarefs of its type and its systems, with the editor's window
// in developer mode.
void ReadAcfTypeAndDeveloperMode();

// Everything as when the program starts.
void ResetAircraft();
