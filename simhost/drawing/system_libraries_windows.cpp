// OpenGL is a part of Windows, and the program is linked with it.
#include "simhost/drawing/system_libraries.h"

namespace simhost {

void AllowLateLibraries(char **) {}

const std::string &LoadOpenGl() {
    static const std::string nothingMissing;
    return nothingMissing;
}

} // namespace simhost
