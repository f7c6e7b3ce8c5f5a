// Reads the folder with the plug-in's reader and hands a description to Graphviz's program dot, which prints
// the picture.
#include "simhost/chart/chart.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

#include "simhost/check/folder.h"
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

int ReportDevice(const std::string &name) {
    std::fprintf(stderr, "fennic-sim: there is no single sequence %s; there are:\n", name.c_str());
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            if (device.serialStack)
                std::fprintf(stderr, "    %s.%s\n", system.name.c_str(), device.name.c_str());
    return 2;
}

// The program writes the picture itself, where this program's output goes.
int Draw(const std::string &description) {
    std::fflush(stdout);
    FILE *dot = popen("dot -Tsvg", "w");
    if (dot == nullptr) return 1;
    const bool isWritten = std::fwrite(description.data(), 1, description.size(), dot) == description.size();
    if (pclose(dot) == 0 && isWritten) return 0;
    std::fputs("fennic-sim: Graphviz's program \"dot\" is missing or failed; Debian's package is graphviz\n",
               stderr);
    return 1;
}

} // namespace

std::string Quoted(const std::string &text) {
    return "\"" + ReplaceStringAll(ReplaceStringAll(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

int ChartFolder(const ChartOptions &options) {
    if (EnterFolder(options.folder).empty()) return 2;
    CreateSystemsFromFile();
    std::ostringstream dot;
    if (options.device.empty()) {
        DescribeSystems(dot);
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
