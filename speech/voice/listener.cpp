#include "speech/voice/listener.h"

#include <algorithm>

namespace fennic_voice {

namespace {

const size_t KeptBefore = SampleRate * 3 / 10; // samples
// Seconds of silence behind a phrase before it is taken for whole: when no other goes on from it, when one
// does, and when what was said is none.
const double ShortPause = 0.1, UsualPause = 0.3, LongPause = 0.6;

} // namespace

void Listener::SetRecogniser(Recogniser *engine) {
    recogniser = engine;
    haveChanged = true;
}

void Listener::SetPhrases(std::vector<std::string> all) {
    phrases = std::move(all);
    haveChanged = true;
}

void Listener::SetExpected(std::vector<std::string> some) {
    if (some == expected) return;
    expected = std::move(some);
    haveChanged = true;
}

void Listener::Begin() {
    if (!recogniser) return;
    if (haveChanged) recogniser->SetPhrases(phrases, expected);
    haveChanged = false;
    recogniser->Start();
}

void Listener::End() {
    if (!recogniser) return;
    const Heard heard = recogniser->Finish();
    if (Accept(heard)) understood(heard.phrase);
}

void Listener::Press() {
    if (isHeld) return;
    isHeld = true;
    Begin();
    const Samples early(before.begin(), before.end());
    before.clear();
    if (recogniser) recogniser->Hear(early);
}

void Listener::Release() {
    if (!isHeld) return;
    isHeld = false;
    End();
}

void Listener::Hear(const Samples &block) {
    if (!isHeld) {
        before.insert(before.end(), block.begin(), block.end());
        if (before.size() > KeptBefore) before.erase(before.begin(), before.end() - KeptBefore);
        return;
    }
    if (!recogniser) return;
    recogniser->Hear(block);
    const SoFar soFar = recogniser->HeardSoFar();
    const double pause = soFar.goesOn ? UsualPause : ShortPause;
    const bool isPhrase = soFar.silence >= pause && Accept(soFar.heard);
    if (!isPhrase && (!soFar.hasSpeech || soFar.quiet < LongPause)) return;
    // What the pause has told counts: the engines' last words are worse where silence follows.
    recogniser->Finish();
    if (isPhrase) understood(soFar.heard.phrase);
    Begin(); // the next phrase
}

} // namespace fennic_voice
