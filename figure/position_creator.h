// The panel in which a user poses the figure by hand: a button for each channel, a pad on which the mouse
// moves the chosen one, and a box with the name under which the pose is saved; what stands beside is in
// position_creator_tools.h. This module owns the panel, what is chosen and the running drag; the channels are
// those of channels.h.
#pragma once

#include "figure/position_creator_state.h"

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

// Before a position or preset is loaded from the menus: an open panel can take it back.
void RememberPoseInCreator();

// Everything as when the program starts.
void ResetPositionCreator();
