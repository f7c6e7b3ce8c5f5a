// Pictures of an aircraft's systems files, through Graphviz.
#pragma once

#include <ostream>
#include <string>

#include "systems/model.h"

namespace simhost {

struct ChartOptions {
    std::string folder; // an aircraft's, or the plug-in's inside it
    std::string
        device; // a sequence to draw as a flow, "SYSTEM.DEVICE" or "DEVICE"; or one system; empty: all
    bool isDot = false; // the description for Graphviz instead of the picture
};

// Prints the picture as SVG. Returns the exit status: 0 drawn, 1 Graphviz is missing or failed, 2 no such
// folder or device.
int ChartFolder(const ChartOptions &options);

// In Graphviz's language: the systems and which of them reads which; the devices of all systems (-1), or of
// one with those of others that it reads or that read it.
void DescribeSystems(std::ostream &dot);
void DescribeDevices(std::ostream &dot, int system);

// The steps of a sequence: what each waits for and does.
void DescribeFlow(const system_class &system, const device_struct &device, std::ostream &dot);

// A text between double quotes in Graphviz's language, and one inside its tables.
std::string Quoted(const std::string &text);
std::string Escaped(std::string text);

} // namespace simhost
