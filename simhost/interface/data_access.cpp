// Datarefs as plug-ins see them. A read or a write follows the handle to its record and never searches or
// allocates; only a listener to writes makes one cost more.
#include "XPLMDataAccess.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <unordered_map>

#include "simhost/events.h"
#include "simhost/interface/datarefs.h"
#include "simhost/interface/name_hash.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

// Its elements are never moved or removed.
using DatarefTable = std::unordered_map<std::string, Dataref, NameHash, std::equal_to<>>;

// Made on first use and never destroyed: plug-ins linked into the program look datarefs up while its
// globals are initialised, and may do so still while they are destroyed.
DatarefTable &Datarefs() {
    static DatarefTable *table = nullptr;
    if (!table) {
        table = new DatarefTable;
        PublishBuiltinDatarefs();
    }
    return *table;
}

// All of them, in the order of their first mention.
std::vector<Dataref *> &InOrder() {
    static auto &list = *new std::vector<Dataref *>;
    return list;
}

// What is needed to read and write one type: its bit, where it is stored, the owner's functions.
template <typename Value> struct ScalarType {
    XPLMDataTypeID bit;
    Value Dataref::*stored;
    Value (*Dataref::*read)(void *);
    void (*Dataref::*write)(void *, Value);
};
constexpr ScalarType<int> IntType = {xplmType_Int, &Dataref::intValue, &Dataref::readInt, &Dataref::writeInt};
constexpr ScalarType<float> FloatType = {xplmType_Float, &Dataref::floatValue, &Dataref::readFloat,
                                         &Dataref::writeFloat};
constexpr ScalarType<double> DoubleType = {xplmType_Double, &Dataref::doubleValue, &Dataref::readDouble,
                                           &Dataref::writeDouble};

// Element is what is stored, Buffer what the interface calls it.
template <typename Element, typename Buffer> struct ArrayType {
    XPLMDataTypeID bit;
    std::vector<Element> Dataref::*stored;
    int (*Dataref::*read)(void *, Buffer *, int, int);
    void (*Dataref::*write)(void *, Buffer *, int, int);
};
constexpr ArrayType<int, int> IntArrayType = {xplmType_IntArray, &Dataref::intValues, &Dataref::readIntArray,
                                              &Dataref::writeIntArray};
constexpr ArrayType<float, float> FloatArrayType = {xplmType_FloatArray, &Dataref::floatValues,
                                                    &Dataref::readFloatArray, &Dataref::writeFloatArray};
constexpr ArrayType<unsigned char, void> DataType = {xplmType_Data, &Dataref::bytes, &Dataref::readBytes,
                                                     &Dataref::writeBytes};

// Calls a function of the dataref's owner in the owner's name.
template <typename Call> auto CallOwner(const Dataref &dataref, Call call) {
    if (dataref.owner == currentRunning.plugin) return call();
    RunningScope scope(dataref.owner, "data accessor");
    return call();
}

template <typename Value> inline Value ReadScalar(XPLMDataRef handle, const ScalarType<Value> &type) {
    const auto *dataref = static_cast<const Dataref *>(handle);
    if (!dataref || !(dataref->types & type.bit)) return 0;
    if (dataref->isStored) return dataref->*type.stored;
    const auto read = dataref->*type.read;
    if (!read) return 0;
    return CallOwner(*dataref, [&] { return read(dataref->readRefcon); });
}

template <typename Element, typename Buffer>
int ReadArray(XPLMDataRef handle, Buffer *out, int offset, int maximum,
              const ArrayType<Element, Buffer> &type) {
    const auto *dataref = static_cast<const Dataref *>(handle);
    if (!dataref || !(dataref->types & type.bit)) return 0;
    if (!dataref->isStored) {
        const auto read = dataref->*type.read;
        if (!read) return 0;
        return CallOwner(*dataref, [&] { return read(dataref->readRefcon, out, offset, maximum); });
    }
    const std::vector<Element> &stored = dataref->*type.stored;
    const int size = static_cast<int>(stored.size());
    if (!out) return size;
    if (offset < 0 || offset >= size || maximum <= 0) return 0;
    const int count = std::min(maximum, size - offset);
    std::memcpy(out, stored.data() + offset, static_cast<std::size_t>(count) * sizeof(Element));
    return count;
}

// Whether a write by the running plug-in is one that a listener wants to know of.
bool isReported(const Dataref &dataref) {
    return dataref.owner != currentRunning.plugin && currentRunning.plugin != XPLM_PLUGIN_XPLANE
           && dataref.channel == Channel::None && hasEventListener();
}

