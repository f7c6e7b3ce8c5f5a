// A process that ends is noticed by its connection, which may close before the process is gone. Whoever
// started it asks for it in the next frame, so it is waited for.
#include "simhost/sound/voice_host.h"

#include <chrono>
#include <cstdint>
#include <thread>
#include <utility>

#include "simhost/number_text.h"
#include "simhost/sound/voice_connection.h"

namespace simhost {

namespace {

using std::chrono::steady_clock;

struct VoiceHost {
    int process = 0;   // at the other end of the connection
    int abandoned = 0; // one that did not come or did not answer
    double limitSeconds = 60;
    std::string problem;
};
VoiceHost host;

steady_clock::time_point Deadline() {
    return steady_clock::now()
           + std::chrono::duration_cast<steady_clock::duration>(
               std::chrono::duration<double>(host.limitSeconds));
}

void Abandon(int process, const char *what) {
    host.problem = std::string("the voice ") + what + " within " + NumberText(host.limitSeconds)
                   + " s; the flight goes on without its sound";
    host.abandoned = process;
    HangUp();
}

Passed Exchange(const SoundBlock &microphone, SoundBlock &loudspeaker) {
    const auto count = static_cast<std::uint32_t>(microphone.size());
    const std::size_t bytes = microphone.size() * sizeof microphone[0];
    Passed passed = SendToVoice(&count, sizeof count);
    if (passed == Passed::Whole) passed = SendToVoice(microphone.data(), bytes);
    return passed == Passed::Whole ? ReceiveFromVoice(loudspeaker.data(), bytes) : passed;
}

} // namespace

bool OpenVoiceHost(double limitSeconds, std::string &error) {
    host.limitSeconds = limitSeconds;
    if (ListenForVoice(limitSeconds, error)) return true;
    CloseVoiceHost();
    return false;
}

void CloseVoiceHost() {
    StopListening();
    host = VoiceHost();
}

void AwaitVoice(int process) {
    if (!isListeningForVoice() || process == host.process) return;
    HangUp();
    host.process = 0;
    if (process <= 0 || process == host.abandoned) return;
    const steady_clock::time_point deadline = Deadline();
    while (!AcceptVoice(process)) {
        if (hasEnded(process)) return;
        if (steady_clock::now() > deadline) return Abandon(process, "did not come for its sound");
    }
    host.process = process;
}

void ExchangeSound(const SoundBlock &microphone, SoundBlock &loudspeaker) {
    loudspeaker.fill(0);
    if (!isVoiceConnected()) return;
    const Passed passed = Exchange(microphone, loudspeaker);
    if (passed == Passed::Whole) return;
    loudspeaker.fill(0);
    if (passed == Passed::Late) return Abandon(host.process, "did not answer");
    HangUp();
    const steady_clock::time_point deadline = Deadline();
    while (!hasEnded(host.process)) {
        if (steady_clock::now() > deadline) return Abandon(host.process, "hung up and did not end");
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

std::string TakeVoiceProblem() {
    return std::exchange(host.problem, {});
}

} // namespace simhost
