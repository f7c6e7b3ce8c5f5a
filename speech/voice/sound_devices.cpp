// The system's devices through PortAudio: the one library of its kind that Debian keeps for all three
// systems. Its callbacks run in threads of its own; all they do is to fill and empty two rings.
//
// The clock of this program is the microphone. Where none gives sound, it is the system's.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#include <pa_debugprint.h>
#include <portaudio.h>

#include "speech/voice/resampler.h"
#include "speech/voice/settings.h"
#include "speech/voice/sound.h"
#include "speech/voice/system.h"

namespace fennic_voice {

namespace {

using Clock = std::chrono::steady_clock;
const std::chrono::seconds ShortestDelay{1}, LongestDelay{60}; // before a device is opened again
const std::chrono::seconds HealthyAfter{10};                   // of work that end the growing of the delay
const std::chrono::seconds LongestSilence{4}; // a device that moves nothing for so long is gone
const std::chrono::milliseconds BlockTime{1000 * BlockSize / SampleRate}, LongestWait{3 * BlockTime};
const size_t RingSize = size_t{1} << 16; // samples, more than a second at 48 kHz; a power of two
const double SecondsAhead = 0.08;        // of sound that the loudspeaker is given

// One writer, one reader, never waiting.
class Ring {
public:
    // Put and Take move what there is room or sound for; the number of samples that were taken.
    void Put(const int16_t *samples, size_t count, size_t stride = 1) {
        const size_t begin = written.load(std::memory_order_relaxed),
                     free = RingSize - (begin - taken.load(std::memory_order_acquire));
        count = std::min(count, free);
        for (size_t i = 0; i < count; i++) ring[(begin + i) % RingSize] = samples[i * stride];
        written.store(begin + count, std::memory_order_release);
    }
    size_t Take(int16_t *samples, size_t count, size_t stride = 1) {
        const size_t begin = taken.load(std::memory_order_relaxed);
        count = std::min(count, written.load(std::memory_order_acquire) - begin);
        for (size_t i = 0; i < count; i++)
            for (size_t channel = 0; channel < stride; channel++)
                samples[i * stride + channel] = ring[(begin + i) % RingSize];
        taken.store(begin + count, std::memory_order_release);
        return count;
    }
    size_t Size() const {
        return written.load(std::memory_order_acquire) - taken.load(std::memory_order_acquire);
    }
    void Clear() { taken = written.load(); } // while neither end is in use

private:
    int16_t ring[RingSize] = {};
    std::atomic<size_t> written{0}, taken{0};
};

// What a callback has to know.
struct Ends {
    Ring ring;
    size_t channels = 1;
    std::atomic<size_t> moved{0}; // samples that the device has given or taken
};

// Of several channels the first is heard.
int TakeSound(const void *input, void *, unsigned long count, const PaStreamCallbackTimeInfo *,
              PaStreamCallbackFlags, void *data) {
    Ends &ends = *static_cast<Ends *>(data);
    if (input) ends.ring.Put(static_cast<const int16_t *>(input), count, ends.channels);
    ends.moved += count;
    return paContinue;
}

int GiveSound(const void *, void *output, unsigned long count, const PaStreamCallbackTimeInfo *,
              PaStreamCallbackFlags, void *data) {
    Ends &ends = *static_cast<Ends *>(data);
    auto *const samples = static_cast<int16_t *>(output);
    const size_t taken = ends.ring.Take(samples, count, ends.channels);
    std::memset(samples + taken * ends.channels, 0, (count - taken) * ends.channels * sizeof(int16_t));
    ends.moved += count;
    return paContinue;
}

void IgnoreLine(const char *) {} // PortAudio tells of each call that failed: what follows from it, we tell

PaError StartLibrary() {
    PaUtil_SetDebugPrintFunction(IgnoreLine);
    return Pa_Initialize();
}

int ChannelsOf(const PaDeviceInfo &device, bool isInput) {
    return isInput ? device.maxInputChannels : device.maxOutputChannels;
}

// In a pilot's words where the library has its own.
const char *TextOfError(PaError error) {
    if (error == paDeviceUnavailable) return "it is in use by another program, or out of order";
    if (error == paBadIODeviceCombination) return "it cannot be opened"; // the sound server does not answer
    return Pa_GetErrorText(error);
}

PaDeviceIndex FindDevice(const std::string &name, bool isInput) {
    if (name.empty()) return isInput ? Pa_GetDefaultInputDevice() : Pa_GetDefaultOutputDevice();
    for (PaDeviceIndex i = 0; i < Pa_GetDeviceCount(); i++) {
        const PaDeviceInfo *const device = Pa_GetDeviceInfo(i);
        if (ChannelsOf(*device, isInput) > 0 && Lower(device->name).find(Lower(name)) != std::string::npos)
            return i;
    }
    return paNoDevice;
}

std::vector<std::string> NamesOfOpened(bool isInput) {
    std::vector<std::string> names;
    for (PaDeviceIndex i = 0; i < Pa_GetDeviceCount(); i++)
        if (ChannelsOf(*Pa_GetDeviceInfo(i), isInput) > 0) names.emplace_back(Pa_GetDeviceInfo(i)->name);
    return names;
}

std::vector<std::string> DeviceNames(bool isInput) {
    const Hush hush;
    if (StartLibrary() != paNoError) return {};
    std::vector<std::string> names = NamesOfOpened(isInput);
    Pa_Terminate();
    return names;
}

// One direction: a device, its stream and the ring between its thread and ours.
class Line {
public:
    Line(bool isInput, std::string wanted) : isInput(isInput), wanted(std::move(wanted)) {}

