// WAV files: recordings in, what was said out.
#pragma once

#include <string>

#include "speech/voice/samples.h"

namespace fennic_voice {

// Reads a WAV file of whole-number or floating samples, any rate and number of channels, as our samples
// (the channels' mean). False, with the reason in error, when it is none, or longer than an hour.
bool ReadWavFile(const std::string &path, Samples &samples, std::string &error);

// The same from a WAV file's bytes.
bool ReadWav(const std::string &bytes, Samples &samples, std::string &error);

// Writes our samples. False when that fails.
bool WriteWavFile(const std::string &path, const Samples &samples);

} // namespace fennic_voice
