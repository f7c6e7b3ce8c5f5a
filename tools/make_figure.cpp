// Makes the figures of the first officer, the seats, and the plain figure that uninstalling puts back:
//
//     make_figure FOLDER
//
// writes what stands in data/obj under the folder. Made again from unchanged sources, the files are the same.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/figure/object_file.h"
#include "tools/figure/parts.h"

using namespace figure_maker;

namespace {

bool WriteText(const std::string &path, const std::string &text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) std::cerr << "cannot write " << path << "\n";
    return static_cast<bool>(file);
}

// The seats share the figure's picture: an installation copies no other.
bool MakeFigureAndSeats(const std::string &folder) {
    std::vector<Figure> figures;
    std::vector<Surface> seats;
    AddSeats(seats);
    std::vector<Surface> painted;
    for (const Body *body : {&Woman(), &Man()}) {
        Figure figure{body, {}, {}};
        for (const auto add : {AddHead, AddFace, AddHair, AddTorso, AddArms, AddHands, AddLegs, AddThings})
            add(figure.surfaces, *body);
        AddFromAfar(figure.afar, *body);
        painted.insert(painted.end(), figure.surfaces.begin(), figure.surfaces.end());
        figures.push_back(std::move(figure));
    }
    painted.insert(painted.end(), seats.begin(), seats.end());
    const Atlas atlas = PaintAtlas(painted, 2048, 2048);
    return atlas.width > 0 && WritePictures(atlas, folder + "kvfennic.png", folder + "kvfennic_nml.png")
           && WriteText(folder + "kvfennic.obj",
                        FigureText(figures, atlas, "kvfennic.png", "kvfennic_nml.png"))
           && WriteText(folder + "seats.obj", ObjectText(seats, atlas, "kvfennic.png", "kvfennic_nml.png"));
}

// What stands in for the figure that an aircraft came with: a plain torso and head in one grey.
bool MakeOriginal(const std::string &folder) {
    std::vector<Surface> surfaces(2);
    for (Surface &surface : surfaces) {
        surface.chart = "plain";
        surface.width = surface.height = 24;
        surface.paint = [](const SkinPoint &point) {
            return Texel{Vec{0.55, 0.56, 0.58} * (0.8 + 0.2 * point.normal.y), 0, 0};
        };
    }
    surfaces[0].grid = BallSkin(
        [](Vec p) {
            return Ellipsoid(p, {0, 0.32, 0.13}, {0.19, 0.29, 0.12});
        },
        {{0, 0.32, 0.13}}, 13, 9);
    surfaces[1].grid = BallSkin(
        [](Vec p) {
            return Ellipsoid(p, {0, 0.75, 0.13}, {0.08, 0.12, 0.10});
        },
        {{0, 0.75, 0.13}}, 11, 9);
    const Atlas atlas = PaintAtlas(surfaces, 32, 32);
    return atlas.width > 0 && WritePictures(atlas, folder + "kvfennic.png", "")
           && WriteText(folder + "kvfennic.obj", ObjectText(surfaces, atlas, "kvfennic.png", ""));
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: make_figure FOLDER\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    std::filesystem::create_directories(folder + "original");
    return MakeFigureAndSeats(folder) && MakeOriginal(folder + "original/") ? 0 : 1;
}
