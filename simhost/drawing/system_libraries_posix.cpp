// A library that is loaded for all to use is found by references of the program that are still open, and by
// plug-ins that name it among those they need.
#include "simhost/drawing/system_libraries.h"

#include <cstdlib>

#include <dlfcn.h>
#include <unistd.h>

#include "simhost/system.h"

namespace simhost {

void AllowLateLibraries(char **words) {
    if (!std::getenv("LD_BIND_NOW")) return;
    unsetenv("LD_BIND_NOW");
    execv("/proc/self/exe", words);
}

std::string LoadSystemLibrary(const char *name) {
    if (dlopen(name, RTLD_LAZY | RTLD_GLOBAL)) return "";
    const char *reason = dlerror();
    return reason ? reason : name + std::string(" cannot be opened");
}

const std::string &LoadOpenGl() {
    static const std::string whyNot = [] {
        std::string reason = LoadSystemLibrary("libGL.so.1");
        // Without the stand-in, too, a plug-in that needs OpenGL says itself that it cannot be loaded.
        if (!reason.empty()) LoadSystemLibrary((ProgramFolder() + "without_opengl/libGL.so.1").c_str());
        return reason;
    }();
    return whyNot;
}

} // namespace simhost
