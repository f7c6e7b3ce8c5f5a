// Names, links and graphs of the model.
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "systems/notation.h"
#include "systems/operators.h"
#include "util/numbers.h"
#include "util/text.h"

namespace simhost {

namespace {

constexpr std::string_view Forbidden = ".,;=[]/\\<>&|\"";

void CheckName(const char *what, const std::string &name, const std::string &file, int line) {
    if (name.empty()) {
        AddFinding(Severity::Error, file, line, std::string("a ") + what + " without a name");
        return;
    }
    const size_t found = name.find_first_of(Forbidden);
    if (found != std::string::npos)
        AddFinding(Severity::Error, file, line,
                   std::string("the name of a ") + what + " must not contain \"" + name[found]
                       + "\": " + name);
    if (name.front() == ' ' || name.back() == ' ')
        AddFinding(Severity::Warning, file, line, std::string("a blank belongs to the name of the ") + what);
}

// Systems are files: two whose names differ in capitals only are one on most disks.
void CheckCapitals(std::map<std::string, const system_class *> &systems, const system_class &system) {
    const auto [entry, isNew] = systems.emplace(FoldCase(system.name), &system);
    const system_class &first = *entry->second;
    if (!isNew && first.name != system.name)
        AddFinding(Severity::Error, system.fileName, system.line,
                   "the system " + first.name + " (" + first.fileName + ":" + int2string(first.line)
                       + ") has this name but for capitals; on most disks both are one file: " + system.name);
}

// The first of that name is the one that links reach.
void CheckUnique(std::map<std::string, std::pair<std::string, int>> &places, const char *what,
                 const std::string &name, const std::string &file, int line) {
    const auto [entry, isNew] = places.emplace(name, std::pair(file, line));
    if (!isNew && entry->second != std::pair(file, line))
        AddFinding(Severity::Error, file, line,
                   std::string("a second ") + what + " with this name; no link reaches it (the first: "
                       + (entry->second.first == file ? "line " : entry->second.first + ":")
                       + int2string(entry->second.second) + "): " + name);
}

// Two texts are alike when they differ in blanks, tabs, dots or case only.
std::string Simplified(std::string name) {
    std::erase_if(name, [](char c) { return c == ' ' || c == '\t' || c == '.'; });
    return UpperToLowerCase(std::move(name));
}

// "; is A.B.C meant?", or nothing.
std::string Suggestion(const std::string &link) {
    const std::string wanted = Simplified(link);
    std::string suggestion;
    ForEachParameter([&](const ParameterPlace &place) {
        if (suggestion.empty() && Simplified(place.Name()) == wanted)
            suggestion = "; is " + place.Name() + " meant?";
    });
    return suggestion;
}

// What a system refers to in another that none of the files brings: one mistake, however many links.
struct MissingSystem {
    std::string user, file, first; // the system that refers to it, where, and the first parameter
    int line = 0;
    std::set<std::string> links;
};
std::vector<MissingSystem> missingSystems;

// False when the link's system is there.
bool NoteMissingSystem(const sysLink_struct &link, const ParameterPlace &place, int line) {
    const std::string name = link.name.substr(0, link.name.find('.'));
    if (mapSystemName.contains(name) || std::count(link.name.begin(), link.name.end(), '.') != 2)
        return false;
    const auto isSame = [&](const MissingSystem &one) {
        return one.user == place.system.name && one.first.starts_with(name + ".");
    };
    auto missing = std::find_if(missingSystems.begin(), missingSystems.end(), isSame);
    if (missing == missingSystems.end())
        missing = missingSystems.insert(missing,
                                        {place.system.name, place.parameter.fileName, link.name, line, {}});
    missing->links.insert(link.name);
    return true;
}

constexpr size_t MostLinks = 8; // that are named

void ReportMissingSystems() {
    for (const MissingSystem &missing : missingSystems) {
        const std::string name = missing.first.substr(0, missing.first.find('.'));
        if (missing.links.size() == 1) {
            AddFinding(Severity::Error, missing.file, missing.line,
                       "there is no parameter " + missing.first + ", nor a system " + name);
            continue;
        }
        std::string list;
        size_t named = 0;
        for (const std::string &link : missing.links)
            if (named++ < MostLinks) list += (list.empty() ? "" : ", ") + link;
        if (missing.links.size() > MostLinks) list += " and others";
        AddFinding(Severity::Error, missing.file, missing.line,
                   missing.user + " needs a system " + name + ", which is not among the files, with " + list);
    }
    missingSystems.clear();
}

constexpr int MostSuggestions = 20; // each looks at all parameters
int suggestions = 0;

void CheckLink(const sysLink_struct &link, const ParameterPlace &place, int line) {
    const std::string &file = place.parameter.fileName;
    if (link.kind != LinkUnresolved) {
        if (std::count(link.name.begin(), link.name.end(), '.') > 2)
            AddFinding(Severity::Error, file, line,
                       "what follows the third name of a link is ignored: " + link.name);
    } else if (link.name.find_first_of("=!<>&|[]") != std::string::npos) {
        AddFinding(Severity::Error, file, line,
                   "no comparison; one stands in a line, as [a]==[b], with ==, !=, >, <, >= or <=: "
                       + link.name);
    } else if (link.name.find('.') == std::string::npos) {
        AddFinding(Severity::Error, file, line,
                   "neither a number nor a link (SYSTEM.DEVICE.PARAMETER): " + link.name);
    } else {
        const std::string suggestion = suggestions++ < MostSuggestions ? Suggestion(link.name) : "";
        if (suggestion.empty() && NoteMissingSystem(link, place, line)) return;
        AddFinding(Severity::Error, file, line, "there is no parameter " + link.name + suggestion);
    }
}

void CheckSpokenLink(const sysLink_struct &link, const ParameterPlace &place, int line) {
    if (link.kind == LinkUnresolved)
        AddFinding(Severity::Error, place.parameter.fileName, line,
                   "there is no parameter " + link.name + "; she says \"UNKNOWN\""
                       + (suggestions++ < MostSuggestions ? Suggestion(link.name) : ""));
    else
        CheckLink(link, place, line);
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
                           CalculationWord + int2string(element.blockIndex)
                               + " is no calculation above this one in its block");
        }
    }
    for (const structExecute &action : block.executes)
        for (const sysLink_struct &link : action.spokenLinks) CheckSpokenLink(link, place, action.line);
}

