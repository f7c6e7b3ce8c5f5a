// Link resolution through the three levels of name maps, which are the only way from names to indices.
#include "systems/links.h"

#include <algorithm>

#include "systems/program.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/text.h"

CopiesState copies;

namespace {

int Find(const NameIndex &index, std::string_view name) {
    const auto entry = index.find(name);
    return entry == index.end() ? -1 : entry->second;
}

// Finds the parameter that a link text names; pieces beyond the third are ignored.
bool Resolve(std::string_view text, sysLink_struct &link) {
    const size_t firstDot = text.find('.');
    if (firstDot == std::string_view::npos) return false;
    const size_t secondDot = text.find('.', firstDot + 1);
    if (secondDot == std::string_view::npos) return false;
    const size_t thirdDot = text.find('.', secondDot + 1);

    ParameterAddress place{.sys = Find(mapSystemName, text.substr(0, firstDot))};
    const system_class *system = SystemAt(place);
    if (!system) return false;
    place.dev = Find(system->deviceIndex, text.substr(firstDot + 1, secondDot - firstDot - 1));
    const device_struct *device = DeviceAt(place);
    if (!device) return false;
    place.out = Find(device->outIndex, text.substr(secondDot + 1, thirdDot - secondDot - 1));
    const out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return false;

    const bool isDeleted = system->deleted || device->deleted || parameter->deleted;
    link = {place, std::string(text), isDeleted ? LinkDeleted : LinkLive};
    return true;
}

// Resolves the text again; one that names nothing any more stays as an unresolved link with its text.
void ResolveAgain(sysLink_struct &link, const std::string &text) {
    sysLink_struct found;
    if (!Resolve(text, found)) {
        found.kind = LinkUnresolved;
        found.name = text;
    }
    link = found;
}

// The next link of a spoken text that lies within one of its alternatives, which "say and wait" has between
// "#".
bool FindLinkOfAction(const structExecute &action, size_t from, SpokenLink &found) {
    if (action.type != ScriptSayWait) return FindSpokenLink(action.text, from, found);
    const std::string_view text = action.text;
    while (from < text.size()) {
        const size_t end = std::min(text.find('#', from), text.size());
        if (FindSpokenLink(text.substr(0, end), from, found)) return true;
        from = end + 1;
    }
    return false;
}

} // namespace

sysLink_struct String2sysLinkSDO(const ParameterAddress &owner, std::string_view text) {
    sysLink_struct link;
    out_parameter_struct *parameter = ParameterAt(owner);
    if (Resolve(text, link) || !parameter) return link;
    LogProblem("Error!!! Cant find parameter: ", std::string(text));
    link.kind = LinkUnresolved;
    link.name = text;
    SystemAt(owner)->hasError = DeviceAt(owner)->hasError = parameter->hasError = true;
    return link;
}

sysLink_struct String2sysLink(std::string_view text) {
    return String2sysLinkSDO({}, text);
}

double GetLinkValue(const sysLink_struct &link) {
    return LiveValue(link);
}

double GetValueFromSysLink(const sysLink_struct &link) {
    const bool isResolved = link.kind == LinkLive || link.kind == LinkDeleted;
    return isResolved ? GetLinkValue(link) : 0.0;
}

std::string SysDevOut2name(const ParameterAddress &place) {
    const out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return "";
    return SystemAt(place)->name + "." + DeviceAt(place)->name + "." + parameter->name;
}

void RemapAll() {
    const auto refill = [](NameIndex &index, const auto &records) {
        index.clear();
        for (bool isDeleted : {false, true})
            for (size_t i = 0; i < records.size(); i++)
                if (records[i].deleted == isDeleted) index.emplace(records[i].name, static_cast<int>(i));
    };
    refill(mapSystemName, systems_vector);
    for (system_class &system : systems_vector) {
        refill(system.deviceIndex, system.devices);
        for (device_struct &device : system.devices) refill(device.outIndex, device.outs);
    }
}

sysLink_struct RefreshSysLinkName(const sysLink_struct &link) {
    sysLink_struct refreshed = link;
    const std::string text = SysDevOut2name(link);
    ResolveAgain(refreshed, text.empty() ? link.name : text);
    return refreshed;
}

void SysLinkRefresh(int mode) {
    ModelChanges();
    RemapAll();
    ForEachLink([mode](sysLink_struct &link) {
        if (!isLink(link)) return;
        if (mode == 1 && link.kind != LinkUnresolved)
            link = RefreshSysLinkName(link);
        else
            ResolveAgain(link, std::string(link.name));
    });
    MarkLinkErrors();
}

void MarkLinkErrors() {
    for (system_class &system : systems_vector) {
        system.hasError = false;
        for (device_struct &device : system.devices) {
            device.hasError = false;
            for (out_parameter_struct &parameter : device.outs) {
                parameter.hasError = false;
                ForEachLinkOf(parameter, [&](const sysLink_struct &link) {
                    if (link.kind == LinkUnresolved) parameter.hasError = true;
                });
                if (parameter.hasError) device.hasError = system.hasError = true;
            }
        }
    }
}

void ResolveLinksOf(out_parameter_struct &parameter) {
    ForEachLinkOf(parameter, [](sysLink_struct &link) {
        if (isLink(link)) ResolveAgain(link, std::string(link.name));
    });
}

void SysLinkExchange(const std::string &oldName, const ParameterAddress &place) {
    ModelChanges();
    RemapAll();
    const std::string newName = SysDevOut2name(place);
    if (newName.empty()) return;
    ForEachLink([&](sysLink_struct &link) {
        if (isLink(link) && link.name == oldName) ResolveAgain(link, newName);
    });
    RemapAll();
}

void SysLinkPlace() {
    SysLinkExchange(OutParameterSysLinkCopy.name, OutParameterSysLinkPlace);
}

void DeviceTemplatePreparation(const std::string &newDeviceName) {
    const auto turn = [&](sysLink_struct &link) {
        if (link.kind != LinkLive) return;
        const std::vector<std::string> names = StringToWordsArray(link.name, '.');
        if (names.size() < 3 || !names[2].starts_with("in_")) return;
        ResolveAgain(link, names[0] + "." + newDeviceName + "." + names[2]);
    };
    for (out_parameter_struct &parameter : DeviceCopy.outs) ForEachLinkOf(parameter, turn);
}

void ReadSpokenLinks(structExecute &action, const ParameterAddress &owner) {
    action.spokenLinks.clear();
    if (TextOfAction(action.type) != ActionText::Spoken) return;
    SpokenLink found;
    for (size_t from = 0; FindLinkOfAction(action, from, found); from = found.end) {
        sysLink_struct link = String2sysLinkSDO(owner, found.name);
        link.name = found.name;
        if (link.kind == LinkNone) link.kind = LinkUnresolved;
        action.spokenLinks.push_back(std::move(link));
    }
}

void WriteSpokenLinks(structExecute &action) {
    SpokenLink found;
    size_t from = 0;
    for (const sysLink_struct &link : action.spokenLinks) {
        if (!FindLinkOfAction(action, from, found)) return;
        from = found.end;
        if (found.name == link.name) continue;
        const std::string written = (found.isSpelled ? "<&" : "<") + link.name + ">";
        action.text.replace(found.begin, found.end - found.begin, written);
        from = found.begin + written.size();
    }
}

void ForgetCopies() {
    MakeFresh(copies);
}
