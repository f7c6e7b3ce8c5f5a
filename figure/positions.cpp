// Positions and presets. A load only sets targets and speeds. While a move runs, the channels that the file
// does not name keep theirs, on purpose, so that one move can overtake another; the speeds of a move that has
// ended are left standing, so a load that finds none running puts them to 0 first.
#include "figure/positions.h"

#include "figure/channels.h"
#include "frame/settings.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

PositionsState positions;

namespace {

const char *const PositionExtension = ".txt";

std::string PositionFolder() {
    return WhatPluginPath() + "custom/" + globalPosFolder;
}

std::string PresetFolder() {
    return WhatPluginPath() + "custom/presets/";
}

std::string RelativePath(const std::string &group, const std::string &name) {
    return (group.empty() ? "" : group + "/") + name + PositionExtension;
}

void AddPositions(const std::string &folder, const std::string &group) {
    RemoveUnfinishedIn(folder);
    for (const std::string &file : ReadFileListFromFolder(folder)) {
        if (!Contains(file, PositionExtension)) continue;
        const std::string name = ReplaceString(file, PositionExtension, "");
        mapPos.emplace(name, group);
        positionList.push_back(name);
    }
}

// False, with the reason in the log, when the line does not address a channel with three numbers.
bool ParsePositionLine(const std::string &path, const FileLine &line, PositionLine &result) {
    const char *const valueNames[AxisCount] = {"x", "y", "z"};
    const size_t firstValue = 2;
    const std::vector<std::string> fields = StringToWordsArray(line.text, ',');
    std::string reason;
    if (fields.size() < firstValue + AxisCount)
        reason = "fewer than 5 fields";
    else if (!ParseInt(fields[0], result.index))
        reason = NoNumber("channel index", fields[0]);
    else if (result.index < 0 || static_cast<size_t>(result.index) >= anim.size())
        reason = "no channel " + int2string(result.index);
    else
        for (size_t axis = 0; axis < AxisCount && reason.empty(); axis++)
            if (!ParseDouble(fields[firstValue + axis], result.values[axis]))
                reason = NoNumber(valueNames[axis], fields[firstValue + axis]);
    if (reason.empty()) return true;
    LogDroppedLine(path, line.number, reason, line.text);
    return false;
}

// The lines of a file that address a channel; false, with one line in the log, when it cannot be read.
bool ReadPositionFile(const std::string &path, const std::string &name, std::vector<PositionLine> &lines) {
    if (!isFileExistString(path)) {
        LogFileProblem("!!! Error: Cant read file ", name);
        return false;
    }
    for (const FileLine &line : ReadFileLines(path)) {
        PositionLine parsed;
        if (ParsePositionLine(path, line, parsed)) lines.push_back(parsed);
    }
    return true;
}

void SetTarget(structAnim &channel, int axis, double target) {
    channel.target[axis] = target;
    channel.speed[axis] = (target - channel.current[axis]) / AnimTime;
}

// Before the file is read: also a file that cannot be read starts a move, of nothing.
void StartMove(double seconds) {
    if (TargetTimeSEC == -1.0)
        for (structAnim &channel : anim) std::fill_n(channel.speed, AxisCount, 0.0);
    TargetTimeSEC = FlightTimeSEC + seconds;
}

// What lies in the lap comes with the positions that are named after it. What a position has brought goes
// with the next one that does without; what a checklist has brought stays until the checklist takes it.
struct Thing {
    const char *name; // part of the positions' names
    XPLMDataRef &shown;
    bool &isBrought;
};

void BringThings(const std::string &position) {
    const Thing things[] = {{"tablet", figureChannels.showPlanshet, positions.isTabletBrought},
                            {"writing", figureChannels.showPad, positions.isPadBrought}};
    for (const Thing &thing : things) {
        const bool isWanted = Contains(position, thing.name), isShown = XPLMGetDatai(thing.shown) != 0;
        if (isWanted && !isShown) thing.isBrought = true;
        if (isWanted || thing.isBrought) XPLMSetDatai(thing.shown, isWanted ? 1 : 0);
        if (!isWanted) thing.isBrought = false;
    }
}

bool isRestPose(const std::string &position) {
    return Contains(position, "rest");
}

enum class Move { Smooth, AtOnce };

void LoadPosition(const std::string &name, Move move) {
    const auto found = mapPos.find(name);
    if (found == mapPos.end()) {
        LogFileProblem("!!! Error: Cant read file ", name);
        return;
    }
    const std::string relative = RelativePath(found->second, name);
    StartMove(move == Move::Smooth ? AnimTime : 0.0);
    std::vector<PositionLine> lines;
    if (!ReadPositionFile(PositionFolder() + relative, name, lines)) return;
    if (move == Move::Smooth) ActualPosition = relative;
    positions.held = isRestPose(name) ? "" : name;
    if (move == Move::AtOnce) positions.wasTakenAtOnce = true;
    BringThings(name);

    bool isOffsetMoved = false;
    for (const PositionLine &line : lines) {
        structAnim &channel = anim[static_cast<size_t>(line.index)];
        if (channel.name == FigureOffsetName) isOffsetMoved = true;
        for (int axis = 0; axis < AxisCount; axis++) {
            if (move == Move::Smooth) channel.current[axis] = channel.Shown(axis);
            SetTarget(channel, axis, line.values[axis]);
        }
    }
    if (!isOffsetMoved && anim.size() > FigureOffsetChannel)
        for (int axis = 0; axis < AxisCount; axis++) SetTarget(anim[FigureOffsetChannel], axis, 0.0);
}

bool isListedPosition(const std::string &name) {
    return mapPos.contains(name);
}

// Writes what the datarefs show, not what the table remembers: the position creator moves them too.
bool SavePose(const std::string &path) {
    if (anim.empty()) return false; // without a figure a saved pose would only be lost
    std::string text;
    for (size_t i = 0; i < anim.size(); i++) {
        text += int2string(static_cast<int>(i)) + "," + anim[i].name + ",";
        for (int axis = 0; axis < AxisCount; axis++) text += SignificantDigits(anim[i].Shown(axis)) + ",";
        text += "\r\n";
    }
    return WriteWholeFile(path, text);
}

} // namespace

