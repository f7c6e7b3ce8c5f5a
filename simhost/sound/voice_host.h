// The voice's process hears and speaks through this in place of the machine's devices: each frame it is given
// what the microphone hears in that time, and the frame is not over before it has given what the loudspeaker
// plays. So the simulator's time stands while it works, and how busy the machine is changes nothing.
//
// It finds us by the environment variable FENNIC_VOICE_HOST, the name of a socket, or on Windows of a pipe; a
// block goes each way, the microphone's behind its number of samples (32 bits, in this machine's order).
#pragma once

#include <string>

#include "simhost/sound/sound_block.h"

namespace simhost {

// Waits for processes from now on, at a socket in the current folder, which must be that of the process when
// it starts. limitSeconds is how long, in real time, one may take to come or to answer before it is left
// alone. False with the reason in error.
bool OpenVoiceHost(double limitSeconds, std::string &error);
void CloseVoiceHost();

// Once a frame: the process that is to speak now, 0 for none. Waits until it has come, or has ended.
void AwaitVoice(int process);

bool isVoiceConnected(); // in voice_connection_<system>.cpp

// Gives it a block and waits for its answer; silence while nobody is there.
void ExchangeSound(const SoundBlock &microphone, SoundBlock &loudspeaker);

// The process for what has gone wrong; empty when nothing has since the last call.
std::string TakeVoiceProblem();

} // namespace simhost
