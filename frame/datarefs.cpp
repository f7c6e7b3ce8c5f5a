// The dataref table. String datarefs carry their terminating zero byte over the interface: a reader gets
// length + 1 bytes, and the last byte of every write is dropped as the terminator.
#include "frame/datarefs.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <vector>

#include "XPLMPlugin.h"
#include "util/find_dataref.h"
#include "util/guard.h"
#include "util/log.h"
#include "util/make_fresh.h"

DRFclass DRFs[DrfCapacity];
int DRFcounter = 0;

namespace {

const char *const DatarefBrowserSignature = "xplanesdk.examples.DataRefEditor";
const int MessageAddDataref = 0x01000000;
const int HelperElements = 8;

int getdatai(void *refcon) {
    return static_cast<DRFclass *>(refcon)->intValue;
}

void setdatai(void *refcon, int value) {
    static_cast<DRFclass *>(refcon)->intValue = value;
}

float getdataf(void *refcon) {
    return static_cast<DRFclass *>(refcon)->floatValue;
}

void setdataf(void *refcon, float value) {
    static_cast<DRFclass *>(refcon)->floatValue = value;
}

int readString(void *refcon, void *destination, int offset, int max) {
    if (!refcon) return 0;
    const std::string &value = static_cast<DRFclass *>(refcon)->stringValue;
    const int size = static_cast<int>(value.size()) + 1;
    if (!destination) return size;
    if (offset < 0 || offset >= size || max <= 0) return 0;
    const int count = std::min(size - offset, max);
    std::memcpy(destination, value.c_str() + offset, static_cast<size_t>(count));
    return count;
}

void writeString(void *refcon, void *source, int offset, int length) {
    if (!refcon || offset < 0 || length < 0 || (!source && length > 0)) return;
    std::string &value = static_cast<DRFclass *>(refcon)->stringValue;
    if (length == 0) {
        value.clear();
        return;
    }
    value.resize(std::min(static_cast<size_t>(offset), value.size()));
    value.append(static_cast<const char *>(source), static_cast<size_t>(length - 1));
}

void TellDatarefBrowser(const std::string &name) {
    const XPLMPluginID browser = XPLMFindPluginBySignature(DatarefBrowserSignature);
    if (browser == XPLM_NO_PLUGIN_ID) return;
    XPLMSendMessageToPlugin(browser, MessageAddDataref, const_cast<char *>(name.c_str()));
}

std::vector<XPLMDataRef> computed;
std::unordered_map<XPLMDataRef, DRFclass *> entryOfHandle; // of the table, while it is registered

bool isNameFree(const std::string &name, const char *type) {
    const bool isFree = !FindDataref(name.c_str());
    if (!isFree) LogProblem(std::string("CUSTOM DATAREF (") + type + ") ERROR (already exist): ", name);
    return isFree;
}

// The next free entry, or null with the reason in the log.
DRFclass *NextEntry(const std::string &name, const char *type) {
    if (!isNameFree(name, type)) return nullptr;
    if (DRFcounter >= DrfCapacity - 1) {
        LogProblem(std::string("CUSTOM DATAREF (") + type + ") ERROR (table is full): ", name);
        return nullptr;
    }
    return &DRFs[++DRFcounter];
}

XPLMDataRef Announced(DRFclass &entry, const std::string &name) {
    if (entry.handle) entryOfHandle[entry.handle] = &entry;
    TellDatarefBrowser(name);
    return entry.handle;
}

// Arrays are transferred as their first Count elements, never one alone.
template <typename Element, int Count>
Element ReadElement(int (*get)(XPLMDataRef, Element *, int, int), XPLMDataRef handle, int index) {
    if (index < 0 || index >= Count) return 0;
    Element elements[Count] = {};
    get(handle, elements, 0, Count);
    return elements[index];
}

template <typename Element, int Count>
void WriteElement(int (*get)(XPLMDataRef, Element *, int, int), void (*set)(XPLMDataRef, Element *, int, int),
                  XPLMDataRef handle, int index, Element value) {
    if (index < 0 || index >= Count) return;
    Element elements[Count] = {};
    get(handle, elements, 0, Count);
    elements[index] = value;
    set(handle, elements, 0, Count);
}

} // namespace

XPLMDataRef DRFclass::Create_i(const std::string &name) {
    handle = XPLMRegisterDataAccessor(name.c_str(), xplmType_Int, 1, getdatai, setdatai, getdataf, setdataf,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      this, this);
    return handle;
}

