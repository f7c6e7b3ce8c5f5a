// The panel in which a user poses the figure by hand: a button for each channel, a pad on which the mouse
// moves the chosen one, and a box with the name under which the pose is saved. This module owns the panel,
// what is chosen and the running drag; the channels are those of channels.h.
#pragma once

#include <string>

#include "figure/position_creator_places.h"
#include "gfx/panel.h"

extern widgetVR_class EditorPanel;
extern int b[ButtonCount];      // the panel's button of each channel
extern int box_PositionName;    // the panel's box; -1 before the panel was built
extern int anim_selected;       // the chosen channel; -1: none
extern int isSelectedAnimStart; // the channel that is dragged; -1: no drag runs
extern int MouseInitX,
    MouseInitY; // the mouse where the drag began, boxels of the screen, or in VR of the panel
extern int CursorXnow, CursorYnow; // the mouse in the last frame in which it was asked for
extern float AnimInitXdrfValue, AnimInitYdrfValue, AnimInitZdrfValue; // the channel where the drag began

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

// Saves the pose under the name in the box.
void SavePositionToFile();

// The name in the box; "new" while there is no box.
std::string GetCurrentPositionName();

// Puts the name, without its first ".txt", into the box, if there is one.
void SetCurrentPositionName(const std::string &name);

// Everything as when the program starts.
void ResetPositionCreator();
