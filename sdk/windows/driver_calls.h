// OpenGL beyond 1.1 for Windows, whose library has no more than that: the driver has the other functions, for
// who asks by name while a context is current.
#pragma once

#include <windows.h>

// Defines a function of OpenGL that the driver is asked for when it is called first. Where the driver lacks
// it the call does nothing and gives 0. parameters are those of the declaration, arguments their names, both
// in brackets.
#define FROM_DRIVER(name, result, parameters, arguments)                                                     \
    extern "C" result APIENTRY name parameters {                                                             \
        using Function = result(APIENTRY *) parameters;                                                      \
        static Function call = nullptr;                                                                      \
        if (!call) call = reinterpret_cast<Function>(reinterpret_cast<void *>(wglGetProcAddress(#name)));    \
        return call ? call arguments : result();                                                             \
    }
