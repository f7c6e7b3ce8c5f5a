// A context needs a window here; this one is never shown.
#include "simhost/drawing/make_context.h"

#include <windows.h>

namespace simhost {

std::string MakeContext() {
    const HWND window =
        CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 16, 16, nullptr, nullptr, nullptr, nullptr);
    if (!window) return "there is no window";
    const HDC device = GetDC(window);
    PIXELFORMATDESCRIPTOR wanted = {};
    wanted.nSize = sizeof wanted;
    wanted.nVersion = 1;
    wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    wanted.cColorBits = 32;
    const int format = ChoosePixelFormat(device, &wanted);
    if (format == 0 || !SetPixelFormat(device, format, &wanted)) return "the window has no format of OpenGL";
    const HGLRC context = wglCreateContext(device);
    if (!context || !wglMakeCurrent(device, context)) return "the driver gives no context";
    return "";
}

} // namespace simhost
