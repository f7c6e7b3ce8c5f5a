// Text to sound, by the engine that is built in or by any command that reads a text and writes a WAV file.
#pragma once

#include <string>

#include "speech/voice/samples.h"

namespace fennic_voice {

// Who speaks, and how fast.
struct VoiceChoice {
    bool isMan = false;
    int rate = 50;       // percent, 10 to 100; at 50 she keeps up with 0.1 s a character and a second
    std::string command; // empty: the built-in engine
};

// True for a voice identifier of the voice list that names a man's voice. Identifiers of other systems'
// voices are known by their names; one that nobody knows is a woman's.
bool isMansVoice(const std::string &identifier);

// How much longer than at a rate of 50 a text takes, 2 to 0.5 as the rate goes from 0 to 100.
double StretchOf(int rate);

// The sound of a text. A command is run by the shell with the text as its input and a WAV file as its output;
// "{rate}" in it becomes the rate, "{stretch}" StretchOf it. False, with the reason in error, when there is
// nothing to say or the command fails.
bool Synthesise(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error);

} // namespace fennic_voice
