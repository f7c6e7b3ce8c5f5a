// The panel in which a user poses the figure by hand: a button for each channel, a pad on which the mouse
// moves the chosen one, and a box with the name under which the pose is saved; what stands beside is in
// position_creator_tools.h. This module owns the panel, what is chosen and the running drag; the channels are
// those of channels.h.
#pragma once

#include <string>

#include "figure/position_creator_places.h"
#include "gfx/panel.h"

extern widgetVR_class EditorPanel;

struct PositionCreatorState {
    int buttons[ButtonCount] = {}; // the panel's button of each channel
    int nameBox = -1;              // the panel's box; -1 before the panel was built
    int selected = -1;             // the chosen channel; -1: none
    int dragged = -1;              // the channel that is dragged; -1: no drag runs
    int mouseX = 0, mouseY = 0;    // where the drag began, boxels of the screen, or in VR of the panel
    int cursorX = 0, cursorY = 0;  // the mouse in the last frame in which it was asked for
    float valueX = 0.0F, valueY = 0.0F, valueZ = 0.0F; // the channel where the drag began
    bool wasOnMonitor = true;                          // in the last frame
    bool wasDragEnded = false;                         // by the last click
};
extern PositionCreatorState positionCreator;
inline int (&b)[ButtonCount] = positionCreator.buttons;
inline int &box_PositionName = positionCreator.nameBox;
inline int &anim_selected = positionCreator.selected, &isSelectedAnimStart = positionCreator.dragged;
inline int &MouseInitX = positionCreator.mouseX, &MouseInitY = positionCreator.mouseY;
inline int &CursorXnow = positionCreator.cursorX, &CursorYnow = positionCreator.cursorY;
inline float &AnimInitXdrfValue = positionCreator.valueX, &AnimInitYdrfValue = positionCreator.valueY;
inline float &AnimInitZdrfValue = positionCreator.valueZ;

// Builds the panel, or shows it again when it was closed. An open panel stays as it is.
void EditorPanel_Create();

// What the panel asks for: draws the pad; takes up a click on a button.
void EditorPanel_ExternalDraw();
void EditorPanel_ExternalMouseHandler();

// Gives the panel the shape of a strip, 1020 × 260, and on the monitor a place near the lower left corner.
// For layouts without a pad: the panel as it is built follows the simulator into VR and back by itself.
void EditorPanel_Reposition();

// Once a drawing frame: the running drag moves its channel, x and z with the mouse (the wheel moves y). While
// the panel is open and no drag runs, the cursor shows how far right of the panel's edge it is.
void DrawPositionCreator();

// No channel chosen, no drag; called when flight time falls back.
void ReInitPositionCreator();

// Saves the pose under the name in the box, and tells so in the panel.
void SavePositionToFile();

// Before a position or preset is loaded from the menus: an open panel can take it back.
void RememberPoseInCreator();

// The name in the box; "new" while there is no box.
std::string GetCurrentPositionName();

// Puts the name, without its first ".txt", into the box, if there is one.
void SetCurrentPositionName(const std::string &name);

// Everything as when the program starts.
void ResetPositionCreator();
