// The figure's picture and normal map: one rectangle for each chart, painted from the skin that it covers.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/figure/surfaces.h"

namespace figure_maker {

struct Chart {
    int left = 0, top = 0, width = 0, height = 0; // texels, from the upper left
};

struct Atlas {
    int width = 0, height = 0;
    std::map<std::string, Chart> charts;
    std::vector<unsigned char> colors;  // RGB
    std::vector<unsigned char> normals; // RGBA: x and y of the normal, how much metal, and the gloss
};

// Places and paints the charts of all surfaces. Empty, with a message, if they do not fit.
Atlas PaintAtlas(const std::vector<Surface> &surfaces, int width, int height);

// The texture coordinates of a place on a chart: (0, 0) is the picture's lower left.
void TextureCoordinates(const Atlas &atlas, const Chart &chart, double u, double v, double &s, double &t);

// False, with a message, if a file cannot be written.
bool WritePictures(const Atlas &atlas, const std::string &colorPath, const std::string &normalPath);

} // namespace figure_maker