void ReadPositionFolder() {
    mapPos.clear();
    positionList.clear();
    presetList.clear();
    AddPositions(PositionFolder(), "");
    for (const std::string &folder : ReadFolderListFromFolder(PositionFolder()))
        AddPositions(folder + "/", folder.substr(folder.rfind('/') + 1));
    for (const std::string &name : positionList)
        if (isRestPose(name)) positionRestList.push_back(name);
    RemoveUnfinishedIn(PresetFolder());
    presetList = ReadFileListFromFolder(PresetFolder());
}

std::vector<PositionLine> LinesOfPosition(const std::string &name) {
    std::vector<PositionLine> lines;
    const auto found = mapPos.find(name);
    if (found != mapPos.end())
        ReadPositionFile(PositionFolder() + RelativePath(found->second, name), name, lines);
    return lines;
}

void LoadPositionFromFile(const std::string &name) {
    LoadPosition(name, Move::Smooth);
}

void LoadPositionFastFromFile(const std::string &name) {
    LoadPosition(name, Move::AtOnce);
}

void ExecutePos(const std::string &name) {
    if (isListedPosition(name)) LoadPositionFromFile(name);
}

void ExecutePosFast(const std::string &name) {
    if (isListedPosition(name)) LoadPositionFastFromFile(name);
}

void LoadPresetFromFile(const std::string &fileName) {
    if (!isSafeFileName(fileName)) {
        LogFileProblem("!!! Error: Cant read file ", fileName);
        return;
    }
    StartMove(AnimTime);
    std::vector<PositionLine> lines;
    if (!ReadPositionFile(PresetFolder() + fileName, fileName, lines)) return;

    positions.held = fileName;
    const bool isGenderChosen = globalGender == "w" || globalGender == "m";
    const bool isLeft = fileName.starts_with("l_");
    const int first = isLeft ? LeftFingersFirst : RightFingersFirst;
    const int last = isLeft ? LeftFingersLast : RightFingersLast;
    for (const PositionLine &line : lines) {
        structAnim &channel = anim[static_cast<size_t>(line.index)];
        const bool isOfHand = isGenderChosen && line.index >= first && line.index <= last;
        for (int axis = 0; axis < AxisCount; axis++)
            SetTarget(channel, axis, isOfHand ? line.values[axis] : channel.current[axis]);
    }
}

bool SavePosition(const std::string &name) {
    if (!isSafeFileName(name)) {
        LogProblem("Position not saved, this is no file name: ", name);
        return false;
    }
    const auto found = mapPos.find(name);
    return SavePose(PositionFolder() + RelativePath(found == mapPos.end() ? "" : found->second, name));
}

void SavePresetLeftToFile() {
    SavePose(PresetFolder() + globalGender + "l_new.txt");
}

void SavePresetRghtToFile() {
    SavePose(PresetFolder() + globalGender + "r_new.txt");
}

void ResetPositions() {
    MakeFresh(positions);
}
