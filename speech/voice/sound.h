// Where sound comes from and goes to: the system's devices, files, or a host that gives and takes it block
// by block.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "speech/voice/samples.h"

namespace fennic_voice {

const size_t BlockSize = 320; // samples: 20 ms

class Sound {
public:
    virtual ~Sound() = default;

    // The next block of what the microphone hears. Waits for it, and so is the clock of all that is done
    // here; where none comes in time, the block is empty. False when there will be none any more.
    virtual bool Read(Samples &block) = 0;

    // How much the loudspeaker wants to have now, after so much was read.
    virtual size_t Wanted(size_t read) const { return read; }

    // False when it need not be given silence where nothing is said.
    virtual bool isSilenceWanted() const { return true; }

    // What the loudspeaker is to play next.
    virtual void Write(const Samples &block) = 0;

    // True when time stands still between two blocks, so that work may take as long as it takes.
    virtual bool isWaiting() const = 0;

    // True while the microphone's sound that belongs to a press of the button is not all read yet.
    virtual bool hasMore() const { return false; }

    // The button was pressed: a recording begins.
    virtual void Listen() {}

    // Whether nobody speaks or listens, so that devices may be looked for, which interrupts those there are.
    virtual void SetIdle(bool) {}

    // Why there is no microphone or no loudspeaker; empty while there is one.
    virtual std::string MicrophoneTrouble() const { return {}; }
    virtual std::string LoudspeakerTrouble() const { return {}; }
};

// A host on a local socket, on Windows on a named pipe, that sends blocks, each behind its number of samples
// (32 bits, little-endian), and waits for as many samples after each. Null, with the reason in error, when
// nobody is there.
std::unique_ptr<Sound> ConnectToHost(const std::string &place, std::string &error);

// Recordings in place of devices. The microphone's, if a path is given, is heard from each press of the
// button on; the loudspeaker's becomes a WAV file at the end. In real time a block takes its 20 ms, as
// whoever answers while it is heard wants it; otherwise none is waited for.
std::unique_ptr<Sound> OpenSoundFiles(const std::string &microphone, const std::string &loudspeaker,
                                      bool isInRealTime, std::string &error);

// The system's devices, by name or a part of it, capitals or not; empty: the system's choice. Those that are
// missing or vanish are looked for again, after a second and then less and less often, at last once a minute.
std::unique_ptr<Sound> OpenDevices(const std::string &microphone, const std::string &loudspeaker);

// Names of the devices there are.
std::vector<std::string> Microphones();
std::vector<std::string> Loudspeakers();

} // namespace fennic_voice
