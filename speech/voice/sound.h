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
    // here. False when there will be none any more.
    virtual bool Read(Samples &block) = 0;

    // What the loudspeaker is to play meanwhile, as long as the block read before.
    virtual void Write(const Samples &block) = 0;

    // True when time stands still between two blocks, so that work may take as long as it takes.
    virtual bool isWaiting() const = 0;

    // True while the microphone's sound that belongs to a press of the button is not all read yet.
    virtual bool hasMore() const { return false; }

    // False while there is no microphone.
    virtual bool hasMicrophone() const { return true; }

    // The button was pressed: a recording begins.
    virtual void Listen() {}

    // What has changed, one line for the log each: "reco 0 no microphone" and the like.
    virtual std::vector<std::string> TakeNews() { return {}; }
};

// A host on a local socket that sends blocks, each behind its number of samples (32 bits, little-endian),
// and waits for as many samples after each. Null, with the reason in error, when nobody is there.
std::unique_ptr<Sound> ConnectToHost(const std::string &socketPath, std::string &error);

// Recordings in place of devices. The microphone's, if a path is given, is heard from each press of the
// button on; the loudspeaker's becomes a WAV file at the end.
std::unique_ptr<Sound> OpenSoundFiles(const std::string &microphone, const std::string &loudspeaker,
                                      std::string &error);

// The system's devices, by name or a part of it; empty: the system's choice. Those that are missing or
// vanish are looked for again every few seconds.
std::unique_ptr<Sound> OpenDevices(const std::string &microphone, const std::string &loudspeaker);

// Names of the devices there are.
std::vector<std::string> Microphones();
std::vector<std::string> Loudspeakers();

} // namespace fennic_voice
