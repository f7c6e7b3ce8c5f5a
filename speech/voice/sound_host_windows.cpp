// Hosts that give the sound in lockstep do so through local sockets, which not every Windows has.
#include "speech/voice/sound.h"

namespace fennic_voice {

std::unique_ptr<Sound> ConnectToHost(const std::string &, std::string &error) {
    error = "no sound from a host on this system";
    return nullptr;
}

} // namespace fennic_voice
