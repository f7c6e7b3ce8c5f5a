// Who speaks: the voices of the link's list, and what speaks for them on this system.
#pragma once

#include <string>

#include "speech/voice/settings.h"

namespace fennic_voice {

enum class BuiltIn { Woman, Man, Scotsman };

// Who speaks, and how fast.
struct VoiceChoice {
    BuiltIn builtIn = BuiltIn::Woman; // speaks where there is no command, or it fails
    int rate = 50;       // percent, 10 to 100; at 50 she keeps up with 0.1 s a character and a second
    std::string command; // a program that speaks, see Synthesise; empty: none
};

// The built-in voice that comes nearest to a voice identifier of the voice list, by sex and accent.
// Identifiers of other systems' voices are known by their names; one that nobody knows is a woman's.
BuiltIn NearestBuiltIn(const std::string &identifier);

// What speaks for a voice identifier: the command that the settings name for it; else, on a Mac, the system's
// voice of that name; else the settings' command for a woman or a man; else the built-in voice.
VoiceChoice ChooseVoice(const std::string &identifier, const Settings &settings, bool isMac);

} // namespace fennic_voice