template <typename Value> void ReportWrite(const std::string &subject, Value value) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    ReportEvent({EventKind::DatarefWritten, subject, std::string(text, end)});
}

template <typename Value> void WriteScalar(XPLMDataRef handle, Value value, const ScalarType<Value> &type) {
    auto *dataref = static_cast<Dataref *>(handle);
    if (!dataref || !(dataref->types & type.bit) || !dataref->isWritable) return;
    const bool isToReport = isReported(*dataref);
    const Value before = isToReport ? ReadScalar(handle, type) : Value();
    if (dataref->isStored) {
        dataref->*type.stored = value;
        if (dataref->isShared) NotifySubscribers(*dataref);
    } else if (const auto write = dataref->*type.write; write) {
        CallOwner(*dataref, [&] { write(dataref->writeRefcon, value); });
    }
    if (!isToReport) return;
    const Value after = ReadScalar(handle, type);
    if (std::memcmp(&after, &before, sizeof after) != 0) ReportWrite(std::string(dataref->name), after);
}

template <typename Element, typename Buffer>
std::vector<Element> ReadWhole(XPLMDataRef handle, const ArrayType<Element, Buffer> &type) {
    const int size = ReadArray<Element, Buffer>(handle, nullptr, 0, 0, type);
    std::vector<Element> elements(static_cast<std::size_t>(std::max(size, 0)));
    if (elements.empty()) return elements;
    const int count = ReadArray<Element, Buffer>(handle, elements.data(), 0, size, type);
    elements.resize(static_cast<std::size_t>(std::clamp(count, 0, size)));
    return elements;
}

template <typename Element>
void ReportChanges(const Dataref &dataref, const std::vector<Element> &before,
                   const std::vector<Element> &after) {
    if constexpr (sizeof(Element) == 1) {
        if (after == before) return;
        const std::string text(after.begin(), std::find(after.begin(), after.end(), 0));
        ReportEvent({EventKind::DatarefWritten, std::string(dataref.name), text});
    } else {
        for (std::size_t i = 0; i < after.size(); i++) {
            if (i < before.size() && std::memcmp(&after[i], &before[i], sizeof(Element)) == 0) continue;
            ReportWrite(std::string(dataref.name) + "[" + std::to_string(i) + "]", after[i]);
        }
    }
}

template <typename Element, typename Buffer>
void WriteArray(XPLMDataRef handle, Buffer *values, int offset, int count,
                const ArrayType<Element, Buffer> &type) {
    auto *dataref = static_cast<Dataref *>(handle);
    if (!dataref || !(dataref->types & type.bit) || !dataref->isWritable) return;
    if (!values && count > 0) return;
    const bool isToReport = isReported(*dataref);
    std::vector<Element> before;
    if (isToReport) before = ReadWhole(handle, type);
    if (dataref->isStored) {
        std::vector<Element> &stored = dataref->*type.stored;
        if (offset < 0 || count <= 0) return;
        // Shared data has no size of its own: it is as long as what was written.
        const long long end = static_cast<long long>(offset) + count;
        constexpr long long largestShared = 1 << 20;
        if (dataref->isShared && end > static_cast<long long>(stored.size()) && end <= largestShared) {
            stored.resize(static_cast<std::size_t>(end));
        }
        const int size = static_cast<int>(stored.size());
        if (offset >= size) return;
        std::memcpy(stored.data() + offset, values,
                    static_cast<std::size_t>(std::min(count, size - offset)) * sizeof(Element));
        if (dataref->isShared) NotifySubscribers(*dataref);
    } else if (const auto write = dataref->*type.write; write) {
        CallOwner(*dataref, [&] { write(dataref->writeRefcon, values, offset, count); });
    }
    if (isToReport) ReportChanges(*dataref, before, ReadWhole(handle, type));
}

} // namespace

Dataref *FindRecord(std::string_view name) {
    DatarefTable &table = Datarefs();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : &found->second;
}

Dataref *FindGoodRecord(std::string_view name) {
    Dataref *dataref = FindRecord(name);
    return dataref && dataref->isGood ? dataref : nullptr;
}

Dataref &RecordOf(const std::string &name) {
    const auto [element, isNew] = Datarefs().try_emplace(name);
    Dataref &dataref = element->second;
    if (isNew) {
        dataref.name = element->first;
        InOrder().push_back(&dataref);
        if (name == "kv/to_speech") dataref.channel = Channel::Speech;
        if (name == "kv/diagnost/log") dataref.channel = Channel::Log;
    }
    return dataref;
}

