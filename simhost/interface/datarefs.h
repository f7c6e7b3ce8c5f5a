// The record behind a dataref's handle. data_access.cpp serves the C interface from it,
// shared_data.cpp the data that plug-ins share, dataref_values.cpp the access by name from outside.
//
// A handle is the address of its record. Records are made on the first mention of a name and live as long as
// the program, so that a handle is never dangling: an unregistered dataref keeps its record, an orphan
// without types, until its name is published again. XPLMFindDataRef gives an orphan's handle, too: the real
// simulator may, and a plug-in has to ask XPLMIsDataRefGood.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simhost/modules.h"

namespace simhost {

struct Subscriber {
    XPLMDataTypeID type = xplmType_Unknown;
    XPLMDataChanged_f changed = nullptr;
    void *refcon = nullptr;
    XPLMPluginID plugin = XPLM_NO_PLUGIN_ID;
};

// Datarefs whose texts are kept, or told, as they are written.
enum class Channel : unsigned char { None, Speech /* "kv/to_speech" */, Log /* "kv/diagnost/log" */ };

struct Dataref {
    // What every access looks at comes first, to lie in one cache line.
    XPLMDataTypeID types = xplmType_Unknown; // Unknown while an orphan
    bool isGood = false;                     // not an orphan
    bool wasGood = false;                    // an orphan that plug-ins still find by its name
    bool isStored = false;   // the value is kept here; otherwise the owner's functions have it
    bool isWritable = false; // by plug-ins
    Channel channel = Channel::None;
    bool isShared = false;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;

    int intValue = 0;
    float floatValue = 0;
    double doubleValue = 0;
    XPLMGetDatai_f readInt = nullptr;
    XPLMGetDataf_f readFloat = nullptr;
    XPLMGetDatad_f readDouble = nullptr;
    void *readRefcon = nullptr;
    XPLMSetDatai_f writeInt = nullptr;
    XPLMSetDataf_f writeFloat = nullptr;
    XPLMSetDatad_f writeDouble = nullptr;
    void *writeRefcon = nullptr;

    std::vector<int> intValues;
    std::vector<float> floatValues;
    std::vector<unsigned char> bytes;
    XPLMGetDatavi_f readIntArray = nullptr;
    XPLMSetDatavi_f writeIntArray = nullptr;
    XPLMGetDatavf_f readFloatArray = nullptr;
    XPLMSetDatavf_f writeFloatArray = nullptr;
    XPLMGetDatab_f readBytes = nullptr;
    XPLMSetDatab_f writeBytes = nullptr;

    std::string_view name;               // lives as long as the record
    std::vector<Subscriber> subscribers; // of shared data
};

// The record of a name, null if the name was never mentioned. It may be an orphan.
Dataref *FindRecord(std::string_view name);

// The same, null for an orphan too.
Dataref *FindGoodRecord(std::string_view name);

// The same, made if needed.
Dataref &RecordOf(const std::string &name);

// An element of any dataref as a number, 0 when there is none.
double NumberIn(Dataref &dataref, int index);

// Turns a record into an orphan without value.
void MakeOrphan(Dataref &dataref);

// Turns an orphan into a stored dataref of one type with the value 0.
void MakeStored(Dataref &dataref, XPLMDataTypeID type, int elements, bool writable);

// Sets a float of the simulator's own, writable for plug-ins or not, without further ado.
inline void StoreFloat(XPLMDataRef handle, float value) {
    auto *dataref = static_cast<Dataref *>(handle);
    if (dataref && dataref->isStored && (dataref->types & xplmType_Float)) dataref->floatValue = value;
}

// Tells the other plug-ins that share this data that the running one has changed it.
void NotifySubscribers(const Dataref &dataref);

// Ends a plug-in's sharing of all data.
void DropSubscribers(XPLMPluginID plugin, LeftBehind &leftBehind);
void ForgetSharedData(); // when all datarefs have been made orphans

// Takes what a plug-in writes to such a dataref: length bytes, up to the first zero byte.
void RecordText(Channel channel, const void *text, int length);
void ResetSentMessages();

} // namespace simhost
