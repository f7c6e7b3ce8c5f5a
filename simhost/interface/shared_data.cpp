// Data that plug-ins share: stored here, published while at least one plug-in takes part, and every other
// participant is told of a change.
#include <algorithm>
#include <iterator>

#include "simhost/interface/datarefs.h"

namespace simhost {

namespace {

constinit std::vector<Dataref *> sharedDatarefs;

bool isOneType(XPLMDataTypeID type) {
    return type > 0 && type <= xplmType_Data && (type & (type - 1)) == 0;
}

void ForgetIfUnused(Dataref *dataref) {
    if (!dataref->subscribers.empty()) return;
    std::erase(sharedDatarefs, dataref);
    if (dataref->isShared) MakeOrphan(*dataref);
}

} // namespace

void NotifySubscribers(const Dataref &dataref) {
    const XPLMPluginID writer = currentRunning.plugin;
    // A callback may share or unshare: by index, and nothing is kept across the call.
    for (std::size_t i = 0; i < dataref.subscribers.size(); i++) {
        const Subscriber subscriber = dataref.subscribers[i];
        if (!subscriber.changed || subscriber.plugin == writer) continue;
        RunningScope scope(subscriber.plugin, "notice of changed data");
        subscriber.changed(subscriber.refcon);
    }
}

void DropSubscribers(XPLMPluginID plugin, LeftBehind &leftBehind) {
    const std::vector<Dataref *> datarefs = sharedDatarefs;
    for (Dataref *dataref : datarefs) {
        const auto dropped = std::erase_if(
            dataref->subscribers, [&](const Subscriber &subscriber) { return subscriber.plugin == plugin; });
        if (dropped == 0) continue;
        leftBehind.errors.push_back("shared data \"" + std::string(dataref->name) + "\"");
        ForgetIfUnused(dataref);
    }
}

void ForgetSharedData() {
    sharedDatarefs.clear();
}

} // namespace simhost

using namespace simhost;

int XPLMShareData(const char *inDataName, XPLMDataTypeID inDataType, XPLMDataChanged_f inNotificationFunc,
                  void *inNotificationRefcon) {
    if (!inDataName || *inDataName == '\0' || !isOneType(inDataType)) {
        ReportMisuse("XPLMShareData without a name or with other than one type");
        return 0;
    }
    Dataref &dataref = RecordOf(inDataName);
    if (!dataref.isGood) {
        MakeStored(dataref, inDataType, 0, true);
        dataref.isShared = true;
        sharedDatarefs.push_back(&dataref);
    } else if (!dataref.isShared || dataref.types != inDataType) {
        return 0;
    }
    dataref.subscribers.push_back(
        {inDataType, inNotificationFunc, inNotificationRefcon, currentRunning.plugin});
    return 1;
}

int XPLMUnshareData(const char *inDataName, XPLMDataTypeID inDataType, XPLMDataChanged_f inNotificationFunc,
                    void *inNotificationRefcon) {
    Dataref *dataref = inDataName ? FindRecord(inDataName) : nullptr;
    if (!dataref || !dataref->isShared) return 0;
    const auto found = std::find_if(
        dataref->subscribers.begin(), dataref->subscribers.end(), [&](const Subscriber &subscriber) {
            return subscriber.type == inDataType && subscriber.changed == inNotificationFunc
                   && subscriber.refcon == inNotificationRefcon && subscriber.plugin == currentRunning.plugin;
        });
    if (found == dataref->subscribers.end()) return 0;
    dataref->subscribers.erase(found);
    ForgetIfUnused(dataref);
    return 1;
}
