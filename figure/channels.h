// The animation channels of the figure: one per movable part, each with three float datarefs that the
// figure's object reads. This module owns the table and the single datarefs of the figure; positions and
// animation move the channels.
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"

const int AxisCount = 3; // x, y, z

// One channel. Values are in the units of the figure object's animations and are never interpreted here.
struct structAnim {
    std::string name;
    double current[AxisCount] = {};    // last written to the datarefs
    double target[AxisCount] = {};     // where the running move ends
    double liveDelta[AxisCount] = {};  // what the idle step still had to go when it was chosen, signed
    double speed[AxisCount] = {};      // of the running move, units a second
    double liveFactor[AxisCount] = {}; // speed factor of the idle motion; the head's alone is used
    XPLMDataRef dataref[AxisCount] = {};
    float *published[AxisCount] = {}; // what the datarefs hold; null: another plug-in had taken the name

    // What the dataref of an axis holds, without asking the simulator for what lies here; 0 when it is not
    // ours.
    float Shown(int axis) const { return published[axis] ? *published[axis] : 0.0F; }
    void Show(int axis, float value) const {
        if (published[axis]) *published[axis] = value;
    }
};

const int HeadChannel = 3;
const int LeftFingersFirst = 7, LeftFingersLast = 21;
const int RightFingersFirst = 25, RightFingersLast = 39;
const int BodyMiddleChannel = 0, BodyTopChannel = 1, NeckChannel = 2;
const int LeftArmChannel = 4, RightArmChannel = 22;
const int LegsFirst = 40;
const int FigureOffsetChannel = 46;
const int FigureChannels = 47; // of the figure that is shipped
const char *const FigureOffsetName = "xyz";

// The single datarefs are null when another plug-in had taken the name.
struct FigureChannelsState {
    std::vector<structAnim>
        table; // in the order of the definition file: object and position files rely on it
    XPLMDataRef deltaHdg2Fo = nullptr;  // "kv/fo/delta_hdg2fo": pilot's view to the figure, degrees
    XPLMDataRef eyesX = nullptr;        // "kv/fo/_eyes_x"
    XPLMDataRef eyesY = nullptr;        // "kv/fo/_eyes_y"
    float *publishedEyes[2] = {};       // what the two hold; null as above
    XPLMDataRef glass = nullptr;        // "kv/fo/_glass": 1 shows the glasses
    XPLMDataRef showPlanshet = nullptr; // "kv/fo/_planshet": 1 shows the tablet
    XPLMDataRef face = nullptr;         // "kv/fo/_face": eyes and lips, -1 while hidden
    XPLMDataRef mouth = nullptr;        // "kv/fo/_mouth": 0 as the face says, else a MouthShape
    XPLMDataRef showPad = nullptr;      // "kv/fo/_pad": 1 shows pad and pen
    XPLMDataRef gender = nullptr;       // "kv/fo/_gender": 0 shows the woman, 1 the man
    XPLMDataRef look = nullptr;         // "kv/fo/_look": 0 to 2, which of three looks
    XPLMDataRef showFennic = nullptr;   // "kv/fo/_show": 1 shows the figure
    XPLMDataRef baro100 = nullptr;      // "kv/fo/baro100": altimeter setting, 1/100 inHg
    XPLMDataRef baroCheck = nullptr;    // "kv/fo/baro_check": 1 when the setting is sensible
};
extern FigureChannelsState figureChannels;
inline std::vector<structAnim> &anim = figureChannels.table;
inline XPLMDataRef &DRFf_DeltaHdg2Fo = figureChannels.deltaHdg2Fo;
inline XPLMDataRef &DRFf_EyesX = figureChannels.eyesX, &DRFf_EyesY = figureChannels.eyesY;
inline XPLMDataRef &DRFi_Glass = figureChannels.glass, &DRFi_ShowPlanshet = figureChannels.showPlanshet;
inline XPLMDataRef &DRFi_Face = figureChannels.face, &DRFi_ShowFennic = figureChannels.showFennic;
inline XPLMDataRef &DRFi_Baro100 = figureChannels.baro100, &DRFi_BaroCheck = figureChannels.baroCheck;

// Fills the table from a definition file (lines "index,name": the order of the lines counts, not the index)
// and publishes all datarefs of the figure. A file that cannot be read leaves the table empty, with one
// line in the log; the single datarefs are published all the same. Called once, at start.
void LoadAnimationFile(const std::string &path);

// Fills the table from the animations of a figure object instead: a channel for each run of lines that end
// in the same dataref but for its axis. A file that cannot be read leaves the table empty, with one line in
// the log. For developers of figures, with SaveAnimationFile; nothing in the menu leads here.
void ReadObjFileForDatarefs(const std::string &path);

// Writes the table back to "data/obj/fennic.txt" in the plug-in's folder. For developers of figures.
void SaveAnimationFile();

// How many looks each figure has.
const int FigureLooks = 3;

// Shows the figure in use with its look, by the settings.
void ShowPerson();

// Shows a look of the figure in use, 0 to 2, and keeps it in the settings.
void ChooseLook(int look);

// Everything as when the program starts.
void ResetChannels();
