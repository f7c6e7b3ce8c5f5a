#include "speech/voice/listener.h"

#include <algorithm>

namespace fennic_voice {

namespace {

// Samples before the button: pilots speak while they press; what was before that tells of the noise.
const size_t HeardBefore = SampleRate * 3 / 10, KeptBefore = HeardBefore + SampleRate;
// Seconds of silence behind a phrase before it is taken for whole: when no other goes on from it, when one
// does, and when what was said is none.
const double ShortPause = 0.1, UsualPause = 0.3, LongPause = 0.6;
// The same of a phrase that is expected: what its decoder must hear as silence, and how long it must be quiet
// where no phrase goes on from it, and where one does that is not expected.
const double ExpectedSilence = 0.05, ExpectedQuiet = 0.08, ExpectedPause = 0.16;

// Decibels that a phrase may be softer than another one of the same pilot in the same breath: those of one
// voice lie within 14. What is softer is noise, as of a device that stalls, which sounds like "off".
const double Softer = 20.0;

bool isOver(const SoFar &soFar) {
    if (soFar.heard.isExpected && !soFar.goesOnExpected)
        return soFar.phraseSilence >= ExpectedSilence
               && soFar.quiet >= (soFar.goesOn ? ExpectedPause : ExpectedQuiet);
    return soFar.silence >= (soFar.goesOn ? UsualPause : ShortPause);
}

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

void Listener::Begin(std::span<const int16_t> noise) {
    if (!recogniser) return;
    if (haveChanged) recogniser->SetPhrases(phrases, expected);
    haveChanged = false;
    recogniser->Start(noise);
}

void Listener::End() {
    if (!recogniser) return;
    const Heard heard = recogniser->Finish();
    if (Takes(heard)) Understand(heard);
}

bool Listener::Takes(const Heard &heard) const {
    return Accept(heard) && heard.loudness > loudness - Softer;
}

void Listener::Understand(const Heard &heard) {
    loudness = std::max(loudness, heard.loudness);
    understood(heard.phrase);
}

void Listener::Press() {
    if (isHeld) return;
    isHeld = true;
    loudness = 0.0;
    const Samples early(before.begin(), before.end());
    before.clear();
    const size_t noise = early.size() - std::min(early.size(), HeardBefore);
    Begin(std::span(early).first(noise));
    if (recogniser) recogniser->Hear(std::span(early).subspan(noise));
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
    const bool isPhrase = isOver(soFar) && Takes(soFar.heard);
    if (!isPhrase && (!soFar.hasSpeech || soFar.quiet < LongPause)) return;
    // What the pause has told counts: the engines' last words are worse where silence follows.
    recogniser->Finish();
    if (isPhrase) Understand(soFar.heard);
    Begin({}); // the next phrase
}

} // namespace fennic_voice