void MakeOrphan(Dataref &dataref) {
    Dataref orphan;
    orphan.name = dataref.name;
    orphan.channel = dataref.channel;
    orphan.wasGood = dataref.isGood || dataref.wasGood;
    dataref = std::move(orphan);
}

void MakeStored(Dataref &dataref, XPLMDataTypeID type, int elements, bool writable) {
    MakeOrphan(dataref);
    dataref.types = type;
    dataref.isGood = true;
    dataref.isStored = true;
    dataref.isWritable = writable;
    const auto size = static_cast<std::size_t>(std::max(elements, 0));
    if (type & xplmType_IntArray) dataref.intValues.resize(size);
    if (type & xplmType_FloatArray) dataref.floatValues.resize(size);
    if (type & xplmType_Data) dataref.bytes.resize(size);
}

XPLMDataRef PublishDataref(const std::string &name, XPLMDataTypeID type, int elements, bool writable) {
    Dataref &dataref = RecordOf(name);
    MakeStored(dataref, type, elements, writable);
    return &dataref;
}

void PublishDataref(const std::string &name, XPLMDataTypeID type, int elements) {
    PublishDataref(name, type, elements, true);
}

void ResetDatarefs() {
    for (auto &element : Datarefs()) {
        MakeOrphan(element.second);
        element.second.wasGood = false;
    }
    ForgetSharedData();
    PublishBuiltinDatarefs();
    ResetSentMessages();
}

void DropAccessors(XPLMPluginID plugin, LeftBehind &leftBehind) {
    std::vector<std::string> names;
    for (auto &[name, dataref] : Datarefs()) {
        if (!dataref.isGood || dataref.isStored || dataref.owner != plugin) continue;
        names.push_back("data accessor \"" + name + "\"");
        MakeOrphan(dataref);
    }
    std::sort(names.begin(), names.end());
    leftBehind.errors.insert(leftBehind.errors.end(), names.begin(), names.end());
    DropSubscribers(plugin, leftBehind);
}

} // namespace simhost

using namespace simhost;

XPLMDataRef XPLMFindDataRef(const char *inDataRefName) {
    if (!inDataRefName) return nullptr;
    Dataref *dataref = FindRecord(inDataRefName);
    return dataref && (dataref->isGood || dataref->wasGood) ? dataref : nullptr;
}

int XPLMCanWriteDataRef(XPLMDataRef inDataRef) {
    const auto *dataref = static_cast<const Dataref *>(inDataRef);
    return dataref && dataref->isWritable ? 1 : 0;
}

int XPLMIsDataRefGood(XPLMDataRef inDataRef) {
    const auto *dataref = static_cast<const Dataref *>(inDataRef);
    return dataref && dataref->isGood ? 1 : 0;
}

XPLMDataTypeID XPLMGetDataRefTypes(XPLMDataRef inDataRef) {
    const auto *dataref = static_cast<const Dataref *>(inDataRef);
    return dataref ? dataref->types : xplmType_Unknown;
}

int XPLMCountDataRefs(void) {
    FindRecord(""); // so that there are those of the simulator
    const auto isGood = [](const Dataref *dataref) { return dataref->isGood; };
    return static_cast<int>(std::count_if(InOrder().begin(), InOrder().end(), isGood));
}

void XPLMGetDataRefsByIndex(int offset, int count, XPLMDataRef *outDataRefs) {
    FindRecord("");
    if (!outDataRefs || offset < 0 || count <= 0) return;
    int number = 0;
    for (Dataref *dataref : InOrder()) {
        if (!dataref->isGood) continue;
        if (number >= offset) *outDataRefs++ = dataref;
        if (++number - offset >= count) return;
    }
}

void XPLMGetDataRefInfo(XPLMDataRef inDataRef, XPLMDataRefInfo_t *outInfo) {
    const auto *dataref = static_cast<const Dataref *>(inDataRef);
    XPLMDataRefInfo_t info = {};
    info.owner = XPLM_NO_PLUGIN_ID;
    if (dataref) {
        info.name = dataref->name.data(); // of a string, so a zero follows
        info.type = dataref->types;
        info.writable = dataref->isWritable ? 1 : 0;
        if (dataref->isGood) info.owner = dataref->owner;
    }
    CopyOut(info, outInfo);
}

