// Speaking, without devices: voices, texts in pieces, programs that speak, recordings.
#include "speech/voice/speaker.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <unistd.h>

#include <gtest/gtest.h>

#include "speech/voice/health.h"
#include "speech/voice/resampler.h"
#include "speech/voice/settings.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {
namespace {

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
    EXPECT_NEAR(static_cast<double>(two), 2.0 * static_cast<double>(one) + 0.25 * 50, 3.0); // and a pause
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

// All that the shipped aircraft say was measured so; these were the longest for their letters.
TEST(Speaker, KeepsUpWithTheTimeThatTextsAreGiven) {
    for (BuiltIn voice : {BuiltIn::Woman, BuiltIn::Man, BuiltIn::Scotsman})
        for (const std::string text :
             {"Before start checklist.", "V one 137, rotate 137.", "11500 feet on 2 9 9 2",
              "I do not see it on both, Sir.", "Your start, Sir. I watch the gauges."}) {
            Speaker speaker(true);
            Samples block(SampleRate / 100);
            speaker.SetVoice({voice, 50, ""});
            speaker.Say(text);
            double seconds = 0.0;
            int loudest = 0;
            for (; !speaker.TakeFinished() && seconds < 100.0; seconds += 0.01) {
                speaker.Speak(block);
                for (int16_t sample : block) loudest = std::max(loudest, std::abs(int{sample}));
            }
            EXPECT_LE(seconds, 0.1 * static_cast<double>(text.size()) + 1.0) << text;
            EXPECT_GT(loudest, 8000) << text;
            EXPECT_LT(loudest, 32767) << text;
            Samples slow, fast;
            std::string error;
            EXPECT_TRUE(Synthesise(text, {voice, 10, ""}, slow, error));
            EXPECT_TRUE(Synthesise(text, {voice, 100, ""}, fast, error));
            EXPECT_LT(fast.size() * 2, slow.size());
        }
}

TEST(Speaker, LongTextsAreCutWhereSpeechPauses) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(CutIntoPieces("Flaps up.  Climb at 74.5, Sir! Gear?"),
              (Texts{"Flaps up.", "Climb at 74.5, Sir!", "Gear?"}));
    EXPECT_EQ(CutIntoPieces("Short, and whole"), Texts{"Short, and whole"});
    EXPECT_EQ(CutIntoPieces("   "), Texts{});
    const std::string clause(48, 'a'), words = "word word word word word word word word word word word word";
    EXPECT_EQ(CutIntoPieces(clause + "bcd, " + clause), (Texts{clause + "bcd,", clause}));
    EXPECT_EQ(CutIntoPieces(words + " " + words).front().size(), 94U);
    std::string letters;
    for (int i = 0; i < 5000; i++) letters += "я"; // nowhere to cut, and never within a letter
    for (const std::string &piece : CutIntoPieces(letters)) EXPECT_LE(CountCharacters(piece), 81U);
    EXPECT_EQ(CutIntoPieces(letters).front().size() % 2, 0U);
}

TEST(Speaker, ACommandSpeaksInstead) {
    Samples sound;
    std::string error;
    const std::string file = testing::TempDir() + "fennic_said_" + std::to_string(getpid()) + ".wav";
    ASSERT_TRUE(WriteWavFile(file, Samples(1234, 777)));
    // A Mac's own voices, with a stand-in for its program, which takes the options that the manual has.
    std::string systems = ChooseVoice("com.apple.speech.synthesis.voice.Eddy's", {}, true).command;
    ASSERT_EQ(systems.find("/usr/bin/say "), 0U);
    systems.replace(0, 12,
                    R"sh(say() {
        while [ $# -gt 0 ]; do case $1 in
            -v) voice=$2; shift 2 ;;
            -r) rate=$2; shift 2 ;;
            -o) out=$2; shift 2 ;;
            -f) in=$2; shift 2 ;;
            --file-format=WAVE) format=wav; shift ;;
            --data-format=LEI16@16000) format=$format,16; shift ;;
            *) exit 1 ;;
        esac; done
        [ "$voice $rate $format $in $(cat)" = "eddy's 280 wav,16 - text" ] && cp )sh"
                        + file + " \"$out\"; }\nsay");
    for (const std::string &command :
         {"[ \"$(cat)\" = text ] && [ '{rate} {words}' = '80 280' ] && cat " + file, "cp " + file + " {wav}",
          systems}) {
        EXPECT_TRUE(Synthesise("text", {BuiltIn::Man, 80, command}, sound, error));
        EXPECT_EQ(error, "");
        EXPECT_EQ(sound, Samples(1234, 777));
    }
    for (const char *command : {"false", "echo no sound", "exit 3", "no-such-program", "true {wav}"}) {
        EXPECT_TRUE(Synthesise("text", {BuiltIn::Man, 50, command}, sound, error)) << command;
        EXPECT_GT(sound.size(), 3000U); // the built-in voice
        EXPECT_NE(error.find(command), std::string::npos);
    }
    std::filesystem::remove(file);

    Speaker speaker(true); // asks a command that has failed no more
    speaker.SetVoice({BuiltIn::Man, 50, "echo >>" + file + "; false"});
    speaker.Say("One. Two. Three.");
    Samples block(320);
    while (!speaker.TakeFinished()) speaker.Speak(block);
    EXPECT_EQ(std::filesystem::file_size(file), 1U);
    EXPECT_NE(speaker.TakeError(), "");
    std::filesystem::remove(file);
}

