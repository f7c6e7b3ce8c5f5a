// Pictures of an aircraft's systems files, through Graphviz.
#pragma once

#include <ostream>
#include <string>

#include "systems/model.h"

namespace simhost {

struct ChartOptions {
    std::string folder; // an aircraft's, or the plug-in's inside it
    std::string device; // a sequence to draw as a flow, "SYSTEM.DEVICE" or "DEVICE"; empty: all systems
    bool isDot = false; // the description for Graphviz instead of the picture
};

// Prints the picture as SVG. Returns the exit status: 0 drawn, 1 Graphviz is missing or failed, 2 no such
// folder or device.
int ChartFolder(const ChartOptions &options);

// The systems with their devices, and who reads whom, in Graphviz's language.
void DescribeSystems(std::ostream &dot);

// The steps of a sequence: what each waits for and does.
void DescribeFlow(const system_class &system, const device_struct &device, std::ostream &dot);

// A text between double quotes in Graphviz's language.
std::string Quoted(const std::string &text);

} // namespace simhost
