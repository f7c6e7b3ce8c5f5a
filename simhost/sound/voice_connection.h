// The connection between the voice's process and its host. The bodies are in voice_connection_posix.cpp,
// where it is a local socket, and voice_connection_windows.cpp, where it is a named pipe.
#pragma once

#include <cstddef>
#include <string>

namespace simhost {

// Waits for processes from now on, at a place that the environment variable FENNIC_VOICE_HOST names. They may
// take limitSeconds for what is sent or received. False with the reason in error.
bool ListenForVoice(double limitSeconds, std::string &error);
bool isListeningForVoice();
void StopListening(); // hangs up, too

// Takes what has come meanwhile, and keeps the connection from the process; others are closed. Waits for a
// moment where nobody has. True when there is a connection.
bool AcceptVoice(int process);
bool isVoiceConnected();
void HangUp();

enum class Passed { Whole, Late, Gone };
Passed SendToVoice(const void *bytes, std::size_t size);
Passed ReceiveFromVoice(void *bytes, std::size_t size);

// Whether a process of ours has ended. It is not seen off, whoever started it can do that.
bool hasEnded(int process);

} // namespace simhost
