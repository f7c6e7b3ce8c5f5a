// Charts are grids, so a texel's place on the skin is found by interpolation between four of the grid's
// points. The normal map comes from the painted heights, measured against how many metres a texel covers
// there.
#include "tools/figure/atlas.h"

#include <lodepng.h>

#include <iostream>

namespace figure_maker {

namespace {

const int Margin = 4; // texels painted beyond a chart's edge, for smaller copies of the picture

SkinPoint PointAt(const Grid &grid, double u, double v) {
    const double x = std::clamp(u, 0.0, 1.0) * (grid.columns - 1),
                 y = std::clamp(v, 0.0, 1.0) * (grid.rows - 1);
    const int column = std::min(static_cast<int>(x), grid.columns - 2);
    const int row = std::min(static_cast<int>(y), grid.rows - 2);
    const double fx = x - column, fy = y - row;
    const size_t a = static_cast<size_t>(row * grid.columns + column),
                 c = a + static_cast<size_t>(grid.columns);
    const double weights[4] = {(1 - fx) * (1 - fy), fx * (1 - fy), (1 - fx) * fy, fx * fy};
    const size_t corners[4] = {a, a + 1, c, c + 1};
    SkinPoint point;
    point.u = u;
    point.v = v;
    point.openness = 0;
    for (int i = 0; i < 4; i++) {
        point.position = point.position + grid.positions[corners[i]] * weights[i];
        point.normal = point.normal + grid.normals[corners[i]] * weights[i];
        point.openness += grid.openness[corners[i]] * weights[i];
    }
    point.normal = Unit(point.normal);
    return point;
}

unsigned char Byte(double value) {
    // Even values alone: nobody sees the difference, and the file is a quarter smaller.
    return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0, 1.0) * 127) * 2);
}

// Is a texel much like those around it? One on an edge of what is painted is the mean of many points, so that
// the edge has no teeth.
bool isEven(const std::vector<Texel> &texels, size_t i, size_t width) {
    for (const size_t other : {i - 1, i + 1, i - width, i + width}) {
        const Vec difference = texels[other].color - texels[i].color;
        if (std::abs(difference.x) + std::abs(difference.y) + std::abs(difference.z) > 0.10) return false;
    }
    return true;
}

void PaintChart(Atlas &atlas, const Chart &chart, const Surface &surface) {
    const int width = chart.width + 2 * Margin, height = chart.height + 2 * Margin;
    const auto pointAt = [&](double x, double y) {
        const double u = std::clamp((x - Margin) / (chart.width - 1.0), 0.0, 1.0);
        return PointAt(surface.whole ? *surface.whole : surface.grid, u * (surface.isHalved ? 0.5 : 1),
                       std::clamp((y - Margin) / (chart.height - 1.0), 0.0, 1.0));
    };
    std::vector<Texel> once(static_cast<size_t>(width * height));
    std::vector<Vec> positions(once.size());
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++) {
            const SkinPoint point = pointAt(x, y);
            once[static_cast<size_t>(y * width + x)] = surface.paint(point);
            positions[static_cast<size_t>(y * width + x)] = point.position;
        }
    std::vector<Texel> texels = once;
    for (int y = 1; y + 1 < height; y++)
        for (int x = 1; x + 1 < width; x++) {
            const size_t i = static_cast<size_t>(y * width + x);
            if (isEven(once, i, static_cast<size_t>(width))) continue;
            texels[i] = {{}, 0, 0};
            for (const double dx : {-0.375, -0.125, 0.125, 0.375})
                for (const double dy : {-0.375, -0.125, 0.125, 0.375}) {
                    const Texel texel = surface.paint(pointAt(x + dx, y + dy));
                    texels[i].color = texels[i].color + texel.color * 0.0625;
                    texels[i].height += texel.height * 0.0625;
                    texels[i].gloss += texel.gloss * 0.0625;
                    texels[i].metal += texel.metal * 0.0625;
                }
        }
    // Rows of the grid run upwards in texture coordinates, rows of the picture downwards.
    for (int y = 0; y < height; y++)
        for (int x = 0; x < width; x++) {
            const auto at = [&](int column, int row) {
                return static_cast<size_t>(std::clamp(row, 0, height - 1) * width
                                           + std::clamp(column, 0, width - 1));
            };
            const double spanU = std::max(Length(positions[at(x + 1, y)] - positions[at(x - 1, y)]), 2e-5);
            const double spanV = std::max(Length(positions[at(x, y + 1)] - positions[at(x, y - 1)]), 2e-5);
            const double slopeU = (texels[at(x + 1, y)].height - texels[at(x - 1, y)].height) / spanU;
            const double slopeV = (texels[at(x, y + 1)].height - texels[at(x, y - 1)].height) / spanV;
            const Vec normal = Unit({std::clamp(-slopeU, -1.5, 1.5), std::clamp(-slopeV, -1.5, 1.5), 1});
            const Texel &texel = texels[at(x, y)];
            const int pictureX = chart.left - Margin + x,
                      pictureY = chart.top + chart.height - 1 + Margin - y;
            const size_t pixel = static_cast<size_t>(pictureY * atlas.width + pictureX);
            const double color[3] = {texel.color.x, texel.color.y, texel.color.z};
            const double bump[4] = {normal.x / 2 + 0.5, normal.y / 2 + 0.5, texel.metal, texel.gloss};
            for (size_t i = 0; i < 3; i++) atlas.colors[pixel * 3 + i] = Byte(color[i]);
            for (size_t i = 0; i < 4; i++) atlas.normals[pixel * 4 + i] = Byte(bump[i]);
        }
}

} // namespace