    // Both keep the reason of a failure.
    bool Open();
    void Close();

    // Closes a device that is gone or has fallen silent.
    void Watch();

    bool isOpen() const { return stream != nullptr; }
    bool isDue() const { return !stream && Clock::now() >= openAt; }
    void Fail(const std::string &reason); // to be tried again later
    const std::string &Trouble() const { return trouble; }

    // Our samples, from the microphone or for the loudspeaker.
    void TakeAll(Samples &samples);
    void Give(const Samples &samples);
    void Drain() const; // waits until what was given is heard
    double SecondsWaiting() const { return static_cast<double>(ends.ring.Size()) / rate; }

private:
    const bool isInput;
    const std::string wanted;
    Ends ends;
    PaStream *stream = nullptr;
    double rate = SampleRate; // the device's
    Resampler resampler{SampleRate, SampleRate};
    std::string trouble;
    Clock::time_point openAt{}, openedAt{}, movedAt{};
    std::chrono::seconds delay = ShortestDelay;
    size_t lastMoved = 0;

    PaError OpenAs(PaDeviceIndex index, double deviceRate, int channels);
};

PaError Line::OpenAs(PaDeviceIndex index, double deviceRate, int channels) {
    const PaDeviceInfo &device = *Pa_GetDeviceInfo(index);
    PaStreamParameters parameters = {};
    parameters.device = index;
    parameters.channelCount = channels;
    parameters.sampleFormat = paInt16;
    parameters.suggestedLatency = isInput ? device.defaultLowInputLatency : device.defaultLowOutputLatency;
    ends.channels = static_cast<size_t>(channels);
    ends.ring.Clear();
    PaError result =
        Pa_OpenStream(&stream, isInput ? &parameters : nullptr, isInput ? nullptr : &parameters, deviceRate,
                      FramesPerBuffer, paNoFlag, isInput ? TakeSound : GiveSound, &ends);
    if (result == paNoError) {
        result = Pa_StartStream(stream);
        if (result != paNoError) Pa_CloseStream(stream);
    }
    if (result != paNoError) {
        stream = nullptr;
        return result;
    }
    rate = deviceRate;
    const auto whole = static_cast<unsigned>(deviceRate);
    resampler = isInput ? Resampler(whole, SampleRate) : Resampler(SampleRate, whole);
    return result;
}

// Most systems convert; a device that is named itself may have but one rate, and two channels.
bool Line::Open() {
    const PaDeviceIndex index = FindDevice(wanted, isInput);
    if (index == paNoDevice) {
        // Where another program has a device to itself, the library does not list it.
        std::string reason = "there is none, or another program uses it";
        if (!wanted.empty()) {
            reason = "there is none named \"" + wanted + "\", but";
            for (const std::string &name : NamesOfOpened(isInput)) reason += " \"" + name + "\"";
            if (reason.back() == 't') reason += " none at all";
        }
        Fail(reason);
        return false;
    }
    const PaDeviceInfo &device = *Pa_GetDeviceInfo(index);
    const double rates[] = {SampleRate, device.defaultSampleRate, 48000.0, 44100.0};
    PaError result = paNoError;
    for (const double deviceRate : rates)
        for (int channels = 1; channels <= std::min(2, ChannelsOf(device, isInput)); channels++) {
            result = OpenAs(index, deviceRate, channels);
            if (result == paNoError) {
                trouble.clear();
                openedAt = movedAt = Clock::now();
                lastMoved = ends.moved;
                return true;
            }
            if (result == paDeviceUnavailable) break; // in use: no other rate helps
        }
    const PaHostErrorInfo &host = *Pa_GetLastHostErrorInfo();
    std::string reason = DescribeSoundError(host.errorCode);
    if (reason.empty()) reason = TextOfError(result);
    if (result == paUnanticipatedHostError && host.errorText) reason += std::string(": ") + host.errorText;
    Fail(std::string(device.name) + ": " + reason);
    return false;
}

void Line::Close() {
    const Hush hush;
    if (stream) Pa_AbortStream(stream);
    if (stream) Pa_CloseStream(stream);
    stream = nullptr;
}

void Line::Fail(const std::string &reason) {
    if (openedAt != Clock::time_point() && Clock::now() - openedAt > HealthyAfter) delay = ShortestDelay;
    openedAt = {};
    trouble = reason;
    openAt = Clock::now() + delay;
    delay = std::min(delay * 2, LongestDelay);
}

void Line::Watch() {
    if (!stream) return;
    const Clock::time_point now = Clock::now();
    const size_t moved = ends.moved;
    if (moved != lastMoved) movedAt = now;
    lastMoved = moved;
    const bool isActive = Pa_IsStreamActive(stream) == 1;
    if (isActive && now - movedAt < LongestSilence) return;
    Close();
    Fail(isActive ? "it has stopped to work" : "it is gone");
}

void Line::TakeAll(Samples &samples) {
    int16_t part[1024];
    while (const size_t count = ends.ring.Take(part, std::size(part)))
        resampler.Add(std::span(part).first(count), samples);
}

void Line::Give(const Samples &samples) {
    Samples converted;
    resampler.Add(samples, converted);
    ends.ring.Put(converted.data(), converted.size());
}

void Line::Drain() const {
    if (!stream || SecondsWaiting() == 0.0) return;
    const double seconds = std::min(SecondsWaiting() + Pa_GetStreamInfo(stream)->outputLatency, 0.4);
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

class DeviceSound : public Sound {
public:
    DeviceSound(const std::string &microphone, const std::string &loudspeaker)
        : input(true, microphone), output(false, loudspeaker) {
        StartAnew();
    }
    ~DeviceSound() override {
        output.Drain();
        input.Close();
        output.Close();
        const Hush hush;
        if (hasLibrary) Pa_Terminate();
    }

    bool Read(Samples &block) override;
    size_t Wanted(size_t read) const override;
    void Write(const Samples &block) override {
        if (output.isOpen()) output.Give(block);
    }
    bool isSilenceWanted() const override { return false; }
    bool isWaiting() const override { return false; }
    void SetIdle(bool value) override { isIdle = value; }
    std::string MicrophoneTrouble() const override {
        return input.isOpen() ? "" : "no microphone: " + input.Trouble();
    }
    std::string LoudspeakerTrouble() const override {
        return output.isOpen() ? "" : "no loudspeaker: " + output.Trouble();
    }

private:
    Line input, output;
    bool hasLibrary = false, isIdle = true;
    Clock::time_point nextBlock = Clock::now();
    Samples heard; // by the microphone, not read yet

    void StartAnew();
    void LookAfterDevices();
};

// The library lists the devices once, when it starts: to see new ones it is started anew.
void DeviceSound::StartAnew() {
    const bool wereOpen[] = {input.isOpen(), output.isOpen()};
    input.Close();
    output.Close();
    const Hush hush;
    if (hasLibrary) Pa_Terminate();
    hasLibrary = StartLibrary() == paNoError;
    Line *const lines[] = {&input, &output};
    for (size_t i = 0; i < 2; i++) {
        if (!wereOpen[i] && !lines[i]->isDue()) continue;
        if (hasLibrary)
            lines[i]->Open();
        else
            lines[i]->Fail("the system gives no sound");
    }
}

void DeviceSound::LookAfterDevices() {
    input.Watch();
    output.Watch();
    if (!isIdle) { // a device that the system still knows can be opened without disturbing the other
        const Hush hush;
        for (Line *line : {&input, &output})
            if (hasLibrary && line->isDue()) line->Open();
    } else if (input.isDue() || output.isDue()) {
        StartAnew();
    }
}

bool DeviceSound::Read(Samples &block) {
    LookAfterDevices();
    const Clock::time_point latest = std::max(nextBlock, Clock::now() - LongestWait) + LongestWait;
    block.clear();
    while (input.isOpen()) {
        input.TakeAll(heard);
        if (heard.size() >= BlockSize) {
            block.assign(heard.begin(), heard.begin() + BlockSize);
            heard.erase(heard.begin(), heard.begin() + BlockSize);
            nextBlock = Clock::now();
            return true;
        }
        if (Clock::now() >= latest) { // it may be late, and gives more at once then
            nextBlock = Clock::now();
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    block.assign(BlockSize, 0);
    nextBlock = std::max(nextBlock + BlockTime, Clock::now() - LongestWait);
    std::this_thread::sleep_until(nextBlock);
    return true;
}

size_t DeviceSound::Wanted(size_t read) const {
    if (!output.isOpen()) return input.isOpen() && read == 0 ? BlockSize : read;
    const double missing = SecondsAhead - output.SecondsWaiting();
    return missing > 0.0 ? static_cast<size_t>(missing * SampleRate) : 0;
}

} // namespace

std::unique_ptr<Sound> OpenDevices(const std::string &microphone, const std::string &loudspeaker) {
    return std::make_unique<DeviceSound>(microphone, loudspeaker);
}

std::vector<std::string> Microphones() {
    return DeviceNames(true);
}

std::vector<std::string> Loudspeakers() {
    return DeviceNames(false);
}

} // namespace fennic_voice
