// Recordings in place of a microphone and a loudspeaker. Nothing waits for a clock.
#include "speech/voice/sound.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {

namespace {

class FileSound : public Sound {
public:
    FileSound(Samples recording, std::string loudspeaker)
        : recording(std::move(recording)), loudspeaker(std::move(loudspeaker)), next(this->recording.size()) {
    }
    ~FileSound() override {
        if (!loudspeaker.empty()) WriteWavFile(loudspeaker, spoken);
    }

    bool Read(Samples &block) override {
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
    static constexpr size_t LongestSound = size_t{SampleRate} * 3600;
    const Samples recording;
    const std::string loudspeaker;
    size_t next; // sample of the recording
    Samples spoken;
};

} // namespace

std::unique_ptr<Sound> OpenSoundFiles(const std::string &microphone, const std::string &loudspeaker,
                                      std::string &error) {
    Samples recording;
    if (!microphone.empty() && !ReadWavFile(microphone, recording, error)) {
        error = microphone + ": " + error;
        return nullptr;
    }
    return std::make_unique<FileSound>(std::move(recording), loudspeaker);
}

} // namespace fennic_voice
