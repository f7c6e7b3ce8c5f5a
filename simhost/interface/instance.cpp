// Instances of objects: kept, and not drawn.
#include "XPLMInstance.h"

#include <cstdint>
#include <map>
#include <vector>

#include "simhost/modules.h"

namespace simhost {

namespace {

struct Instance {
    XPLMObjectRef object = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    XPLMDrawInfo_t place = {};
    std::vector<float> data; // a value for each dataref
};

std::map<XPLMInstanceRef, Instance> &Instances() {
    static auto &instances = *new std::map<XPLMInstanceRef, Instance>;
    return instances;
}

constinit std::uintptr_t lastInstance = 0; // ids are not used twice

} // namespace

void DropInstances(XPLMPluginID plugin, LeftBehind &leftBehind) {
    std::size_t count = 0;
    for (auto next = Instances().begin(); next != Instances().end();) {
        const auto instance = next++;
        if (instance->second.owner != plugin) continue;
        LetGoOfObject(instance->second.object);
        Instances().erase(instance);
        count++;
    }
    if (count > 0)
        leftBehind.notes.push_back(std::to_string(count) + (count == 1 ? " instance" : " instances"));
}

void ResetInstances() {
    Instances().clear();
    lastInstance = 0;
}

} // namespace simhost

using namespace simhost;

XPLMInstanceRef XPLMCreateInstance(XPLMObjectRef obj, const char **datarefs) {
    if (!isLoadedObject(obj)) {
        ReportMisuse("XPLMCreateInstance of no object");
        return nullptr;
    }
    std::size_t count = 0;
    while (datarefs && datarefs[count]) count++;
    const auto id = reinterpret_cast<XPLMInstanceRef>(++lastInstance);
    Instances()[id] = {obj, currentRunning.plugin, {}, std::vector<float>(count)};
    HoldObject(obj); // which may be unloaded before the instance goes
    return id;
}

void XPLMDestroyInstance(XPLMInstanceRef instance) {
    const auto found = Instances().find(instance);
    if (found == Instances().end()) return;
    LetGoOfObject(found->second.object);
    Instances().erase(found);
}

void XPLMInstanceSetPosition(XPLMInstanceRef instance, const XPLMDrawInfo_t *new_position,
                             const float *data) {
    const auto found = Instances().find(instance);
    if (found == Instances().end()) return;
    CopyGiven(found->second.place, new_position);
    if (data) found->second.data.assign(data, data + found->second.data.size());
}