TEST(Voices, OfAnySystemHaveSomethingThatSpeaks) {
    const std::string prefix = "com.apple.speech.synthesis.voice.";
    EXPECT_EQ(NearestBuiltIn(prefix + "daniel"), BuiltIn::Scotsman);
    EXPECT_EQ(NearestBuiltIn(prefix + "Alex"), BuiltIn::Man);
    EXPECT_EQ(NearestBuiltIn(prefix + "samantha.premium"), BuiltIn::Woman);
    EXPECT_EQ(NearestBuiltIn(prefix + "man"), BuiltIn::Man);
    EXPECT_EQ(NearestBuiltIn(""), BuiltIn::Woman);

    Settings settings;
    settings.voices = {{"m", "for men"}, {"fiona", "for Fiona"}};
    EXPECT_EQ(ChooseVoice(prefix + "Fiona", settings, true).command, "for Fiona");
    EXPECT_EQ(ChooseVoice(prefix + "daniel", settings, false).command, "for men");
    EXPECT_EQ(ChooseVoice(prefix + "samantha", settings, false).command, "");
    EXPECT_EQ(ChooseVoice(prefix + "man", settings, true).command, "for men");
    EXPECT_EQ(ChooseVoice("", {}, true).command, "");
}

TEST(Health, IsToldWhenItChanges) {
    std::vector<std::string> told;
    const auto take = [&] { return std::exchange(told, {}); };
    using Lines = std::vector<std::string>;
    Health health([&](const std::string &line) { told.push_back(line); });
    health.Set(Part::Loudspeaker, "");
    health.Set(Part::Phrases, "");
    EXPECT_EQ(take(), Lines{"speech 1 ready"});
    health.Set(Part::Microphone, "no microphone");
    health.Set(Part::Microphone, "no microphone");
    health.Set(Part::Model, "");
    EXPECT_EQ(take(), Lines{"reco 0 no microphone"});
    health.Set(Part::Phrases, "no phrases");
    health.Set(Part::Microphone, "");
    health.Set(Part::Phrases, "");
    EXPECT_EQ(take(),
              (Lines{"reco 0 no phrases", "reco 0 the microphone is there", "reco 1 there are phrases"}));
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
    EXPECT_FALSE(ReadWavFile(testing::TempDir(), samples, error));
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

    Resampler pieces(44100, 16000), whole(44100, 16000); // as a device gives it
    Samples inPieces, atOnce;
    const std::span<const int16_t> recording(reinterpret_cast<const int16_t *>(tones.data()), 44100);
    for (size_t i = 0; i < recording.size(); i += 441) pieces.Add(recording.subspan(i, 441), inPieces);
    whole.Add(recording, atOnce);
    EXPECT_EQ(inPieces, atOnce);
    EXPECT_NEAR(static_cast<double>(atOnce.size()), 16000.0, 20.0);

    const std::string whole16 = Wav(1, 1, 16000, 16, "abcd", 4);
    for (size_t cut = 0; cut < whole16.size(); cut++) ReadWav(whole16.substr(0, cut), samples, error);
    for (const std::string &bad :
         {Wav(7, 1, 16000, 16, "ab", 2), Wav(1, 0, 16000, 16, "ab", 2), Wav(1, 1, 1, 16, "ab", 2),
          Wav(1, 1, 16000, 12, "ab", 2), std::string("RIFF"), std::string()})
        EXPECT_FALSE(ReadWav(bad, samples, error));
}

TEST(VoiceSettings, KeepWhatTheyUnderstand) {
    const std::string file = testing::TempDir() + "fennic_voice_settings_" + std::to_string(getpid());
    std::ofstream(file)
        << "\xEF\xBB\xBFMicrophone = USB Headset\r\n# a comment\r\nnonsense\nabort-always=perhaps\nvoice-w=\n"
           "voice-Daniel=say -o {rate}=x\n";
    Settings settings;
    settings.loudspeaker = "kept";
    ReadSettings(file, settings);
    ReadSettings(file + ".missing", settings);
    EXPECT_EQ(settings.microphone, "USB Headset");
    EXPECT_EQ(settings.voices, (std::map<std::string, std::string>{{"daniel", "say -o {rate}=x"}}));
    EXPECT_FALSE(settings.hearsAbortAlways);
    EXPECT_EQ(settings.loudspeaker, "kept");
    std::filesystem::remove(file);
}

} // namespace
} // namespace fennic_voice
