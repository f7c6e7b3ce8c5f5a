// What stands beside the position creator's pictures and pad: the chosen channel's numbers with its limits,
// undo and redo, reset, mirror and copy, the views in which a hand is dragged, the presets with their
// pictures, saving, and a few lines that say what happened. This module owns those items of the panel and
// what they show.
#pragma once

#include <string>

#include "figure/pose_edits.h"
#include "gfx/panel.h"

struct CreatorToolsState {
    PoseScope scope = PoseScope::Joint; // of reset, mirror and copy
    bool isRightHand = true;            // whose presets are listed
    int presetPage = 0;
    int shownFor = -1; // the channel that part and hand were last shown for
    std::string message;
    int messageColour = 0;
    std::string typedOver; // what a number's box showed when it took the keyboard
    int typedIn = -1;      // the box whose number is being typed
};
extern CreatorToolsState creatorTools;

// Adds the items to a panel that is being built, behind the channels' buttons and the name.
void AddCreatorTools();

// What the panel asks for: what lies below all items; a click on one of the tools' buttons, false for
// another's; the end of typing.
void DrawBelowCreatorTools();
bool ClickCreatorTool(int button);
int EndTypingInCreator(int box, BoxEnd end);

// Once a frame: the items show what is.
void RefreshCreatorTools();

// The name in the box; "new" while there is no box.
std::string GetCurrentPositionName();

// Puts the name, without its first ".txt", into the box, if there is one.
void SetCurrentPositionName(const std::string &name);

// Saves the pose under the name in the box, and tells so in the panel.
void SavePositionToFile();

// Some words for the user, below the buttons, until the next ones. isTrouble: something was refused.
void TellInCreator(const std::string &message, bool isTrouble = false);

// Everything as when the program starts.
void ResetCreatorTools();
