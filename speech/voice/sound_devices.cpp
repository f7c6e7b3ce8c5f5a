// The system's devices through PortAudio: the one library of its kind that Debian keeps for all three
// systems, with sound of our own rate wherever the system converts. Its callbacks run in threads of its own;
// all they do is to fill and empty two rings.
//
// The clock of this program is the microphone. Where there is none, it is the system's.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#ifdef __linux__
#include <dlfcn.h>
#endif
#include <portaudio.h>

#include "speech/voice/sound.h"

namespace fennic_voice {

namespace {

using Clock = std::chrono::steady_clock;
const std::chrono::seconds LookAgainAfter{3};
const std::chrono::milliseconds LongestSilence{500}; // a microphone that gives nothing for so long is gone
const size_t RingSize = size_t{1} << 15;             // samples, two seconds; a power of two

// One writer, one reader, never waiting.
class Ring {
public:
    void Put(const int16_t *samples, size_t count) {
        const size_t begin = written.load(std::memory_order_relaxed),
                     free = RingSize - (begin - taken.load(std::memory_order_acquire));
        count = std::min(count, free);
        for (size_t i = 0; i < count; i++) ring[(begin + i) % RingSize] = samples[i];
        written.store(begin + count, std::memory_order_release);
    }
    size_t Take(int16_t *samples, size_t count) {
        const size_t begin = taken.load(std::memory_order_relaxed);
        count = std::min(count, written.load(std::memory_order_acquire) - begin);
        for (size_t i = 0; i < count; i++) samples[i] = ring[(begin + i) % RingSize];
        taken.store(begin + count, std::memory_order_release);
        return count;
    }
    size_t Size() const {
        return written.load(std::memory_order_acquire) - taken.load(std::memory_order_acquire);
    }

private:
    int16_t ring[RingSize] = {};
    std::atomic<size_t> written{0}, taken{0};
};

int TakeSound(const void *input, void *, unsigned long count, const PaStreamCallbackTimeInfo *,
              PaStreamCallbackFlags, void *ring) {
    static_cast<Ring *>(ring)->Put(static_cast<const int16_t *>(input), count);
    return paContinue;
}

int GiveSound(const void *, void *output, unsigned long count, const PaStreamCallbackTimeInfo *,
              PaStreamCallbackFlags, void *ring) {
    auto *const samples = static_cast<int16_t *>(output);
    const size_t taken = static_cast<Ring *>(ring)->Take(samples, count);
    std::memset(samples + taken, 0, (count - taken) * sizeof(int16_t));
    return paContinue;
}

int ChannelsOf(const PaDeviceInfo &device, bool isInput) {
    return isInput ? device.maxInputChannels : device.maxOutputChannels;
}

#ifdef __linux__
void Ignore(const char *, int, const char *, int, const char *, ...) {}
#endif

// On Linux the system's library writes a line to the standard error for each kind of device that is not
// there.
void SilenceSystem() {
#ifdef __linux__
    void *const library = dlopen("libasound.so.2", RTLD_NOW);
    void *const function = library ? dlsym(library, "snd_lib_error_set_handler") : nullptr;
    if (function) reinterpret_cast<int (*)(decltype(&Ignore))>(function)(Ignore);
#endif
}

bool StartLibrary() {
    SilenceSystem();
    return Pa_Initialize() == paNoError;
}

PaDeviceIndex FindDevice(const std::string &name, bool isInput) {
    if (name.empty()) return isInput ? Pa_GetDefaultInputDevice() : Pa_GetDefaultOutputDevice();
    for (PaDeviceIndex i = 0; i < Pa_GetDeviceCount(); i++) {
        const PaDeviceInfo *const device = Pa_GetDeviceInfo(i);
        if (ChannelsOf(*device, isInput) > 0 && std::strstr(device->name, name.c_str())) return i;
    }
    return paNoDevice;
}

std::vector<std::string> DeviceNames(bool isInput) {
    std::vector<std::string> names;
    if (!StartLibrary()) return names;
    for (PaDeviceIndex i = 0; i < Pa_GetDeviceCount(); i++)
        if (ChannelsOf(*Pa_GetDeviceInfo(i), isInput) > 0) names.emplace_back(Pa_GetDeviceInfo(i)->name);
    Pa_Terminate();
    return names;
}

// One direction: a device, its stream and the ring between its thread and ours.
struct Line {
    Line(bool isInput, std::string wanted, const char *missing)
        : isInput(isInput), wanted(std::move(wanted)), missing(missing) {}

