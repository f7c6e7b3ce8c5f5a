// Recordings in place of a microphone and a loudspeaker.
#include <chrono>
#include <optional>
#include <thread>

#include "speech/voice/sound.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {

namespace {

class FileSound : public Sound {
public:
    FileSound(Samples recording, std::string loudspeaker, bool isInRealTime)
        : recording(std::move(recording)), loudspeaker(std::move(loudspeaker)), isInRealTime(isInRealTime),
          next(this->recording.size()) {}
    ~FileSound() override {
        if (!loudspeaker.empty()) WriteWavFile(loudspeaker, spoken);
    }

    bool Read(Samples &block) override {
        if (isInRealTime) WaitForBlock();
        block.assign(BlockSize, 0);
        for (size_t i = 0; i < block.size() && next < recording.size(); i++) block[i] = recording[next++];
        return true;
    }
    void Write(const Samples &block) override {
        if (!loudspeaker.empty() && spoken.size() < LongestSound)
            spoken.insert(spoken.end(), block.begin(), block.end());
    }
    bool isWaiting() const override { return true; }
    bool hasMore() const override { return next < recording.size(); }
    void Listen() override { next = 0; }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr size_t LongestSound = size_t{SampleRate} * 3600;
    const Samples recording;
    const std::string loudspeaker;
    const bool isInRealTime;
    size_t next; // sample of the recording
    Samples spoken;
    std::optional<Clock::time_point> due; // of the next block

    void WaitForBlock() {
        due = due.value_or(Clock::now()) + std::chrono::microseconds(1000000 * BlockSize / SampleRate);
        std::this_thread::sleep_until(*due);
    }
};

} // namespace

std::unique_ptr<Sound> OpenSoundFiles(const std::string &microphone, const std::string &loudspeaker,
                                      bool isInRealTime, std::string &error) {
    Samples recording;
    if (!microphone.empty() && !ReadWavFile(microphone, recording, error)) {
        error = microphone + ": " + error;
        return nullptr;
    }
    return std::make_unique<FileSound>(std::move(recording), loudspeaker, isInRealTime);
}

} // namespace fennic_voice