XPLMDataRef DRFclass::Create_f(const std::string &name) {
    handle = XPLMRegisterDataAccessor(name.c_str(), xplmType_Float, 1, getdatai, setdatai, getdataf, setdataf,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      this, this);
    return handle;
}

XPLMDataRef DRFclass::Create_s(const std::string &name) {
    handle = XPLMRegisterDataAccessor(name.c_str(), xplmType_Data, 1, nullptr, nullptr, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      Guarded<"reading a string", readString>,
                                      Guarded<"writing a string", writeString>, this, this);
    return handle;
}

void DRFclass::Unregister() {
    if (!handle) return;
    XPLMUnregisterDataAccessor(handle);
    entryOfHandle.erase(handle);
    handle = nullptr;
}

XPLMDataRef CreateDrf_Int(const std::string &name, int initial) {
    DRFclass *entry = NextEntry(name, "int");
    if (!entry) return nullptr;
    entry->Create_i(name);
    entry->intValue = initial;
    return Announced(*entry, name);
}

XPLMDataRef CreateDrf_Float(const std::string &name, float initial) {
    DRFclass *entry = NextEntry(name, "float");
    if (!entry) return nullptr;
    entry->Create_f(name);
    entry->floatValue = initial;
    return Announced(*entry, name);
}

XPLMDataRef CreateDrf_String(const std::string &name, const std::string &initial) {
    DRFclass *entry = NextEntry(name, "string");
    if (!entry) return nullptr;
    entry->Create_s(name);
    entry->stringValue = initial;
    return Announced(*entry, name);
}

XPLMDataRef CreateDrf_Computed(const std::string &name, float (*get)(void *), void *refcon) {
    if (!isNameFree(name, "float")) return nullptr;
    computed.push_back(XPLMRegisterDataAccessor(name.c_str(), xplmType_Float, 0, nullptr, nullptr, get,
                                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                nullptr, nullptr, refcon, refcon));
    TellDatarefBrowser(name);
    return computed.back();
}

DRFclass *OwnDataref(XPLMDataRef handle) {
    const auto entry = entryOfHandle.find(handle);
    return entry == entryOfHandle.end() ? nullptr : entry->second;
}

void UnregisterDrfs() {
    for (XPLMDataRef handle : computed) XPLMUnregisterDataAccessor(handle);
    computed.clear();
    for (DRFclass &entry : DRFs) entry.Unregister();
}

float GetDRFf(XPLMDataRef handle, int index) {
    return ReadElement<float, HelperElements>(XPLMGetDatavf, handle, index);
}

void SetDRFf(XPLMDataRef handle, int index, float value) {
    WriteElement<float, HelperElements>(XPLMGetDatavf, XPLMSetDatavf, handle, index, value);
}

int GetDRFi(XPLMDataRef handle, int index) {
    return ReadElement<int, HelperElements>(XPLMGetDatavi, handle, index);
}

void SetDRFi(XPLMDataRef handle, int index, int value) {
    WriteElement<int, HelperElements>(XPLMGetDatavi, XPLMSetDatavi, handle, index, value);
}

float GetElementf(XPLMDataRef handle, int index) {
    return ReadElement<float, ReachableElements>(XPLMGetDatavf, handle, index);
}

void SetElementf(XPLMDataRef handle, int index, float value) {
    WriteElement<float, ReachableElements>(XPLMGetDatavf, XPLMSetDatavf, handle, index, value);
}

int GetElementi(XPLMDataRef handle, int index) {
    return ReadElement<int, ReachableElements>(XPLMGetDatavi, handle, index);
}

void SetElementi(XPLMDataRef handle, int index, int value) {
    WriteElement<int, ReachableElements>(XPLMGetDatavi, XPLMSetDatavi, handle, index, value);
}

std::string GetDRFs(XPLMDataRef handle) {
    if (!handle) return "";
    const int size = XPLMGetDatab(handle, nullptr, 0, 0);
    if (size <= 0) return "";
    std::string text(static_cast<size_t>(size), '\0');
    const int count = XPLMGetDatab(handle, text.data(), 0, size);
    text.resize(static_cast<size_t>(std::clamp(count, 0, size)));
    return text.substr(0, text.find('\0'));
}

void ResetPublishedDatarefs() {
    for (DRFclass &entry : DRFs) MakeFresh(entry);
    DRFcounter = 0;
    MakeFresh(computed);
    MakeFresh(entryOfHandle);
}
