// What the voice takes of a system in its own way, apart from sound, lines and commands. In
// system_<system>.cpp.
#pragma once

#include <string>

namespace fennic_voice {

// First thing: bytes come and go as they are, and writing to somebody who has left is no end.
void PrepareStreams();

// The file of this program; empty if the system does not tell.
std::string ProgramFile();

// An empty file of its own for a recording, whose name ends with ".wav"; empty when none can be made.
std::string MakeTemporaryWav();

// A path as one word of a command's line.
std::string QuotedForCommand(const std::string &path);

// The system speaks with voices of the list, by a program of its own.
extern const bool SystemSpeaks;

// Why a device cannot be opened, in a pilot's words, by the number that the system gives as the reason; empty
// for one that says nothing to him.
std::string DescribeSoundError(long number);

// How many samples a sound device is to give or take at once; 0: as it likes best.
extern const unsigned long FramesPerBuffer;

// While it lives, what the system's sound libraries write to the standard error goes nowhere: they tell there
// of each kind of device that is not there.
class Hush {
public:
    Hush();
    ~Hush();
    Hush(const Hush &) = delete;
    Hush &operator=(const Hush &) = delete;

private:
    int kept = -1;
};

} // namespace fennic_voice
