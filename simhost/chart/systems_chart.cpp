// One box for each device, since parameters are too many to draw; the links between two devices are one
// arrow, from the one that is read to the one that reads.
#include <map>
#include <utility>

#include "simhost/chart/chart.h"
#include "systems/links.h"

namespace simhost {

namespace {

using DeviceIndex = std::pair<int, int>; // system, device

std::string NodeName(DeviceIndex device) {
    return "d" + std::to_string(device.first) + "_" + std::to_string(device.second);
}

std::map<std::pair<DeviceIndex, DeviceIndex>, int> CountLinks() {
    std::map<std::pair<DeviceIndex, DeviceIndex>, int> links;
    for (size_t sys = 0; sys < systems_vector.size(); sys++) {
        for (size_t dev = 0; dev < systems_vector[sys].devices.size(); dev++) {
            const DeviceIndex reader(sys, dev);
            const auto count = [&](const sysLink_struct &link) {
                const DeviceIndex read(link.sys, link.dev);
                if (link.sys >= 0 && read != reader) links[{read, reader}]++;
            };
            for (const out_parameter_struct &parameter : systems_vector[sys].devices[dev].outs)
                ForEachLinkOf(parameter, count);
        }
    }
    return links;
}

} // namespace

void DescribeSystems(std::ostream &dot) {
    dot << "digraph systems {\n  rankdir=LR; compound=true; ranksep=1.2; fontname=\"Helvetica\";\n"
           "  node [shape=box, style=\"rounded,filled\", fillcolor=white, fontname=\"Helvetica\", fontsize=11];\n"
           "  edge [color=\"#4a6785\", fontname=\"Helvetica\", fontsize=9];\n";
    for (size_t sys = 0; sys < systems_vector.size(); sys++) {
        dot << "  subgraph cluster" << sys << " {\n    label=" << Quoted(systems_vector[sys].name)
            << "; style=filled; color=\"#e8eef4\"; fontsize=14;\n";
        const std::vector<device_struct> &devices = systems_vector[sys].devices;
        for (size_t dev = 0; dev < devices.size(); dev++) {
            const std::string count = std::to_string(devices[dev].outs.size());
            dot << "    " << NodeName(DeviceIndex(sys, dev)) << " [label="
                << Quoted(devices[dev].name + " (" + count + (devices[dev].serialStack ? " steps)" : ")"))
                << (devices[dev].serialStack ? ", fillcolor=\"#fdf3d8\"" : "") << "];\n";
        }
        dot << "  }\n";
    }
    for (const auto &[ends, count] : CountLinks()) {
        dot << "  " << NodeName(ends.first) << " -> " << NodeName(ends.second);
        if (count > 1) dot << " [label=" << count << "]";
        dot << ";\n";
    }
    dot << "}\n";
}

} // namespace simhost
