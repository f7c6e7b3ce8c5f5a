// Makes the shipped positions of both figures and the hand presets:
//
//     make_poses FOLDER
//
// writes what stands in custom under the folder, and says how near each hand comes to its target.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/figure/poses.h"

using namespace figure_maker;

namespace {

bool WriteText(const std::filesystem::path &path, const std::string &text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) std::cerr << "cannot write " << path << "\n";
    return static_cast<bool>(file);
}

bool MakePositions(const std::filesystem::path &folder, bool isMan) {
    bool isWritten = true;
    const Body &body = BodyOf(isMan);
    for (const PoseRecipe &recipe : PoseRecipes(body)) {
        const Pose pose = Solve(body, recipe);
        for (bool isRight : {false, true}) {
            const Reach &reach = isRight ? recipe.right : recipe.left;
            std::printf("%c %-20s %-5s %5.1f mm off, %5.1f mm clear\n", isMan ? 'm' : 'w', recipe.name,
                        isRight ? "right" : "left",
                        Length(PlaceOf(body, pose, reach.point, isRight) - reach.target) * 1000,
                        Clearance(body, pose, isRight) * 1000);
        }
        isWritten &=
            WriteText(folder / recipe.group / (std::string(recipe.name) + ".txt"), PositionText(pose));
    }
    return isWritten;
}

// With all channels, not the hand's alone: the others are then stopped and not left to the move before.
bool MakePresets(const std::filesystem::path &folder) {
    bool isWritten = true;
    for (const HandShape &shape : HandShapes())
        for (bool isRight : {false, true}) {
            Pose pose{};
            SetHandShape(pose, shape.name, isRight);
            isWritten &= WriteText(folder / (std::string(isRight ? "r_" : "l_") + shape.name + ".txt"),
                                   PositionText(pose));
        }
    return isWritten;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: make_poses FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const bool isWritten = MakePositions(folder / "positions-w", false)
                           && MakePositions(folder / "positions-m", true) && MakePresets(folder / "presets");
    return isWritten ? 0 : 1;
}
