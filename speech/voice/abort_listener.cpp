// Recognition hears one utterance after the other, and talk that is not meant for her has no end: an
// utterance is ended in a pause, or at last where there is none.
#include "speech/voice/abort_listener.h"

#include <algorithm>
#include <utility>

#include "voice/link_words.h"

namespace fennic_voice {

namespace {

const size_t ShortestUtterance = size_t{SampleRate} * 2,
             LongestUtterance = size_t{SampleRate} * 12; // samples
const size_t PauseBehindSpeech = SampleRate * 4 / 10;
const double Speech = 4.0;  // times the background's power
const double Rise = 1.0005; // of the background in a block where something is louder

} // namespace

AbortListener::AbortListener(const std::function<void(const std::string &)> &understood)
    : listener(understood) {
    listener.SetPhrases({link_words::Abort});
}

void AbortListener::SetRecogniser(std::unique_ptr<Recogniser> engine) {
    recogniser = std::move(engine);
    listener.SetRecogniser(recogniser.get());
}

void AbortListener::Hear(const Samples &block) {
    if (!recogniser || block.empty()) return;
    double power = 0.0;
    for (const int16_t sample : block) power += static_cast<double>(sample) * sample;
    power = std::max(power / static_cast<double>(block.size()), 1.0);
    background = background == 0.0 ? power : std::min(background * Rise, power);
    quiet = power > Speech * background ? 0 : quiet + block.size();
    heard += block.size();
    if ((heard > ShortestUtterance && quiet > PauseBehindSpeech) || heard > LongestUtterance) {
        listener.Release();
        heard = 0;
    }
    listener.Press();
    listener.Hear(block);
}

} // namespace fennic_voice