int XPLMGetDatai(XPLMDataRef inDataRef) {
    return ReadScalar(inDataRef, IntType);
}
float XPLMGetDataf(XPLMDataRef inDataRef) {
    return ReadScalar(inDataRef, FloatType);
}
double XPLMGetDatad(XPLMDataRef inDataRef) {
    return ReadScalar(inDataRef, DoubleType);
}
void XPLMSetDatai(XPLMDataRef inDataRef, int inValue) {
    WriteScalar(inDataRef, inValue, IntType);
}
void XPLMSetDataf(XPLMDataRef inDataRef, float inValue) {
    WriteScalar(inDataRef, inValue, FloatType);
}
void XPLMSetDatad(XPLMDataRef inDataRef, double inValue) {
    WriteScalar(inDataRef, inValue, DoubleType);
}

int XPLMGetDatavi(XPLMDataRef inDataRef, int *outValues, int inOffset, int inMax) {
    return ReadArray(inDataRef, outValues, inOffset, inMax, IntArrayType);
}

void XPLMSetDatavi(XPLMDataRef inDataRef, int *inValues, int inoffset, int inCount) {
    WriteArray(inDataRef, inValues, inoffset, inCount, IntArrayType);
}

int XPLMGetDatavf(XPLMDataRef inDataRef, float *outValues, int inOffset, int inMax) {
    return ReadArray(inDataRef, outValues, inOffset, inMax, FloatArrayType);
}

void XPLMSetDatavf(XPLMDataRef inDataRef, float *inValues, int inoffset, int inCount) {
    WriteArray(inDataRef, inValues, inoffset, inCount, FloatArrayType);
}

int XPLMGetDatab(XPLMDataRef inDataRef, void *outValue, int inOffset, int inMaxBytes) {
    return ReadArray(inDataRef, outValue, inOffset, inMaxBytes, DataType);
}

void XPLMSetDatab(XPLMDataRef inDataRef, void *inValue, int inOffset, int inLength) {
    const auto *dataref = static_cast<const Dataref *>(inDataRef);
    if (dataref && dataref->channel != Channel::None && dataref->isWritable
        && (dataref->types & xplmType_Data))
        RecordText(dataref->channel, inValue, inLength);
    WriteArray(inDataRef, inValue, inOffset, inLength, DataType);
}

XPLMDataRef XPLMRegisterDataAccessor(const char *inDataName, XPLMDataTypeID inDataType, int inIsWritable,
                                     XPLMGetDatai_f inReadInt, XPLMSetDatai_f inWriteInt,
                                     XPLMGetDataf_f inReadFloat, XPLMSetDataf_f inWriteFloat,
                                     XPLMGetDatad_f inReadDouble, XPLMSetDatad_f inWriteDouble,
                                     XPLMGetDatavi_f inReadIntArray, XPLMSetDatavi_f inWriteIntArray,
                                     XPLMGetDatavf_f inReadFloatArray, XPLMSetDatavf_f inWriteFloatArray,
                                     XPLMGetDatab_f inReadData, XPLMSetDatab_f inWriteData,
                                     void *inReadRefcon, void *inWriteRefcon) {
    if (!inDataName || *inDataName == '\0') {
        ReportMisuse("XPLMRegisterDataAccessor without a name");
        return nullptr;
    }
    Dataref &dataref = RecordOf(inDataName);
    if (dataref.isGood) {
        ReportMisuse("XPLMRegisterDataAccessor of \"" + std::string(dataref.name)
                     + "\", which exists already");
        return nullptr;
    }
    dataref.types = inDataType;
    dataref.isGood = true;
    dataref.isWritable = inIsWritable != 0;
    dataref.owner = currentRunning.plugin;
    dataref.readInt = inReadInt;
    dataref.writeInt = inWriteInt;
    dataref.readFloat = inReadFloat;
    dataref.writeFloat = inWriteFloat;
    dataref.readDouble = inReadDouble;
    dataref.writeDouble = inWriteDouble;
    dataref.readIntArray = inReadIntArray;
    dataref.writeIntArray = inWriteIntArray;
    dataref.readFloatArray = inReadFloatArray;
    dataref.writeFloatArray = inWriteFloatArray;
    dataref.readBytes = inReadData;
    dataref.writeBytes = inWriteData;
    dataref.readRefcon = inReadRefcon;
    dataref.writeRefcon = inWriteRefcon;
    return &dataref;
}

void XPLMUnregisterDataAccessor(XPLMDataRef inDataRef) {
    auto *dataref = static_cast<Dataref *>(inDataRef);
    if (!dataref || !dataref->isGood || dataref->isStored) return;
    if (dataref->owner != currentRunning.plugin) return; // another plug-in's
    MakeOrphan(*dataref);
}
