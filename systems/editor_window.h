// The systems editor's window, which exists in developer mode alone. It covers the whole screen; where there
// is nothing to click the mouse goes on to the simulator.
#pragma once

#include "XPLMDisplay.h"

extern XPLMWindowID SysWindow;
extern int sW, sH; // the screen's size

void SysWindowCreate();
void SysWindowDestroy();

// The window's callbacks.
void SysWindowCallback(XPLMWindowID window, void *refcon);
void SysKeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey, void *refcon,
                    int losingFocus);
int SysMouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus mouse, void *refcon);

void MouseDown(int x, int y);
void MouseDrag(int x, int y);
void MouseUp(int x, int y);
