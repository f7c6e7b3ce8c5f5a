// A fixture: the plug-in's folder, and a black screen of 200 × 100 boxels that a test paints in the window
// phase, as the plug-in does, and reads back.
#pragma once

#include <lodepng.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "gfx/fonts.h"
#include "gfx/opengl.h"
#include "gfx/textures.h"
#include "simhost/drawing/screen.h"
#include "tests/log_lines.h"
#include "tests/plugin_folder.h"

struct Pixel {
    int red = 0, green = 0, blue = 0;
    bool operator==(const Pixel &) const = default;
};
inline std::ostream &operator<<(std::ostream &out, const Pixel &pixel) {
    return out << pixel.red << "," << pixel.green << "," << pixel.blue;
}
inline const Pixel Black{0, 0, 0}, White{255, 255, 255}, Red{255, 0, 0}, Green{0, 255, 0}, Blue{0, 0, 255};

struct Extent { // of pixels, all four belonging to it
    int left = 1000, bottom = 1000, right = -1, top = -1;
    bool operator==(const Extent &) const = default;
};
inline std::ostream &operator<<(std::ostream &out, const Extent &extent) {
    return out << extent.left << ".." << extent.right << " x " << extent.bottom << ".." << extent.top;
}

struct Screen {
    std::vector<unsigned char> bytes;

    Pixel At(int x, int y) const { // y up
        const unsigned char *pixel = &bytes.at(static_cast<size_t>(((99 - y) * 200 + x) * 4));
        return {pixel[0], pixel[1], pixel[2]};
    }

    // Of what is not black.
    Extent Covered() const {
        Extent extent;
        for (int y = 0; y < 100; y++) {
            for (int x = 0; x < 200; x++) {
                if (At(x, y) == Black) continue;
                extent = {std::min(extent.left, x), std::min(extent.bottom, y), std::max(extent.right, x),
                          std::max(extent.top, y)};
            }
        }
        return extent;
    }
};

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
