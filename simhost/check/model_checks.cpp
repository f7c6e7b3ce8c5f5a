// Names, links and graphs of the model.
#include <algorithm>
#include <map>
#include <string>
#include <string_view>

#include "simhost/check/checks.h"
#include "simhost/check/findings.h"
#include "util/numbers.h"

namespace simhost {

namespace {

constexpr std::string_view FORBIDDEN = ".,;=[]/\\<>&|\"";

void CheckName(const char *what, const std::string &name, const std::string &file, int line) {
    if (name.empty()) {
        AddFinding(Severity::Error, file, line, std::string("a ") + what + " without a name");
        return;
    }
    const size_t found = name.find_first_of(FORBIDDEN);
    if (found != std::string::npos)
        AddFinding(Severity::Error, file, line,
                   std::string("the name of a ") + what + " must not contain \"" + name[found]
                       + "\": " + name);
    if (name.front() == ' ' || name.back() == ' ')
        AddFinding(Severity::Warning, file, line, std::string("a blank belongs to the name of the ") + what);
}

// The first of that name is the one that links reach.
void CheckUnique(std::map<std::string, int> &lines, const char *what, const std::string &name,
                 const std::string &file, int line) {
    const auto [entry, isNew] = lines.emplace(name, line);
    if (!isNew)
        AddFinding(Severity::Error, file, line,
                   std::string("a second ") + what + " with this name; no link reaches it (the first: line "
                       + int2string(entry->second) + "): " + name);
}

void CheckLink(const sysLink_struct &link, const ParameterPlace &place, int line) {
    if (link.kind == LinkUnresolved)
        AddFinding(Severity::Error, place.parameter.fileName, line,
                   link.name.find('.') == std::string::npos
                       ? "neither a number nor a link (SYSTEM.DEVICE.PARAMETER): " + link.name
                       : "there is no parameter " + link.name);
}

void CheckLinksOf(const logicblock_struct &block, const ParameterPlace &place) {
    for (const compare_block_class &comparison : block.compares) {
        CheckLink(comparison.a, place, comparison.line);
        CheckLink(comparison.b, place, comparison.line);
    }
    for (size_t i = 0; i < block.calcs.size(); i++) {
        for (const calcStack_class &element : block.calcs[i].stack) {
            CheckLink(element.link, place, block.calcs[i].line);
            if (element.blockIndex < -1 || element.blockIndex >= static_cast<int>(i))
                AddFinding(Severity::Error, place.parameter.fileName, block.calcs[i].line,
                           "CBLOCK" + int2string(element.blockIndex)
                               + " is no calculation above this one in its block");
        }
    }
}

void CheckOperators(const logicblock_struct &block, const ParameterPlace &place) {
    for (const calcBlock_struct &calculation : block.calcs)
        for (const calcStack_class &element : calculation.stack)
            if (element.operType == 0 && !element.oper.empty())
                AddFinding(Severity::Error, place.parameter.fileName, calculation.line,
                           "no operator: \"" + element.oper + "\"");
}

void CheckGraph(const logicblock_struct &block, const ParameterPlace &place) {
    const std::string &file = place.parameter.fileName;
    const std::vector<graf_struct> &graph = block.graph;
    if (graph.empty()) return;
    if (graph.size() == 1)
        AddFinding(Severity::Error, file, graph[0].line, "a graph of one point does nothing");
    if (block.calcs.empty())
        AddFinding(Severity::Error, file, graph[0].line,
                   "a graph without a \"calc=\" in its block does nothing");
    for (size_t i = 1; i < graph.size(); i++)
        if (graph[i].x <= graph[i - 1].x)
            AddFinding(Severity::Error, file, graph[i].line,
                       "graph points must be in ascending order of x: " + SignificantDigits(graph[i].x)
                           + " after " + SignificantDigits(graph[i - 1].x));
}

} // namespace

std::string ParameterPlace::Place(int line) const {
    return parameter.fileName + ":" + int2string(line);
}

void CheckNames() {
    std::map<std::string, int> systems;
    for (const system_class &system : systems_vector) {
        CheckName("system", system.name, system.fileName, system.line);
        CheckUnique(systems, "system", system.name, system.fileName, system.line);
        std::map<std::string, int> devices;
        for (const device_struct &device : system.devices) {
            CheckName("device", device.name, system.fileName, device.line);
            CheckUnique(devices, "device", device.name, system.fileName, device.line);
            if (device.outs.empty())
                AddFinding(Severity::Warning, system.fileName, device.line, "a device without parameters");
            std::map<std::string, int> parameters;
            for (const out_parameter_struct &parameter : device.outs) {
                CheckName("parameter", parameter.name, parameter.fileName, parameter.line);
                CheckUnique(parameters, "parameter", parameter.name, parameter.fileName, parameter.line);
                if (parameter.hasMin && parameter.hasMax && parameter.minLimit > parameter.maxLimit)
                    AddFinding(Severity::Error, parameter.fileName, parameter.line,
                               "the minimum is greater than the maximum");
            }
        }
    }
}

void CheckLinks() {
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic) {
            CheckLinksOf(block, place);
            CheckOperators(block, place);
        }
    });
}

void CheckGraphs() {
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic) CheckGraph(block, place);
    });
}

} // namespace simhost
