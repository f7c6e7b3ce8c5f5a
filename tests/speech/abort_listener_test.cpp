// The one phrase that is heard while the button is up.
#include "speech/voice/abort_listener.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "speech/voice/synthesis.h"

namespace fennic_voice {
namespace {

TEST(AbortListener, HearsOneWordAndNoTalk) {
    std::vector<std::string> understood;
    AbortListener listener([&](const std::string &phrase) { understood.push_back(phrase); });
    const auto hear = [&](const std::string &text, BuiltIn voice) {
        Samples sound;
        std::string error;
        EXPECT_TRUE(Synthesise(text, {voice, 50, ""}, sound, error));
        sound.resize(sound.size() + SampleRate);
        for (size_t i = 0; i + 320 <= sound.size(); i += 320)
            listener.Hear(Samples(&sound[i], &sound[i] + 320));
    };
    hear("abort", BuiltIn::Man); // nobody listens yet
    std::string error;
    listener.SetRecogniser(Recogniser::Load(SPEECH_MODEL, {SPEECH_DATA "/pronunciations.txt"}, error, 1));
    for (const char *talk :
         {"Yesterday we had pizza for dinner, and then we went home.", "Before start checklist.",
          "Is that airport on the coast? I have never been aboard a boat there."})
        hear(talk, BuiltIn::Man);
    EXPECT_EQ(understood, std::vector<std::string>{});
    hear("abort", BuiltIn::Man);
    hear("What a lovely morning over the mountains.", BuiltIn::Woman);
    hear("abort", BuiltIn::Scotsman);
    EXPECT_EQ(understood, (std::vector<std::string>{"abort", "abort"}));
}

} // namespace
} // namespace fennic_voice
