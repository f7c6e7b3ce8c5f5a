// The voice without devices: what is said is understood, and what is not on the list is refused.
#include "speech/voice/recogniser.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include <gtest/gtest.h>

#include "speech/voice/synthesis.h"

namespace fennic_voice {
namespace {

Samples Spoken(const std::string &text, bool isMan, int rate = 50) {
    Samples sound;
    std::string error;
    EXPECT_TRUE(Synthesise(text, {isMan ? BuiltIn::Man : BuiltIn::Woman, rate, ""}, sound, error)) << error;
    const Samples silence(SampleRate * 3 / 10);
    sound.insert(sound.begin(), silence.begin(), silence.end());
    sound.insert(sound.end(), silence.begin(), silence.end());
    return sound;
}

class Voice : public testing::Test {
protected:
    Voice() {
        std::string error;
        recogniser = Recogniser::Load(SPEECH_MODEL, {SPEECH_DATA "/pronunciations.txt"}, error);
        EXPECT_TRUE(recogniser) << error;
    }

    Heard Hear(const Samples &sound) {
        recogniser->Start();
        for (size_t i = 0; i < sound.size(); i += 320)
            recogniser->Hear(std::span(sound).subspan(i, std::min<size_t>(320, sound.size() - i)));
        return recogniser->Finish();
    }

    std::unique_ptr<Recogniser> recogniser;
};

TEST_F(Voice, UnderstandsWhatItSaysAndNothingElse) {
    const std::vector<std::string> phrases = {
        "before start checklist", "gear down",     "gear up", "flaps 15",
        "autobrake medium",       "start the apu", "checked", "положение"};
    recogniser->SetPhrases(phrases, {});
    EXPECT_EQ(recogniser->LeftOut(), std::vector<std::string>{"положение"});
    int refused = 0;
    for (bool isMan : {false, true})
        for (const std::string &phrase : phrases) {
            if (phrase == phrases.back()) continue;
            const Heard heard = Hear(Spoken(phrase, isMan));
            EXPECT_EQ(heard.phrase, phrase) << isMan;
            if (!Accept(heard)) refused++;
        }
    EXPECT_LE(refused, 1) << "what was said is refused";
    for (const char *foreign :
         {"What a lovely morning over the mountains.", "Yesterday we had pizza for dinner.",
          "Please leave a message after the tone."})
        EXPECT_FALSE(Accept(Hear(Spoken(foreign, false)))) << foreign;
    EXPECT_FALSE(Accept(Hear(Samples(SampleRate))));
    EXPECT_FALSE(Accept(Hear({})));
}

TEST_F(Voice, KnowsWhenAPhraseIsOver) {
    recogniser->SetPhrases({"flaps", "flaps up"}, {"flaps up"});
    const Samples sound = Spoken("flaps up", false);
    recogniser->Start();
    recogniser->Hear(std::span(sound).first(SampleRate * 3 / 10));
    EXPECT_EQ(recogniser->SilenceBehindPhrase(), 0.0);
    recogniser->Hear(std::span(sound).subspan(SampleRate * 3 / 10));
    EXPECT_GT(recogniser->SilenceBehindPhrase(), 0.1);
    EXPECT_EQ(recogniser->Finish().phrase, "flaps up");
}

TEST(Pronunciations, NumbersAndUnknownWords) {
    const std::string file = testing::TempDir() + "fennic_words_" + std::to_string(getpid());
    std::ofstream(file)
        << "# numbers\none W AH N\nfive F AY V\nfive(2) F AY F\nfifteen F IH F T IY N\nlonely\n";
    Pronunciations words;
    EXPECT_TRUE(words.Read(file));
    EXPECT_FALSE(words.Read(file + ".missing"));
    EXPECT_EQ(words.Known("15"),
              (std::vector<Pronunciation>{"W AH N F AY V", "W AH N F AY F", "F IH F T IY N"}));
    EXPECT_TRUE(words.Known("lonely").empty());
    EXPECT_EQ(Pronunciations::Guess("flaps"), "F L AE P S");
    EXPECT_EQ(Pronunciations::Guess("vhf"), "V IY EY CH EH F");
    EXPECT_EQ(Pronunciations::Guess("закрылки"), "");
    std::filesystem::remove(file);
}

} // namespace
} // namespace fennic_voice
