// Where a plug-in makes objects of OpenGL decides whether it is told off. Who notes that is in
// opengl_objects_posix.cpp.
#include <string_view>

#include "simhost/drawing/graphics_state.h"
#include "simhost/modules.h"

namespace simhost {

namespace {

constinit int misplacedObjects = 0;

// The simulator promises OpenGL to these alone: elsewhere its context may be another's, or none.
bool MayMakeObjects() {
    return currentRunning.plugin == XPLM_PLUGIN_XPLANE || isInDrawingScope()
           || std::string_view(currentRunning.doing) == "flight loop"
           || std::string_view(currentRunning.doing) == ProgramItself;
}

} // namespace

void NoteOpenGlObject(const char *function) {
    if (MayMakeObjects()) return;
    misplacedObjects++;
    ReportOnce("makes an OpenGL object (" + std::string(function)
               + "), which is for draw callbacks and flight loops");
}

int MisplacedOpenGlObjects() {
    return misplacedObjects;
}

void ResetOpenGlObjects() {
    misplacedObjects = 0;
}

} // namespace simhost
