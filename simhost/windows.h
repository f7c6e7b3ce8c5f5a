// The plug-ins' windows: who lies over whom, who gets the mouse and the keys.
#pragma once

#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "simhost/plugins.h"

namespace simhost {

struct WindowView {
    XPLMWindowID id = nullptr;
    std::string title;
    int left = 0, top = 0, right = 0, bottom = 0; // of the contents, boxels
    bool isVisible = false;
    bool isLegacy = false;
    bool isInVr = false;
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

void MoveMouse(int x, int y); // also asks the window below for its cursor
void PressMouse(int x, int y, MouseButton button);
void DragMouse(int x, int y);
void ReleaseMouse(int x, int y);
void TurnWheel(int x, int y, int clicks);

// A key goes down (flags with xplm_DownFlag) or up: key sniffers before windows, the window with the focus,
// key sniffers behind.
void SendKey(char character, XPLMKeyFlags flags, char virtualKey);

// ---- For the simulator's other modules ----

void DropWindows(XPLMPluginID plugin, LeftBehind &leftBehind);
void ResetWindows();
void SetVr(bool isOn);                        // sends the message, moves windows that ask for it
void ScreenSizeChanged(int width, int height); // keeps floating windows on the screen

} // namespace simhost