void CheckOperators(const logicblock_struct &block, const ParameterPlace &place) {
    for (const calcBlock_struct &calculation : block.calcs)
        for (const calcStack_class &element : calculation.stack) {
            if (element.operType == OperatorLoad && !element.oper.empty())
                AddFinding(Severity::Error, place.parameter.fileName, calculation.line,
                           "no operator: \"" + element.oper + "\"");
            if (element.operType == OperatorDivide && element.link.kind == LinkNone
                && element.blockIndex == -1 && element.constant == 0.0)
                AddFinding(Severity::Warning, place.parameter.fileName, calculation.line,
                           "a division by 0 gives 0");
        }
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

bool isRepeated(const system_class &system) {
    const auto entry = mapSystemName.find(system.name);
    if (entry == mapSystemName.end()) return false;
    const system_class &first = systems_vector[static_cast<size_t>(entry->second)];
    return &first != &system && first.line == system.line && first.fileName == system.fileName;
}

int ParameterPlace::LastLine() const {
    const size_t next = static_cast<size_t>(out) + 1;
    constexpr int mostLines = 50; // of the last parameter
    return next < device.outs.size() ? device.outs[next].line - 1 : parameter.line + mostLines;
}

std::string ParameterPlace::Place(int line) const {
    return parameter.fileName + ":" + int2string(line);
}

void CheckNames() {
    std::map<std::string, std::pair<std::string, int>> systems;
    std::map<std::string, const system_class *> foldedNames;
    for (const system_class &system : systems_vector) {
        CheckCapitals(foldedNames, system);
        CheckName("system", system.name, system.fileName, system.line);
        CheckUnique(systems, "system", system.name, system.fileName, system.line);
        std::map<std::string, std::pair<std::string, int>> devices;
        for (const device_struct &device : system.devices) {
            CheckName("device", device.name, system.fileName, device.line);
            CheckUnique(devices, "device", device.name, system.fileName, device.line);
            if (device.outs.empty())
                AddFinding(Severity::Warning, system.fileName, device.line, "a device without parameters");
            std::map<std::string, std::pair<std::string, int>> parameters;
            for (const out_parameter_struct &parameter : device.outs) {
                CheckName("parameter", parameter.name, parameter.fileName, parameter.line);
                CheckUnique(parameters, "parameter", parameter.name, parameter.fileName, parameter.line);
                if (parameter.hasMin && parameter.hasMax && parameter.minLimit > parameter.maxLimit)
                    AddFinding(Severity::Error, parameter.fileName, parameter.line,
                               "the minimum is greater than the maximum");
                else if ((parameter.hasMin && parameter.initValue < parameter.minLimit)
                         || (parameter.hasMax && parameter.initValue > parameter.maxLimit))
                    AddFinding(Severity::Warning, parameter.fileName, parameter.line,
                               "the initial value is outside the limits");
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
    ReportMissingSystems();
}

void CheckGraphs() {
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic) CheckGraph(block, place);
    });
}

} // namespace simhost
