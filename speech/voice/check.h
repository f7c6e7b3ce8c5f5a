// What works and what does not, told to a pilot: devices, voices, words, the microphone's level, a phrase.
#pragma once

#include <string>

#include "speech/voice/samples.h"
#include "speech/voice/settings.h"
#include "speech/voice/sound.h"

namespace fennic_voice {

// How loud a recording is, in dB below full scale, by root mean squares of its tenths of a second.
struct Levels {
    double speech = -100.0, background = -100.0; // louder than 90 % and than 10 % of them
    double peak = -100.0;                        // of a single sample
    int clipped = 0;                             // samples at the limit
};
Levels MeasureLevels(const Samples &sound);

// What a pilot should do about it; empty when the levels are good.
std::string AdviceOn(const Levels &levels);

// Tries everything once and prints what comes out. context: a file of phrases; no name: a few of our own. The
// sound is that of the settings; ofDevices when these are devices, and somebody is there to speak. The
// program's status: 0 when all works.
int CheckAll(Sound &sound, bool ofDevices, const Settings &settings, const std::string &context);

} // namespace fennic_voice
