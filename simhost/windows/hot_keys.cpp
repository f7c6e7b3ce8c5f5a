// Hot keys: combinations that plug-ins ask for by name, and that others may give another key.
#include <cstdint>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "simhost/interface/callback_list.h"
#include "simhost/modules.h"
#include "simhost/windows/state.h"

namespace simhost {

namespace {

struct HotKey {
    XPLMHotKey_f callback = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    std::uintptr_t id = 0;
    char virtualKey = 0;
    XPLMKeyFlags flags = 0;
    std::string description;
};

constinit CallbackList<HotKey> hotKeys;
constinit std::uintptr_t lastId = 0; // ids are not used twice

constexpr std::size_t DescriptionSize = 512; // of the buffer for it
constexpr XPLMKeyFlags Modifiers = xplm_ShiftFlag | xplm_OptionAltFlag | xplm_ControlFlag;

HotKey *Find(XPLMHotKeyID id) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(id);
    return hotKeys.FindWhere([&](const HotKey &key) { return key.id == wanted; });
}

// When the key goes down, unless only its way up is asked for.
bool isMeant(const HotKey &key, XPLMKeyFlags flags, char virtualKey) {
    const XPLMKeyFlags ways = key.flags & (xplm_DownFlag | xplm_UpFlag);
    const XPLMKeyFlags wanted = ways == 0 ? static_cast<XPLMKeyFlags>(xplm_DownFlag) : ways;
    return key.virtualKey == virtualKey && (key.flags & Modifiers) == (flags & Modifiers)
           && (flags & wanted) != 0;
}

} // namespace

bool StrikeHotKeys(XPLMKeyFlags flags, char virtualKey) {
    if (virtualKey == 0) return false;
    return !CallbackList<HotKey>::Round(hotKeys).Run([&](const HotKey &key, std::size_t) {
        if (!isMeant(key, flags, virtualKey)) return true;
        RunningScope scope(key.owner, "hot key");
        key.callback(key.refcon);
        return false;
    });
}

void DropHotKeys(XPLMPluginID plugin, LeftBehind &leftBehind) {
    hotKeys.Drop(plugin, [&](const HotKey &key) {
        leftBehind.notes.push_back("hot key \"" + key.description + "\"");
    });
}

void ResetHotKeys() {
    hotKeys.Clear();
    lastId = 0;
}

} // namespace simhost

using namespace simhost;

XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char *inDescription,
                                XPLMHotKey_f inCallback, void *inRefcon) {
    if (!inCallback) {
        ReportMisuse("XPLMRegisterHotKey without a callback");
        return nullptr;
    }
    hotKeys.Add({inCallback, inRefcon, currentRunning.plugin, ++lastId, inVirtualKey, inFlags,
                 inDescription ? inDescription : ""});
    return reinterpret_cast<XPLMHotKeyID>(lastId);
}

void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey) {
    hotKeys.Remove(Find(inHotKey));
}

int XPLMCountHotKeys(void) {
    int count = 0;
    hotKeys.ForEach([&](const HotKey &) { count++; });
    return count;
}

XPLMHotKeyID XPLMGetNthHotKey(int inIndex) {
    XPLMHotKeyID found = nullptr;
    int number = 0;
    hotKeys.ForEach([&](const HotKey &key) {
        if (number++ == inIndex) found = reinterpret_cast<XPLMHotKeyID>(key.id);
    });
    return found;
}

void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char *outVirtualKey, XPLMKeyFlags *outFlags,
                       char *outDescription, XPLMPluginID *outPlugin) {
    const HotKey *key = Find(inHotKey);
    if (outVirtualKey) *outVirtualKey = key ? key->virtualKey : '\0';
    if (outFlags) *outFlags = key ? key->flags : 0;
    CopyText(key ? key->description : "", outDescription, DescriptionSize);
    if (outPlugin) *outPlugin = key ? key->owner : XPLM_NO_PLUGIN_ID;
}

void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags) {
    HotKey *key = Find(inHotKey);
    if (!key) return;
    key->virtualKey = inVirtualKey;
    key->flags = inFlags;
}