    const bool isInput;
    const std::string wanted;
    const char *const missing; // the news when there is none
    Ring ring;
    PaStream *stream = nullptr;
    bool wasThere = true; // so that the first failure is news

    bool Open(std::string &reason);
    void Close() {
        if (stream) Pa_CloseStream(stream);
        stream = nullptr;
    }
    bool isActive() const { return stream && Pa_IsStreamActive(stream) == 1; }
};

bool Line::Open(std::string &reason) {
    PaStreamParameters parameters = {};
    parameters.device = FindDevice(wanted, isInput);
    if (parameters.device == paNoDevice) {
        reason = wanted.empty() ? "there is none" : "there is none named " + wanted;
        return false;
    }
    parameters.channelCount = 1;
    parameters.sampleFormat = paInt16;
    const PaDeviceInfo *const device = Pa_GetDeviceInfo(parameters.device);
    parameters.suggestedLatency = isInput ? device->defaultLowInputLatency : device->defaultLowOutputLatency;
    PaError result = Pa_OpenStream(&stream, isInput ? &parameters : nullptr, isInput ? nullptr : &parameters,
                                   SampleRate, BlockSize, paNoFlag, isInput ? TakeSound : GiveSound, &ring);
    if (result == paNoError) result = Pa_StartStream(stream);
    if (result == paNoError) return true;
    reason = std::string(device->name) + ": " + Pa_GetErrorText(result);
    Close();
    return false;
}

class DeviceSound : public Sound {
public:
    DeviceSound(const std::string &microphone, const std::string &loudspeaker)
        : input(true, microphone, "reco 0 no microphone: "), output{false, loudspeaker,
                                                                    "speech 0 no loudspeaker: "} {
        Open();
    }
    ~DeviceSound() override {
        input.Close();
        output.Close();
        if (isInitialised) Pa_Terminate();
    }

    bool Read(Samples &block) override;
    void Write(const Samples &block) override {
        if (output.ring.Size() < RingSize / 8) output.ring.Put(block.data(), block.size());
    }
    bool isWaiting() const override { return false; }
    bool hasMicrophone() const override { return input.isActive(); }
    std::vector<std::string> TakeNews() override { return std::exchange(news, {}); }

private:
    Line input, output;
    bool isInitialised = false;
    Clock::time_point lookAgain, nextBlock = Clock::now();
    std::vector<std::string> news;

    void Open();
    void Tell(Line &line, bool isThere, const std::string &reason);
    bool isWhole() const { return input.isActive() && output.isActive(); }
};

void DeviceSound::Tell(Line &line, bool isThere, const std::string &reason) {
    if (isThere == line.wasThere) return;
    line.wasThere = isThere;
    if (!isThere)
        news.push_back(line.missing + reason);
    else
        news.emplace_back(line.isInput ? "reco 1 the microphone is there again"
                                       : "speech 1 the loudspeaker is there again");
}

// The library lists the devices once, when it starts: to see new ones it is started anew.
void DeviceSound::Open() {
    input.Close();
    output.Close();
    if (isInitialised) Pa_Terminate();
    isInitialised = StartLibrary();
    for (Line *line : {&input, &output}) {
        std::string reason = "the system gives no sound";
        const bool isThere = isInitialised && line->Open(reason);
        Tell(*line, isThere, reason);
    }
    lookAgain = Clock::now() + LookAgainAfter;
}

bool DeviceSound::Read(Samples &block) {
    block.assign(BlockSize, 0);
    if (!isWhole() && Clock::now() > lookAgain) Open();
    const Clock::time_point end = Clock::now() + LongestSilence;
    while (input.isActive() && input.ring.Size() < BlockSize && Clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    if (input.ring.Size() >= BlockSize) {
        input.ring.Take(block.data(), BlockSize);
        nextBlock = Clock::now();
        return true;
    }
    if (input.isActive()) { // it says that it runs, and gives nothing
        input.Close();
        Tell(input, false, "it fell silent");
    }
    nextBlock += std::chrono::milliseconds(1000 * BlockSize / SampleRate);
    std::this_thread::sleep_until(nextBlock);
    return true;
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
