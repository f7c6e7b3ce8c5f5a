// Named poses of the figure. A position is a text file that gives targets for some or all channels; a preset
// is the same kind of file applied to one hand alone. This module owns the lists that the menus show and
// starts the moves; animation.h carries them out frame by frame.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "figure/channels.h"

struct PositionsState {
    std::vector<std::string> list;             // names without ".txt", as the folders were scanned
    std::vector<std::string> restList;         // those with "rest" in their name, for the idle motion
    std::vector<std::string> presets;          // what the preset folder lists, with ".txt"
    std::map<std::string, std::string> groups; // position name to its subfolder, "" for none
    std::string actual;       // file of the one loaded last by a smooth move, relative to the position folder
    double animTime = 0.8;    // length of a smooth move, seconds
    double targetTime = -1.0; // flight time at which the running move ends; -1: none is running
    // What a script or the menu has posed her in, until she takes a rest pose: a position, or a preset.
    std::string held;
    bool wasTakenAtOnce = false;                        // the last one, and nobody has looked yet
    bool isTabletBrought = false, isPadBrought = false; // by a position
};
extern PositionsState positions;
inline std::vector<std::string> &positionList = positions.list, &positionRestList = positions.restList;
inline std::vector<std::string> &presetList = positions.presets;
inline std::map<std::string, std::string> &mapPos = positions.groups;
inline std::string &ActualPosition = positions.actual;
inline double &AnimTime = positions.animTime, &TargetTimeSEC = positions.targetTime;

// One line of a position: where it moves a channel of the table.
struct PositionLine {
    int index = 0;
    double values[AxisCount] = {};
};

// The lines of a position that a scan has found; none, with a line in the log, when it cannot be read. Those
// that are malformed are logged and dropped.
std::vector<PositionLine> LinesOfPosition(const std::string &name);

// Scans "custom/" + globalPosFolder with one level of subfolders, and "custom/presets/". The list of rest
// poses is not emptied: each scan adds its own.
void ReadPositionFolder();

// Starts a move of AnimTime seconds to the position, from what the datarefs show now. A channel that the
// file does not name stays, or, while another move runs, keeps its target and speed; but a file without the
// figure's offset brings the figure home. Unreadable: one line in the log; a move of nothing runs, or the
// other one goes on. A name that no scan found: the line alone. A malformed line is logged and dropped.
// A name that holds "tablet" or "writing" shows the tablet, or pad and pen ("kv/fo/_planshet", "_pad"); the
// next one that does not hides again what a position has shown.
void LoadPositionFromFile(const std::string &name);

// The same, but the figure arrives in the next frame; the start is the stored values, and ActualPosition
// stays.
void LoadPositionFastFromFile(const std::string &name);

// Load the position if positionList holds exactly this name, else do nothing.
void ExecutePos(const std::string &name);
void ExecutePosFast(const std::string &name);

// Moves the fingers of one hand: the left for a file name that begins with "l_", else the right; no hand
// when no gender is chosen. Other channels that the file names are stopped where they are.
void LoadPresetFromFile(const std::string &fileName);

// Writes the pose that the datarefs show, all channels, to the file of this position (in its subfolder if it
// has one). False, with a line in the log: the name is no file name, or nothing could be written. Lists are
// not scanned again.
bool SavePosition(const std::string &name);

// The same, as the new preset of a hand.
void SavePresetLeftToFile();
void SavePresetRghtToFile();

// Everything as when the program starts.
void ResetPositions();
