// What was said, as a WAV file of two channels: the pilot's microphone on the left, her loudspeaker on the
// right. It grows while the flight flies.
#pragma once

#include <string>

#include "simhost/sound/sound_block.h"

namespace simhost {

// Begins a recording, in place of one that runs. False with the reason in error.
bool BeginRecording(const std::string &path, std::string &error);
bool isRecording();
void Record(const SoundBlock &pilot, const SoundBlock &firstOfficer);

// Finishes the file. False, with the reason in error, when it could not be written whole.
bool EndRecording(std::string &error);

} // namespace simhost
