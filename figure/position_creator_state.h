// The position creator's panel, what is chosen in it and the running drag: position_creator.h builds and
// moves them, position_creator_tools.h shows numbers and buttons for what is chosen.
#pragma once

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
