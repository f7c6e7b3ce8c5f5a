// Sound as the recognition's model wants it: a frame of 13 cepstral coefficients each 10 ms, noise removed.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "speech/voice/samples.h"

namespace fennic_voice {

const int FramesPerSecond = 100;

using Cepstrum = std::array<float, 13>; // the first is the loudness, as a logarithm

// Each frame is made several times, with the axis of frequencies stretched, for voices whose formants lie
// higher or lower than those that the model knows. The first is as it is.
const std::array<const char *, 3> Stretches = {"1.0", "0.87", "1.15"};
using Frame = std::array<Cepstrum, Stretches.size()>;

class FrontEnd {
public:
    // folder: the model's. Null when it cannot be read.
    static std::unique_ptr<FrontEnd> Load(const std::string &folder);
    ~FrontEnd();
    FrontEnd(const FrontEnd &) = delete;
    FrontEnd &operator=(const FrontEnd &) = delete;

    // Begins an utterance. before: the sound until now, in which nobody spoke; the noise is learnt from it.
    // Where that is less than half a second, what was known of the noise stays.
    void Start(std::span<const int16_t> before);

    // The frames that are whole now.
    std::vector<Frame> Hear(std::span<const int16_t> sound);

private:
    struct Engine;
    std::unique_ptr<Engine> engine;
    explicit FrontEnd(std::unique_ptr<Engine> engine);
};

// Takes the mean of those frames that are loud beside the quietest, in which somebody speaks, into a mean of
// earlier ones, which counts as two seconds of speech. Nothing changes for less than a tenth of a second.
void LearnMean(std::span<const Cepstrum> frames, Cepstrum &mean);

// How many frames have passed since the last of those.
int QuietAtEnd(std::span<const Cepstrum> frames);

// Whether anything is so much louder than the quietest frames that it may be speech.
bool HasSpeech(std::span<const Cepstrum> frames);

// How loud a frame is, in decibels of no particular zero.
double LoudnessOf(const Cepstrum &frame);

} // namespace fennic_voice
