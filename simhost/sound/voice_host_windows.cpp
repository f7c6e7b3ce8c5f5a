// There is no voice for Windows yet: none ever comes, and the pilot's texts are not spoken.
#include "simhost/sound/run_program.h"
#include "simhost/sound/voice_host.h"

namespace simhost {

bool OpenVoiceHost(double, std::string &) {
    return true;
}

void CloseVoiceHost() {}

void AwaitVoice(int) {}

bool isVoiceConnected() {
    return false;
}

void ExchangeSound(const SoundBlock &, SoundBlock &loudspeaker) {
    loudspeaker.fill(0);
}

std::string TakeVoiceProblem() {
    return "";
}

bool RunProgram(const std::vector<std::string> &, const std::string &) {
    return false;
}

} // namespace simhost
