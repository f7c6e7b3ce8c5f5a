// How OpenGL reads the pixels of a picture. Other plug-ins and the simulator leave it as they like.
#pragma once

#include "gfx/opengl.h"

// While one exists, pixels are read from memory, their rows behind each other without gaps. Afterwards all is
// as it was.
class PixelsFromMemory {
public:
    PixelsFromMemory() {
        glGetIntegerv(GL_PIXEL_UNPACK_BUFFER_BINDING, &buffer);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
        glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    }
    ~PixelsFromMemory() {
        glPopClientAttrib();
        glBindBuffer(GL_PIXEL_UNPACK_BUFFER, static_cast<GLuint>(buffer));
    }
    PixelsFromMemory(const PixelsFromMemory &) = delete;
    PixelsFromMemory &operator=(const PixelsFromMemory &) = delete;

private:
    GLint buffer = 0;
};
