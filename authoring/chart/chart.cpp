// Reads the folder with the plug-in's reader and hands a description to Graphviz's program dot, which prints
// the picture.
#include "authoring/chart/chart.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <utility>
#include <vector>

#include "authoring/check/folder.h"
#include "simhost/system.h"
#include "systems/reader.h"
#include "util/text.h"

namespace simhost {

namespace {

struct FoundDevice {
    const system_class *system;
    const device_struct *device;
};

std::vector<FoundDevice> FindSequences(const std::string &name) {
    std::vector<FoundDevice> found;
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            if (device.serialStack && (name == device.name || name == system.name + "." + device.name))
                found.push_back({&system, &device});
    return found;
}

constexpr size_t MostDevices = 30; // that can be drawn with an arrow for each pair

size_t CountDevices() {
    size_t count = 0;
    for (const system_class &system : systems_vector) count += system.devices.size();
    return count;
}

int ReportDevice(const std::string &name) {
    std::fprintf(stderr, "fennic-sim: there is no system and no single sequence %s; sequences are:\n",
                 name.c_str());
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            if (device.serialStack)
                std::fprintf(stderr, "    %s.%s\n", system.name.c_str(), device.name.c_str());
    return 2;
}

// The program writes the picture itself, where this program's output goes.
int Draw(const std::string &description) {
    if (FeedProgram("dot -Tsvg", description)) return 0;
    std::fputs("fennic-sim: Graphviz's program \"dot\" is missing or failed; Debian's package is graphviz\n",
               stderr);
    return 1;
}

} // namespace

std::string Quoted(const std::string &text) {
    return "\"" + ReplaceStringAll(ReplaceStringAll(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

std::string Escaped(std::string text) {
    for (const auto &[from, to] : {std::pair("&", "&amp;"), std::pair("<", "&lt;"), std::pair(">", "&gt;")})
        text = ReplaceStringAll(std::move(text), from, to);
    return text;
}

int ChartFolder(const ChartOptions &options) {
    if (EnterFolder(options.folder).empty()) return 2;
    CreateSystemsFromFile();
    std::ostringstream dot;
    const auto system = mapSystemName.find(options.device);
    if (options.device.empty() && CountDevices() > MostDevices) {
        DescribeSystems(dot);
    } else if (options.device.empty() || system != mapSystemName.end()) {
        DescribeDevices(dot, options.device.empty() ? -1 : system->second);
    } else {
        const std::vector<FoundDevice> found = FindSequences(options.device);
        if (found.size() != 1) return ReportDevice(options.device);
        DescribeFlow(*found[0].system, *found[0].device, dot);
    }
    if (!options.isDot) return Draw(dot.str());
    std::cout << dot.str();
    return 0;
}

} // namespace simhost
