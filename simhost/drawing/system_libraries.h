// The system's libraries of OpenGL, EGL and GLFW, which the simulator uses where they are and flies without
// where they are not: they are loaded when they are needed. The program is linked with weak, lazy references
// to them (authoring/CMakeLists.txt), which are resolved at the first call.
#pragma once

#include <string>

namespace simhost {

// First of all: starts the program again with these words when its environment asks for all libraries at
// once.
void AllowLateLibraries(char **words);

// Loads OpenGL, once: the system's, or else a stand-in beside the program, in which all functions do nothing,
// so that plug-ins that are linked with OpenGL can be loaded. To be called before the first of them is.
// Returns why it is not the system's; empty when it is.
const std::string &LoadOpenGl();

// Loads a library for all to use, such as "libEGL.so.1". Returns why it cannot be; empty when it is loaded.
// On Windows, where the program is linked with what it uses, there is no such call.
std::string LoadSystemLibrary(const char *name);

} // namespace simhost
