// The systems editor's window, which exists in developer mode alone. It covers the whole screen. While the
// editor is shown all clicks and the wheel end there, as the picture does not let the cockpit be seen; while
// it is folded it takes nothing but its button. Keys are the simulator's, apart from those typed into a
// field.
#pragma once

#include "XPLMDisplay.h"

extern XPLMWindowID SysWindow;
extern int sW, sH; // the screen's size

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
