// The voice without devices: what is said is understood, and what is not on the list is refused.
#include "speech/voice/recogniser.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <unistd.h>

#include <gtest/gtest.h>

#include "speech/voice/listener.h"
#include "speech/voice/recognise_files.h"
#include "speech/voice/sound.h"
#include "speech/voice/synthesis.h"
#include "speech/voice/wav_file.h"

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

// While the button is held: a phrase comes soon after its end, or later where a longer one could follow; and
// what was refused before does not hide it.
TEST_F(Voice, AnswersWhereSpeechPauses) {
    std::vector<std::string> understood;
    Listener listener([&](const std::string &phrase) { understood.push_back(phrase); });
    listener.SetRecogniser(recogniser.get());
    listener.SetPhrases({"flaps", "flaps up", "gear down", "autobrake medium"});
    listener.Press();
    const auto hear = [&](const std::string &text) { // the blocks of silence until something is understood
        Samples sound = Spoken(text, false);
        sound.resize(sound.size() + SampleRate);
        size_t last = 0, blocks = 0;
        understood.clear();
        for (size_t i = 0; i + BlockSize <= sound.size(); i += BlockSize) {
            listener.Hear(Samples(&sound[i], &sound[i] + BlockSize));
            if (!understood.empty()) continue;
            blocks++;
            if (std::any_of(&sound[i], &sound[i] + BlockSize, [](int16_t s) { return std::abs(s) > 600; }))
                last = blocks;
        }
        return blocks - last;
    };
    EXPECT_LT(hear("gear down"), 15U);
    EXPECT_EQ(understood, std::vector<std::string>{"gear down"});
    const size_t longer = hear("flaps");
    EXPECT_GE(longer, 15U);
    EXPECT_LT(longer, 35U);
    EXPECT_EQ(understood, std::vector<std::string>{"flaps"});
    hear("What a lovely morning over the mountains.");
    EXPECT_TRUE(understood.empty());
    hear("flaps up");
    EXPECT_EQ(understood, std::vector<std::string>{"flaps up"});
    listener.Release();
}

// The noise of a room that comes from a device that stalls, behind a phrase and before any: it sounds like
// "off".
TEST_F(Voice, NoiseIsNoPhrase) {
    std::vector<std::string> understood;
    Listener listener([&](const std::string &phrase) { understood.push_back(phrase); });
    listener.SetRecogniser(recogniser.get());
    listener.SetPhrases({"gear down", "off", "on", "set", "up", "checked"});
    listener.SetExpected({"gear down", "off", "on", "set", "up"});
    std::mt19937 random(1);
    std::normal_distribution<double> white(0.0, 40.0);
    for (Samples sound : {Spoken("gear down", true), Samples()}) {
        sound.resize(sound.size() + 2 * SampleRate);
        for (size_t i = 0, stalled = 0; i < sound.size(); i++) {
            if (random() % 4000 == 0) stalled = random() % 1600;
            if (stalled > 0) stalled--;
            if (stalled == 0) sound[i] = static_cast<int16_t>(sound[i] + white(random));
        }
        listener.Press();
        for (size_t i = 0; i + BlockSize <= sound.size(); i += BlockSize)
            listener.Hear(Samples(&sound[i], &sound[i] + BlockSize));
        listener.Release();
        EXPECT_EQ(understood, std::vector<std::string>{"gear down"});
    }
}

TEST_F(Voice, ReadsAnyListOfPhrases) {
    std::vector<std::string> phrases = {"gear down", "",       "  ",           "\xff\xfe{}",
                                        "[sil]",     "<s> up", "gear(2) down", std::string(100000, 'a'),
                                        "gear  down"};
    for (int i = 0; i < 40; i++) phrases[2] += " gear";
    for (int i = 0; i < 5000; i++) phrases.push_back(std::to_string(i));
    testing::internal::CaptureStderr();
    recogniser->SetPhrases(phrases, {"gear up"});
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_LE(std::count(told.begin(), told.end(), '\n'), 11);
    EXPECT_NE(told.find("too many words"), std::string::npos) << told;
    EXPECT_EQ(Hear(Spoken("gear down", false)).phrase, "gear down");
    EXPECT_EQ(Hear(Spoken("one two three four", false)).phrase, "1234");
    recogniser->SetPhrases({"\xff"}, {});
    EXPECT_EQ(Hear(Spoken("gear down", false)).phrase, "");
}

// Recordings of single words are often cut so close that nothing but speech lasts for long, and some devices
// leave an offset in them.
TEST(RecogniseFiles, WordsThatAreCutClose) {
    const std::filesystem::path folder = testing::TempDir() + "fennic_cut_close_" + std::to_string(getpid());
    std::filesystem::create_directories(folder);
    std::vector<std::string> recordings;
    std::string expected;
    for (const char *word : {"on", "ten", "left", "right", "down", "yes"}) {
        for (const bool isMan : {false, true}) {
            Samples sound = Spoken(word, isMan);
            const auto isLoud = [](int16_t sample) { return std::abs(sample) > 500; };
            sound.erase(std::find_if(sound.rbegin(), sound.rend(), isLoud).base(), sound.end());
            sound.erase(sound.begin(), std::find_if(sound.begin(), sound.end(), isLoud));
            if (isMan)
                for (int16_t &sample : sound) sample = static_cast<int16_t>(std::min(sample + 8000, 32767));
            recordings.push_back(folder / (std::to_string(recordings.size()) + ".wav"));
            ASSERT_TRUE(WriteWavFile(recordings.back(), sound));
            expected += std::string(word) + "\n";
        }
    }
    std::ofstream(folder / "words.txt") << expected << "set\noff\nup\nno\nchecked\n";
    Settings settings;
    settings.modelFolder = SPEECH_MODEL;
    settings.pronunciations = {SPEECH_DATA "/pronunciations.txt"};
    testing::internal::CaptureStdout();
    EXPECT_EQ(RecogniseFiles(settings, folder / "words.txt", folder / "words.txt", recordings, false), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
    std::filesystem::remove_all(folder);
}

TEST(Pronunciations, NumbersAndUnknownWords) {
    const std::string file = testing::TempDir() + "fennic_words_" + std::to_string(getpid());
    std::ofstream(file)
        << "# numbers\none W AH N\nfive F AY V\nfive(2) F AY F\nfifteen F IH F T IY N\nthousand TH AW\nlonely\n";
    Pronunciations words;
    EXPECT_TRUE(words.Read(file));
    EXPECT_FALSE(words.Read(file + ".missing"));
    EXPECT_EQ(words.Known("15"),
              (std::vector<Pronunciation>{"W AH N F AY V", "W AH N F AY F", "F IH F T IY N"}));
    EXPECT_EQ(words.Known("1000"), std::vector<Pronunciation>{"W AH N TH AW"}) << "nobody says ten hundred";
    EXPECT_TRUE(words.Known("lonely").empty());
    EXPECT_EQ(Pronunciations::Guess("flaps"), "F L AE P S");
    EXPECT_EQ(Pronunciations::Guess("vhf"), "V IY EY CH EH F");
    EXPECT_EQ(Pronunciations::Guess("закрылки"), "");
    std::filesystem::remove(file);
}

} // namespace
} // namespace fennic_voice
