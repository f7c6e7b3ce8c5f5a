// OpenGL's context without a window to look at, as each system makes it: make_context_posix.cpp, through EGL,
// and make_context_windows.cpp.
#pragma once

#include <string>

namespace simhost {

// Empty when the context is made and current, or what went wrong.
std::string MakeContext();

} // namespace simhost
