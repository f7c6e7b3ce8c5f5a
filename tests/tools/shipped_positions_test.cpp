// The shipped positions and presets: they are what the position creator could have made, joints bend as
// joints do, and hands arrive where they are meant to, beside the body and not through it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "tools/figure/poses.h"
#include "util/text.h"

using namespace figure_maker;
namespace fs = std::filesystem;

namespace {

const fs::path Custom = SHIPPED_CUSTOM;

// The pose of a file; the channels it names are added to the list.
Pose ReadPose(const fs::path &path, std::vector<int> &channels) {
    Pose pose{};
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = StringToWordsArray(line, ',');
        EXPECT_EQ(fields.size(), 6U) << path << ": " << line;
        const size_t channel = std::stoul(fields.at(0));
        channels.push_back(static_cast<int>(channel));
        EXPECT_EQ(fields[1], Woman().joints.at(channel).name) << path;
        for (size_t axis = 0; axis < 3; axis++) pose[channel][axis] = std::stod(fields.at(axis + 2));
    }
    return pose;
}

// Each once.
void ExpectAllChannels(const std::vector<int> &channels) {
    EXPECT_EQ(channels.size(), static_cast<size_t>(JointCount));
    EXPECT_EQ(std::set<int>(channels.begin(), channels.end()).size(), static_cast<size_t>(JointCount));
}

void ExpectWithinLimits(const Pose &pose) {
    for (size_t channel = 0; channel < pose.size(); channel++)
        for (size_t axis = 0; axis < 3; axis++) {
            const Joint &joint = Woman().joints[channel];
            const double value = pose[channel][axis], steps = channel == WholeFigure ? value * 100 : value;
            EXPECT_TRUE(value >= joint.low[axis] && value <= joint.high[axis]) << joint.name << " " << value;
            EXPECT_NEAR(steps, std::round(steps), 1e-6) << joint.name << " in whole steps";
        }
}

// Position name to file, in all groups.
std::map<std::string, fs::path> Files(const std::string &folder) {
    std::map<std::string, fs::path> files;
    for (const auto &entry : fs::recursive_directory_iterator(Custom / folder))
        if (entry.is_regular_file()) {
            EXPECT_TRUE(files.emplace(entry.path().stem().string(), entry.path()).second) << entry.path();
        }
    return files;
}

} // namespace

TEST(ShippedPositions, ReachTheirTargetsWithinTheJointsLimits) {
    for (const std::string gender : {"positions-w", "positions-m"}) {
        auto files = Files(gender);
        EXPECT_GE(files.size(), 24U);
        EXPECT_GE(
            std::count_if(files.begin(), files.end(),
                          [](const auto &file) { return file.first.find("rest") != std::string::npos; }),
            5);
        const Body &body = BodyOf(gender == "positions-m");
        for (const PoseRecipe &recipe : PoseRecipes(body)) {
            SCOPED_TRACE(gender + " " + recipe.name);
            ASSERT_TRUE(files.contains(recipe.name));
            std::vector<int> channels;
            const Pose pose = ReadPose(files[recipe.name], channels);
            ExpectAllChannels(channels);
            ExpectWithinLimits(pose);
            for (bool isRight : {false, true}) {
                const Reach &reach = isRight ? recipe.right : recipe.left;
                EXPECT_LT(Length(PlaceOf(body, pose, reach.point, isRight) - reach.target), 0.02)
                    << (isRight ? "r" : "l");
                EXPECT_GT(Clearance(body, pose, isRight), -0.004) << (isRight ? "r" : "l");
            }
            files.erase(recipe.name);
        }
        for (const auto &[name, path] : files) ADD_FAILURE() << path << " comes from nowhere";
    }
}

TEST(ShippedPresets, ShapeOneHand) {
    const auto files = Files("presets");
    EXPECT_EQ(files.size(), 2 * HandShapes().size());
    for (const auto &[name, path] : files) {
        SCOPED_TRACE(name);
        std::vector<int> channels;
        const Pose pose = ReadPose(path, channels);
        ExpectWithinLimits(pose);
        ExpectAllChannels(channels); // what a preset does not name goes on with the move before
        const int first = name.starts_with("l_") ? LeftFingers : RightFingers;
        EXPECT_TRUE(name.starts_with("l_") || name.starts_with("r_"));
        for (int channel = 0; channel < JointCount; channel++)
            if (channel < first || channel >= first + 15) {
                EXPECT_EQ(pose[static_cast<size_t>(channel)], Pose::value_type{}) << channel;
            }
    }
}
