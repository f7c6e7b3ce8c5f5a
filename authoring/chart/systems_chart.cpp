// Parameters are too many to draw. The links between two devices are one arrow, from the one that is read to
// the one that reads; and in an aircraft with many devices, those between two systems are one.
#include <algorithm>
#include <map>
#include <utility>

#include "authoring/chart/chart.h"
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

bool isInvolved(DeviceIndex device, int system,
                const std::map<std::pair<DeviceIndex, DeviceIndex>, int> &links) {
    if (system < 0 || device.first == system) return true;
    return std::any_of(links.begin(), links.end(), [&](const auto &link) {
        const auto &[read, reader] = link.first;
        return (read == device && reader.first == system) || (reader == device && read.first == system);
    });
}

std::string NodeText(const device_struct &device) {
    return device.name + " (" + std::to_string(device.outs.size()) + (device.serialStack ? " steps)" : ")");
}

void BeginGraph(std::ostream &dot) {
    dot << "digraph systems {\n  rankdir=LR; ranksep=1.2; fontname=\"Helvetica\";\n"
           "  node [shape=box, style=\"rounded,filled\", fillcolor=white, fontname=\"Helvetica\", fontsize=11];\n"
           "  edge [color=\"#4a6785\", fontname=\"Helvetica\", fontsize=9];\n";
}

} // namespace

void DescribeSystems(std::ostream &dot) {
    BeginGraph(dot);
    for (size_t sys = 0; sys < systems_vector.size(); sys++) {
        dot << "  s" << sys << " [shape=plain, style=\"\", label=<<table border=\"0\" cellborder=\"1\" "
            << "cellspacing=\"0\" cellpadding=\"4\"><tr><td bgcolor=\"#dbe6f0\"><b>"
            << Escaped(systems_vector[sys].name) << "</b></td></tr>";
        for (const device_struct &device : systems_vector[sys].devices)
            dot << "<tr><td align=\"left\"" << (device.serialStack ? " bgcolor=\"#fdf3d8\"" : "") << ">"
                << Escaped(NodeText(device)) << "</td></tr>";
        dot << "</table>>];\n";
    }
    std::map<std::pair<int, int>, int> counts;
    for (const auto &[ends, count] : CountLinks())
        if (ends.first.first != ends.second.first) counts[{ends.first.first, ends.second.first}] += count;
    for (const auto &[ends, count] : counts)
        dot << "  s" << ends.first << " -> s" << ends.second << " [label=" << count << "];\n";
    dot << "}\n";
}

void DescribeDevices(std::ostream &dot, int system) {
    BeginGraph(dot);
    const auto links = CountLinks();
    for (size_t sys = 0; sys < systems_vector.size(); sys++) {
        dot << "  subgraph cluster" << sys << " {\n    label=" << Quoted(systems_vector[sys].name)
            << "; style=filled; color=\"#e8eef4\"; fontsize=14;\n";
        const std::vector<device_struct> &devices = systems_vector[sys].devices;
        for (size_t dev = 0; dev < devices.size(); dev++)
            if (isInvolved(DeviceIndex(sys, dev), system, links))
                dot << "    " << NodeName(DeviceIndex(sys, dev))
                    << " [label=" << Quoted(NodeText(devices[dev]))
                    << (devices[dev].serialStack ? ", fillcolor=\"#fdf3d8\"" : "") << "];\n";
        dot << "  }\n";
    }
    for (const auto &[ends, count] : links) {
        if (system >= 0 && ends.first.first != system && ends.second.first != system) continue;
        dot << "  " << NodeName(ends.first) << " -> " << NodeName(ends.second);
        if (count > 1) dot << " [label=" << count << "]";
        dot << ";\n";
    }
    dot << "}\n";
}

} // namespace simhost
