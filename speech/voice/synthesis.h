// Text to sound, by the engine that is built in or by any command that reads a text and writes a WAV file.
#pragma once

#include <string>
#include <string_view>

#include "speech/voice/samples.h"
#include "speech/voice/voices.h"

namespace fennic_voice {

// How much longer than at a rate of 50 a text takes, 2 to 0.5 as the rate goes from 0 to 100.
double StretchOf(int rate);

// Letters and signs, of a text in UTF-8.
size_t CountCharacters(std::string_view text);

// The time that a text of so many characters is given, in seconds: the link's 0.1 s a character and 1 s at a
// rate of 50, more or less at others.
double SecondsGiven(size_t characters, int rate);

// Makes the built-in voices ready. Before any other thread makes sound or asks for pronunciations: the engine
// sets up tables that all share.
void PrepareVoices();

// The sound of a text, without the silence around it. What the built-in voices say takes no longer than the
// seconds given to it, if that can be had by speaking a third faster; 0: SecondsGiven of the text.
//
// A command is run by the shell with the text as its input. It writes a WAV file to its output, or to the
// file whose name it finds in place of "{wav}"; "{rate}" becomes the rate, "{stretch}" StretchOf it,
// "{words}" the words per minute that this is. Where it fails the built-in voice speaks.
//
// False when nothing can be said. The reason, also that of a command that failed, is in error.
bool Synthesise(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error,
                double given = 0.0);

} // namespace fennic_voice