Atlas PaintAtlas(const std::vector<Surface> &surfaces, int width, int height) {
    Atlas atlas;
    atlas.width = width;
    atlas.height = height;
    atlas.colors.assign(static_cast<size_t>(width * height) * 3, 128);
    // Flat, and as matt as cloth: smaller copies of the picture mix it in at the edges of charts.
    atlas.normals.assign(static_cast<size_t>(width * height) * 4, 128);
    for (size_t i = 0; i < atlas.normals.size(); i += 4) atlas.normals[i + 2] = 0, atlas.normals[i + 3] = 24;
    std::vector<const Surface *> first;
    for (const Surface &surface : surfaces)
        if (atlas.charts.emplace(surface.chart, Chart{}).second) first.push_back(&surface);
    // The tallest charts first, each where it stands highest in the picture.
    std::stable_sort(first.begin(), first.end(),
                     [](const Surface *a, const Surface *b) { return a->height > b->height; });
    std::vector<int> filled(static_cast<size_t>(width), 0); // down to which row, for each column
    for (const Surface *surface : first) {
        const int needed = surface->width + 2 * Margin, tall = surface->height + 2 * Margin;
        int left = 0, top = height;
        for (int x = 0; x + needed <= width; x++) {
            const int floor = *std::max_element(filled.begin() + x, filled.begin() + x + needed);
            if (floor < top) left = x, top = floor;
        }
        if (top + tall > height) {
            std::cerr << "no room for the chart " << surface->chart << "\n";
            return {};
        }
        std::fill(filled.begin() + left, filled.begin() + left + needed, top + tall);
        const Chart chart = {left + Margin, top + Margin, surface->width, surface->height};
        atlas.charts[surface->chart] = chart;
        PaintChart(atlas, chart, *surface);
    }
    return atlas;
}

void TextureCoordinates(const Atlas &atlas, const Chart &chart, double u, double v, double &s, double &t) {
    s = (chart.left + 0.5 + u * (chart.width - 1)) / atlas.width;
    t = 1 - (chart.top + chart.height - 0.5 - v * (chart.height - 1)) / atlas.height;
}

namespace {

// Half as wide and high: relief needs less detail than colour.
std::vector<unsigned char> Halved(const Atlas &atlas) {
    const size_t width = static_cast<size_t>(atlas.width), half = width / 2;
    std::vector<unsigned char> halved(half * static_cast<size_t>(atlas.height / 2) * 4);
    for (size_t i = 0; i < halved.size(); i++) {
        const size_t channel = i % 4, x = i / 4 % half, y = i / 4 / half;
        const size_t corner = (2 * y * width + 2 * x) * 4 + channel;
        const int sum = atlas.normals[corner] + atlas.normals[corner + 4] + atlas.normals[corner + width * 4]
                        + atlas.normals[corner + width * 4 + 4];
        halved[i] = static_cast<unsigned char>((sum + 4) / 8 * 2);
    }
    return halved;
}

// A wider window than the encoder takes by itself: a tenth smaller, and still quick.
unsigned Encode(const std::string &path, const std::vector<unsigned char> &pixels, unsigned width,
                unsigned height, LodePNGColorType type) {
    lodepng::State state;
    state.info_raw.colortype = state.info_png.color.colortype = type;
    state.encoder.auto_convert = 0;
    state.encoder.zlibsettings.windowsize = 8192;
    std::vector<unsigned char> file;
    const unsigned error = lodepng::encode(file, pixels, width, height, state);
    return error ? error : lodepng::save_file(file, path);
}

} // namespace

bool WritePictures(const Atlas &atlas, const std::string &colorPath, const std::string &normalPath) {
    const unsigned width = static_cast<unsigned>(atlas.width), height = static_cast<unsigned>(atlas.height);
    unsigned error = Encode(colorPath, atlas.colors, width, height, LCT_RGB);
    if (!error && !normalPath.empty())
        error = Encode(normalPath, Halved(atlas), width / 2, height / 2, LCT_RGBA);
    if (error) std::cerr << colorPath << ": " << lodepng_error_text(error) << "\n";
    return error == 0;
}

} // namespace figure_maker
