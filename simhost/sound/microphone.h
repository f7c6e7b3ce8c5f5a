// What the cockpit's microphone hears: texts that the pilot says, one behind the other, recordings, and the
// noise around them.
#pragma once

#include <string>

#include "simhost/sound/sound_block.h"

namespace simhost {

struct PilotsVoice {
    bool isWoman = false;
    int rate = 50; // of speech, 10 to 100
};

// The text is heard behind those that wait: spoken by program, a "fennic-voice", with its files in folder;
// or, when it names one that ends in ".wav", as it was recorded. seconds is how long it takes. False with the
// reason in error.
bool SpeakIntoMicrophone(const std::string &text, const PilotsVoice &voice, const std::string &program,
                         const std::string &folder, double &seconds, std::string &error);

// Pink noise from now on, so many dB below the pilot's voice, both as root mean squares.
void SetMicrophoneNoise(double decibelsBelow);
inline constexpr double QuietRoom = 50; // dB, at the start

// The next 20 ms. begun is the text that begins to be heard in them; empty for none.
SoundBlock HearMicrophone(std::string &begun);
bool isPilotSpeaking();

// Nothing waits, and it is quiet.
void ResetMicrophone();

} // namespace simhost
