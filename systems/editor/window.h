// The systems editor's window, which exists in developer mode alone. It covers the whole screen. While the
// editor is shown all clicks and the wheel end there, as the picture does not let the cockpit be seen; while
// it is folded it takes nothing but its button. Keys are the simulator's, apart from those typed into a
// field.
#pragma once

#include "XPLMDisplay.h"
#include "systems/editor/zones.h"

struct EditorWindowState {
    XPLMWindowID window = nullptr;
    XPLMWindowID cover = nullptr; // over it
    int width = 0, height = 0;    // the screen's
    bool isCovering = false;
    click_zone_class pressed; // the zone of the last mouse-down, and when that was
    double pressedTime = -10.0;
    int pressedY = 0, pressedRow = 0;
};
extern EditorWindowState editorWindow;
inline XPLMWindowID &SysWindow = editorWindow.window;
inline int &sW = editorWindow.width, &sH = editorWindow.height;

void SysWindowCreate();
void SysWindowDestroy();

// True while the editor hides what is behind it: our other windows there are not to be clicked.
bool isEditorOverScreen();

// The window's callbacks.
void SysWindowCallback(XPLMWindowID window, void *refcon);
void SysKeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey, void *refcon,
                    int losingFocus);
int SysMouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus mouse, void *refcon);

void MouseDown(int x, int y);
void MouseDrag(int x, int y);
void MouseUp(int x, int y);

// Everything as when the program starts.
void ResetEditor();
