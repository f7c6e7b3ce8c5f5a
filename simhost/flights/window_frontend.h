// The simulator in a window of the system, in real time: its frame, the plug-ins' menus as a menu bar, a line
// at the bottom for what the pilot says, and the pilot's mouse and keyboard.
#pragma once

#include <string>

namespace simhost {

// Opens the window and makes its OpenGL context the simulator's. False with the reason in error where there
// is no display.
bool OpenFrontend(int screenWidth, int screenHeight, std::string &error);

// Shows the frame that was drawn last, with menus and line, and takes what the pilot does until it is time
// for the next one. False once the pilot has closed the window.
bool ShowFrontend(double frameSeconds);

void CloseFrontend();

} // namespace simhost
