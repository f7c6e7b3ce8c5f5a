// The voice without devices: what is said is understood, and what is not on the list is refused.
#include "speech/voice/recogniser.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <unistd.h>

#include <gtest/gtest.h>

#include "speech/voice/settings.h"
#include "speech/voice/speaker.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {
namespace {

Samples Spoken(const std::string &text, bool isMan, int rate = 50) {
    Samples sound;
    std::string error;
    EXPECT_TRUE(Synthesise(text, {isMan, rate, ""}, sound, error)) << error;
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

TEST(Speaker, SaysOneTextBehindTheOther) {
    Speaker speaker(true);
    Samples block(320);
    const auto speakAll = [&] {
        size_t blocks = 0, loudest = 0;
        for (; !speaker.TakeFinished() && blocks < 10000; blocks++) {
            speaker.Speak(block);
            for (int16_t sample : block)
                loudest = std::max<size_t>(loudest, static_cast<size_t>(std::abs(sample)));
        }
        return std::pair(blocks, loudest);
    };
    EXPECT_FALSE(speaker.TakeFinished());
    speaker.Say("Gear up.");
    const auto [one, loud] = speakAll();
    speaker.Say("Gear up.");
    speaker.Say("Gear up.");
    speaker.SetVolume(10);
    const auto [two, soft] = speakAll();
    EXPECT_NEAR(static_cast<double>(two), 2.0 * static_cast<double>(one), 3.0);
    EXPECT_LT(soft * 5, loud);
    EXPECT_GT(one, 20U);

    std::string longText;
    for (int i = 0; i < 500; i++) longText += "This text is long. ";
    speaker.Say(longText);
    speaker.Speak(block);
    speaker.Stop(); // an abort
    EXPECT_LT(speakAll().first, 5U);
    speaker.Say("Шасси убрано");
    speakAll();
    EXPECT_NE(speaker.TakeError(), "");
}

TEST(Speaker, KeepsUpWithTheTimeThatTextsAreGiven) {
    for (bool isMan : {false, true})
        for (const std::string text :
             {"Before start checklist.", "Positive climb.", "All Commands and Checklists Aborted!",
              "I do not see it on both, Sir."}) {
            const double seconds = static_cast<double>(Spoken(text, isMan).size()) / SampleRate - 0.6;
            EXPECT_LT(seconds, 0.1 * static_cast<double>(text.size()) + 1.0) << text;
            EXPECT_LT(Spoken(text, isMan, 100).size() * 4, Spoken(text, isMan, 10).size() * 3) << text;
        }
}

TEST(Speaker, ACommandSpeaksInstead) {
    Samples sound;
    std::string error;
    const std::string file = testing::TempDir() + "fennic_said_" + std::to_string(getpid()) + ".wav";
    ASSERT_TRUE(WriteWavFile(file, Samples(1234, 77)));
    EXPECT_TRUE(
        Synthesise("text", {false, 80, "cat >/dev/null; [ {rate} = 80 ] && cat " + file}, sound, error))
        << error;
    EXPECT_EQ(sound, Samples(1234, 77));
    for (const char *command : {"false", "echo no sound", "exit 3", "no-such-program"}) {
        EXPECT_FALSE(Synthesise("text", {false, 50, command}, sound, error)) << command;
        EXPECT_NE(error, "");
    }
    std::filesystem::remove(file);
}

TEST(Speaker, VoicesOfOtherSystemsHaveANearestOne) {
    EXPECT_TRUE(isMansVoice("com.apple.speech.synthesis.voice.daniel"));
    EXPECT_TRUE(isMansVoice("com.apple.speech.synthesis.voice.Alex"));
    EXPECT_FALSE(isMansVoice("com.apple.speech.synthesis.voice.samantha"));
    EXPECT_FALSE(isMansVoice(""));
}

// A WAV file of these samples in some format.
std::string Wav(unsigned kind, unsigned channels, unsigned rate, unsigned bits, const std::string &data,
                uint32_t size) {
    std::string bytes = "RIFF....WAVEfmt ";
    const auto number = [&](uint32_t value, int count) {
        for (int i = 0; i < count; i++) bytes += static_cast<char>(value >> (8 * i));
    };
    number(16, 4);
    number(kind, 2);
    number(channels, 2);
    number(rate, 4);
    number(rate * channels * bits / 8, 4);
    number(channels * bits / 8, 2);
    number(bits, 2);
    bytes += "LIST";
    number(3, 4);
    bytes += "odd.data";
    number(size, 4);
    return bytes + data;
}

TEST(WavFile, IsReadInEveryUsualFormat) {
    Samples samples;
    std::string error;
    const float half[] = {0.5F, -0.5F};
    const std::string floats(reinterpret_cast<const char *>(half), sizeof half);
    EXPECT_TRUE(ReadWav(Wav(1, 1, 16000, 8, "\xC0\x40", 2), samples, error)) << error;
    EXPECT_EQ(samples, (Samples{16384, -16384}));
    EXPECT_TRUE(ReadWav(Wav(1, 1, 16000, 24, std::string("\0\0\x40\0\0\xC0", 6), 6), samples, error));
    EXPECT_EQ(samples, (Samples{16384, -16384}));
    EXPECT_TRUE(ReadWav(Wav(3, 1, 16000, 32, floats, 0xFFFFFFFF), samples, error)); // from a pipe
    EXPECT_EQ(samples, (Samples{16384, -16384}));
    EXPECT_TRUE(ReadWav(Wav(3, 2, 16000, 32, floats, 8), samples, error));
    EXPECT_EQ(samples, Samples{0});
    EXPECT_TRUE(ReadWav(Wav(1, 1, 48000, 16, std::string(96000, '\0'), 96000), samples, error));
    EXPECT_EQ(samples.size(), 16000U);
    std::string tones; // 1 kHz, which stays, and 12 kHz, which no file of ours can hold
    for (int i = 0; i < 48000; i++) {
        const double t = i / 48000.0 * 2.0 * std::numbers::pi;
        const auto value =
            static_cast<int16_t>(10000.0 * std::sin(1000.0 * t) + 10000.0 * std::sin(12000.0 * t));
        tones.append(reinterpret_cast<const char *>(&value), 2);
    }
    EXPECT_TRUE(ReadWav(Wav(1, 1, 48000, 16, tones, 96000), samples, error));
    for (size_t i = 100; i < 15900; i++)
        ASSERT_NEAR(samples[i], 10000.0 * std::sin(static_cast<double>(i) / 16.0 * 2.0 * std::numbers::pi),
                    100.0)
            << i;

    const std::string whole = Wav(1, 1, 16000, 16, "abcd", 4);
    for (size_t cut = 0; cut < whole.size(); cut++) ReadWav(whole.substr(0, cut), samples, error);
    for (const std::string &bad :
         {Wav(7, 1, 16000, 16, "ab", 2), Wav(1, 0, 16000, 16, "ab", 2), Wav(1, 1, 1, 16, "ab", 2),
          Wav(1, 1, 16000, 12, "ab", 2), std::string("RIFF"), std::string()})
        EXPECT_FALSE(ReadWav(bad, samples, error));
}

TEST(VoiceSettings, KeepWhatTheyUnderstand) {
    const std::string file = testing::TempDir() + "fennic_voice_settings_" + std::to_string(getpid());
    std::ofstream(file)
        << "# a comment\r\nmicrophone=USB Headset\r\nnonsense\nvoice-m=say -v Daniel -o {rate}=x\n";
    Settings settings;
    settings.loudspeaker = "kept";
    ReadSettings(file, settings);
    ReadSettings(file + ".missing", settings);
    EXPECT_EQ(settings.microphone, "USB Headset");
    EXPECT_EQ(settings.mansCommand, "say -v Daniel -o {rate}=x");
    EXPECT_EQ(settings.loudspeaker, "kept");
    std::filesystem::remove(file);
}

} // namespace
} // namespace fennic_voice
