// A fixture: the plug-in's folder, and a black screen of 200 × 100 boxels that a test paints in the window
// phase, as the plug-in does, and reads back.
#pragma once

#include <lodepng.h>

#include <functional>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/textures.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"
#include "tests/screen_picture.h"

using Screen = Picture;

class Canvas : public PluginFolder {
protected:
    Canvas() {
        simhost::SetScreenSize(200, 100);
        simhost::DrawFrame(true); // OpenGL is there from here on
        simhost::TakeLogLines();
    }
    ~Canvas() override {
        UnLoadFonts();
        UnLoadTextures();
        EXPECT_EQ(CountNewLines({"OpenGL error"}) + CountNewLines({"leaves pushed"}), 0);
    }

    Screen Draw(std::function<void()> what) {
        paint = std::move(what);
        XPLMRegisterDrawCallback(Paint, xplm_Phase_Window, 0, this);
        simhost::DrawFrame(true);
        XPLMUnregisterDrawCallback(Paint, xplm_Phase_Window, 0, this);
        return {simhost::ReadScreenPixels()};
    }

    // A PNG in the plug-in's folder: RGBA pixels, rows from the top.
    void WritePicture(const std::string &path, const std::vector<unsigned char> &pixels, unsigned width,
                      unsigned height) {
        std::vector<unsigned char> file;
        ASSERT_EQ(lodepng::encode(file, pixels, width, height), 0U);
        write(path, {file.begin(), file.end()});
    }

private:
    std::function<void()> paint;

    static int Paint(XPLMDrawingPhase, int, void *canvas) {
        glClearColor(0, 0, 0, 1);
        glClear(GL_COLOR_BUFFER_BIT);
        glColor4f(0.5F, 0.5F, 0.5F, 0.5F); // nobody may count on the colour that is set
        static_cast<Canvas *>(canvas)->paint();
        return 1;
    }
};
