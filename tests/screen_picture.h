// A picture of the simulated screen, to be looked at pixel by pixel; y goes up.
#pragma once

#include <algorithm>
#include <ostream>
#include <vector>

#include "simhost/drawing/screen.h"
#include "simhost/simulator.h"

struct Pixel {
    int red = 0, green = 0, blue = 0;
    bool operator==(const Pixel &) const = default;
    int Brightness() const { return red + green + blue; }
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

struct Picture {
    std::vector<unsigned char> bytes;
    int width = simhost::ScreenWidth(), height = simhost::ScreenHeight();

    Pixel At(int x, int y) const {
        const unsigned char *pixel = &bytes.at(static_cast<size_t>(((height - 1 - y) * width + x) * 4));
        return {pixel[0], pixel[1], pixel[2]};
    }

    // How far the pixels reach for which is(x, y) holds.
    template <typename Is> Extent Where(const Is &is) const {
        Extent extent;
        for (int y = 0; y < height; y++)
            for (int x = 0; x < width; x++)
                if (is(x, y))
                    extent = {std::min(extent.left, x), std::min(extent.bottom, y), std::max(extent.right, x),
                              std::max(extent.top, y)};
        return extent;
    }
    Extent Covered() const {
        return Where([&](int x, int y) { return At(x, y) != Black; });
    }
    Extent Difference(const Picture &other) const {
        return Where([&](int x, int y) { return At(x, y) != other.At(x, y); });
    }
};
