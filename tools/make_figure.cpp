// Makes the figure of the first officer, the seats, and the plain figure that uninstalling puts back:
//
//     make_figure FOLDER
//
// writes what stands in data/obj under the folder. Made again from unchanged sources, the files are the same.
#include <lodepng.h>

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

bool MakeFigure(const std::string &folder) {
    std::vector<Surface> surfaces;
    AddHead(surfaces);
    AddFace(surfaces);
    AddHair(surfaces);
    AddTorso(surfaces);
    AddArms(surfaces);
    AddHands(surfaces);
    AddLegs(surfaces);
    AddTablet(surfaces);
    const Atlas atlas = PaintAtlas(surfaces, 2048, 2048);
    return atlas.width > 0 && WritePictures(atlas, folder + "kvfennic.png", folder + "kvfennic_nml.png")
           && WriteText(folder + "kvfennic.obj",
                        ObjectText(surfaces, atlas, "kvfennic.png", "kvfennic_nml.png", true));
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: make_figure FOLDER\n";
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    std::filesystem::create_directories(folder + "original");
    return MakeFigure(folder) ? 0 : 1;
}
