// The plug-ins' windows: who lies over whom, who gets the mouse and the keys.
#pragma once

#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "simhost/interface/plugins.h"

namespace simhost {

struct WindowView {
    XPLMWindowID id = nullptr;
    std::string title;
    int left = 0, top = 0, right = 0, bottom = 0; // of the contents, boxels; 0 in VR
    bool isVisible = false;
    bool isLegacy = false;
    bool isInVr = false;
    int vrWidth = 0, vrHeight = 0; // in VR
    bool isPoppedOut = false;
    bool hasFocus = false;
    XPLMWindowLayer layer = 0;
    XPLMWindowDecoration decoration = 0;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};
std::vector<WindowView> WindowsFrontToBack();

// Draws all visible windows with their decorations, from back to front. Called inside a frame.
void DrawWindows();

// ---- The pilot's mouse and keyboard ----

enum class MouseButton { Left, Right };

// A press goes to the topmost window that takes it, which then gets the drags and the release. Until then
// other presses do nothing. Presses and turns of the wheel that no window takes reach the cockpit: false.
void MoveMouse(int x, int y); // asks the window below for its cursor; drags while a button is held
bool PressMouse(int x, int y, MouseButton button);
void DragMouse(int x, int y);
void ReleaseMouse(int x, int y);
bool TurnWheel(int x, int y, int clicks);
bool isMouseHeld();

// In the headset the mouse is a beam: until it is null again, or the window goes, places are those of this
// window, (0, 0) its lower left, and nothing else is met. Where the screen's mouse is does not change.
void PointInHeadset(XPLMWindowID window);

// What the window below the mouse made of the cursor when it was last asked.
XPLMCursorStatus MouseCursor();

// A key goes down (flags with xplm_DownFlag) or up: key sniffers before windows, the window with the focus,
// hot keys, key sniffers behind. False when it reaches the simulator.
bool SendKey(char character, XPLMKeyFlags flags, char virtualKey);

// ---- For the simulator's other modules ----

void ContinueMouse(); // each frame: a window that holds the mouse gets a drag, even when nothing moves
void DropWindows(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetWindows();
void SetVr(bool isOn);                             // sends the message, moves windows that ask for it
void ScreenSizeChanged(int widerBy, int higherBy); // keeps floating windows on the screen

} // namespace simhost
