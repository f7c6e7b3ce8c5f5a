// Datarefs by name and as numbers or text, for flights and tests, and what the plug-in said to the speech
// server. What is written here comes from the simulator, not from a plug-in: it may change what plug-ins
// only read, and is not reported.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>
#include <limits>

#include "simhost/events.h"
#include "simhost/interface/datarefs.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

// Far more than a flight says; the oldest go first when nobody takes them.
constexpr std::size_t KeptMessages = 100000;

std::deque<SentMessage> &SentMessages() {
    static auto &messages = *new std::deque<SentMessage>;
    return messages;
}

int NearestInt(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(std::round(value), double{std::numeric_limits<int>::min()},
                                       double{std::numeric_limits<int>::max()}));
}

float NearestFloat(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    if (std::isfinite(value)) value = std::clamp(value, -largest, largest);
    return static_cast<float>(value);
}

// Writes through the C interface as the simulator, which may also change what is not writable for plug-ins.
class WriteScope {
public:
    explicit WriteScope(Dataref &target)
        : running(XPLM_PLUGIN_XPLANE, "writing a dataref"), dataref(target), wasWritable(target.isWritable) {
        if (dataref.isStored) dataref.isWritable = true;
    }
    ~WriteScope() {
        if (dataref.isStored) dataref.isWritable = wasWritable;
    }
    WriteScope(const WriteScope &) = delete;
    WriteScope &operator=(const WriteScope &) = delete;

private:
    RunningScope running;
    Dataref &dataref;
    bool wasWritable;
};

} // namespace

double NumberIn(Dataref &dataref, int index) {
    if (index < 0) return 0;
    RunningScope scope(XPLM_PLUGIN_XPLANE, "reading a dataref");
    if (index == 0) {
        if (dataref.types & xplmType_Double) return XPLMGetDatad(&dataref);
        if (dataref.types & xplmType_Float) return static_cast<double>(XPLMGetDataf(&dataref));
        if (dataref.types & xplmType_Int) return XPLMGetDatai(&dataref);
    }
    if (dataref.types & xplmType_FloatArray) {
        float element = 0;
        return XPLMGetDatavf(&dataref, &element, index, 1) == 1 ? static_cast<double>(element) : 0;
    }
    if (dataref.types & xplmType_IntArray) {
        int element = 0;
        return XPLMGetDatavi(&dataref, &element, index, 1) == 1 ? element : 0;
    }
    if (dataref.types & xplmType_Data) {
        unsigned char element = 0;
        return XPLMGetDatab(&dataref, &element, index, 1) == 1 ? element : 0;
    }
    return 0;
}

double GetNumber(const std::string &name, int index) {
    Dataref *dataref = FindRecord(name);
    return dataref ? NumberIn(*dataref, index) : 0;
}

bool SetNumber(const std::string &name, double value, int index) {
    Dataref *dataref = FindRecord(name);
    if (!dataref || index < 0) return false;
    WriteScope scope(*dataref);
    if (!dataref->isWritable) return false;
    if (index == 0) {
        if (dataref->types & xplmType_Double) return XPLMSetDatad(dataref, value), true;
        if (dataref->types & xplmType_Float) return XPLMSetDataf(dataref, NearestFloat(value)), true;
        if (dataref->types & xplmType_Int) return XPLMSetDatai(dataref, NearestInt(value)), true;
    }
    if (dataref->types & xplmType_FloatArray) {
        if (index >= XPLMGetDatavf(dataref, nullptr, 0, 0)) return false;
        float element = NearestFloat(value);
        XPLMSetDatavf(dataref, &element, index, 1);
        return true;
    }
    if (dataref->types & xplmType_IntArray) {
        if (index >= XPLMGetDatavi(dataref, nullptr, 0, 0)) return false;
        int element = NearestInt(value);
        XPLMSetDatavi(dataref, &element, index, 1);
        return true;
    }
    if (dataref->types & xplmType_Data) {
        if (index >= XPLMGetDatab(dataref, nullptr, 0, 0)) return false;
        auto element = static_cast<unsigned char>(std::clamp(NearestInt(value), 0, 255));
        XPLMSetDatab(dataref, &element, index, 1);
        return true;
    }
    return false;
}

std::string GetText(const std::string &name) {
    Dataref *dataref = FindRecord(name);
    if (!dataref) return {};
    RunningScope scope(XPLM_PLUGIN_XPLANE, "reading a dataref");
    const int size = XPLMGetDatab(dataref, nullptr, 0, 0);
    if (size <= 0) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    const int count = XPLMGetDatab(dataref, text.data(), 0, size);
    text.resize(static_cast<std::size_t>(std::clamp(count, 0, size)));
    text.resize(std::strlen(text.c_str()));
    return text;
}

bool SetText(const std::string &name, const std::string &value) {
    Dataref *dataref = FindRecord(name);
    if (!dataref || !(dataref->types & xplmType_Data)) return false;
    WriteScope scope(*dataref);
    if (!dataref->isWritable) return false;
    std::string bytes = value + '\0';
    if (dataref->isStored) {
        if (!dataref->isShared && bytes.size() > dataref->bytes.size()) return false;
        std::fill(dataref->bytes.begin(), dataref->bytes.end(), 0);
    }
    const Channel channel = dataref->channel;
    dataref->channel = Channel::None; // the plug-in did not say this
    XPLMSetDatab(dataref, bytes.data(), 0, static_cast<int>(bytes.size()));
    dataref->channel = channel;
    return true;
}

void RecordText(Channel channel, const void *text, int length) {
    if (!text || length <= 0) return;
    const char *begin = static_cast<const char *>(text);
    std::string message(begin, std::find(begin, begin + length, '\0'));
    if (channel == Channel::Log) return RecordLogText(message);
    if (SentMessages().size() >= KeptMessages) SentMessages().pop_front();
    SentMessages().push_back({FlightTimeSeconds(), message});
    if (hasEventListener()) ReportEvent({EventKind::SpeechMessage, std::move(message), {}});
}

std::vector<SentMessage> TakeSentMessages() {
    std::vector<SentMessage> taken(SentMessages().begin(), SentMessages().end());
    SentMessages().clear();
    return taken;
}

void ResetSentMessages() {
    SentMessages().clear();
}

} // namespace simhost
