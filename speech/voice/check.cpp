#include "speech/voice/check.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <vector>

#include "speech/voice/listener.h"
#include "speech/voice/phrase_file.h"
#include "speech/voice/pronunciations.h"
#include "speech/voice/recogniser.h"
#include "speech/voice/speaker.h"
#include "speech/voice/system.h"

namespace fennic_voice {

namespace {

using Clock = std::chrono::steady_clock;

const char *const OurPhrases[] = {
    "before start checklist", "gear up", "gear down", "flaps five", "checked", "abort"};
const char *const SentenceToSay = "Before start checklist complete.";
const char *const PhraseToHear = "before start checklist";
const double SecondsToListen = 5.0, SecondsOfPatience = 20.0;
const double TooQuiet = -45.0, TooNear = 10.0; // dB

double Decibels(double amplitude) {
    return amplitude < 1.0 ? -100.0 : 20.0 * std::log10(amplitude / 32768.0);
}

double LevelOf(const int16_t *samples, size_t count) {
    double sum = 0.0;
    for (size_t i = 0; i < count; i++) sum += static_cast<double>(samples[i]) * samples[i];
    return Decibels(std::sqrt(sum / static_cast<double>(std::max<size_t>(count, 1))));
}

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void PrintAll(const char *what, const std::vector<std::string> &names) {
    for (const std::string &name : names) std::printf("%-12s %s\n", what, name.c_str());
    if (names.empty()) std::printf("%-12s none\n", what);
}

void PrintWords(const char *what, const std::set<std::string> &words) {
    if (words.empty()) return;
    std::printf("             %s:", what);
    for (const std::string &word : words) std::printf(" %s", word.c_str());
    std::printf("\n");
}

class Check {
public:
    Check(Sound &sound, bool ofDevices, const Settings &settings)
        : sound(sound), ofDevices(ofDevices), settings(settings) {}

    void Devices() const {
        if (!ofDevices) return;
        PrintAll("microphone", Microphones());
        PrintAll("loudspeaker", Loudspeakers());
    }
    void Phrases(const std::string &context);
    void Words();
    void Voices();
    void Speech();
    void Hearing();
    int Status() const;

private:
    Sound &sound;
    const bool ofDevices;
    const Settings &settings;
    std::vector<std::string> phrases;
    std::vector<std::string> problems;

    // One line of what was found, and what is wrong with it.
    void Tell(const char *what, const std::string &found, const std::string &problem = {}) {
        std::printf("%-12s %s%s%s\n", what, found.c_str(), found.empty() || problem.empty() ? "" : " - ",
                    problem.c_str());
        std::fflush(stdout);
        if (!problem.empty()) problems.push_back(std::string(what) + ": " + problem);
    }
    Samples Listen(Listener &listener);
};

void Check::Phrases(const std::string &context) {
    phrases.assign(std::begin(OurPhrases), std::end(OurPhrases));
    if (context.empty()) return;
    std::vector<std::string> read;
    if (ReadPhraseFile(context, read) && !read.empty())
        phrases = std::move(read);
    else
        Tell("phrases", context, "cannot be read, or is empty");
}

void Check::Words() {
    Pronunciations dictionary, own;
    dictionary.Read(settings.modelFolder + "/cmudict-en-us.dict");
    for (const std::string &file : settings.pronunciations) own.Read(file);
    std::set<std::string> guessed, unspeakable;
    for (const std::string &phrase : phrases) {
        std::istringstream words(phrase);
        for (std::string word; words >> word;) {
            if (!dictionary.Known(word).empty() || !own.Known(word).empty()) continue;
            const Pronunciation guess = Pronunciations::Guess(word);
            if (guess.empty())
                unspeakable.insert(word);
            else
                guessed.insert(word + " (" + guess + ")");
        }
    }
    Tell("phrases", std::to_string(phrases.size()),
         unspeakable.empty() ? "" : std::to_string(unspeakable.size()) + " words cannot be pronounced");
    PrintWords("guessed from the spelling; user_pronunciations.txt may know better", guessed);
    PrintWords("not to be pronounced, and their phrases not to be heard", unspeakable);
}

void Check::Voices() {
    const auto tell = [&](const std::string &name, const VoiceChoice &choice) {
        Samples made;
        std::string error;
        const Clock::time_point start = Clock::now();
        const bool isMade = Synthesise(SentenceToSay, choice, made, error);
        char found[200];
        std::snprintf(found, sizeof found, "%s: %.1f s of sound in %.0f ms", name.c_str(),
                      static_cast<double>(made.size()) / SampleRate, SecondsSince(start) * 1000.0);
        Tell("voice", isMade ? found : name, error);
    };
    tell("woman", {BuiltIn::Woman, 50, ""});
    tell("man", {BuiltIn::Man, 50, ""});
    tell("Scotsman", {BuiltIn::Scotsman, 50, ""});
    if (SystemSpeaks) tell("the system's", ChooseVoice("samantha", settings, true));
    for (const auto &[name, command] : settings.voices)
        tell("voice-" + name, {NearestBuiltIn(name == "m" ? "man" : name), 50, command});
}

void Check::Speech() {
    Speaker speaker(sound.isWaiting());
    Samples block;
    speaker.SetVoice(ChooseVoice("", settings, false));
    speaker.Say(SentenceToSay);
    const Clock::time_point start = Clock::now();
    while (!speaker.TakeFinished() && SecondsSince(start) < SecondsOfPatience && sound.Read(block)) {
        block.resize(sound.Wanted(block.size()));
        const size_t spoken = speaker.Speak(block);
        if (!sound.isSilenceWanted()) block.resize(spoken);
        sound.Write(block);
    }
    Tell("speaking", std::string("\"") + SentenceToSay + "\"", sound.LoudspeakerTrouble());
}

// What the microphone gives, with its level as it goes on where somebody looks on.
Samples Check::Listen(Listener &listener) {
    Samples block, heard, tenth;
    const Clock::time_point before = Clock::now();
    while (ofDevices && SecondsSince(before) < 0.2 && sound.Read(block)) continue; // what came before is old
    const Clock::time_point start = Clock::now();
    sound.Listen();
    listener.Press();
    const auto isOver = [&] { return ofDevices ? SecondsSince(start) > SecondsToListen : !sound.hasMore(); };
    while (!isOver() && sound.Read(block)) {
        listener.Hear(block);
        heard.insert(heard.end(), block.begin(), block.end());
        tenth.insert(tenth.end(), block.begin(), block.end());
        if (!ofDevices || tenth.size() < SampleRate / 10) continue;
        const double level = LevelOf(tenth.data(), tenth.size());
        const int bar = std::clamp(static_cast<int>((level + 60.0) / 2.0), 0, 30);
        std::printf("\r             %2.0f s  %4.0f dB  %-30.*s",
                    std::max(0.0, SecondsToListen - SecondsSince(start)), level, bar,
                    "##############################");
        std::fflush(stdout);
        tenth.clear();
    }
    if (ofDevices) std::printf("\r%60s\r", "");
    listener.Hear(Samples(SampleRate / 2));
    listener.Release();
    return heard;
}

void Check::Hearing() {
    std::string error, understood;
    const Clock::time_point start = Clock::now();
    const std::unique_ptr<Recogniser> recogniser =
        Recogniser::Load(settings.modelFolder, settings.pronunciations, error);
    char took[60];
    std::snprintf(took, sizeof took, ", read in %.1f s", SecondsSince(start));
    Tell("model", settings.modelFolder + (recogniser ? took : ""), error);
    if (const std::string trouble = sound.MicrophoneTrouble(); !trouble.empty()) {
        Tell("hearing", "", trouble);
        return;
    }
    Listener listener([&](const std::string &phrase) {
        understood += (understood.empty() ? "\"" : ", \"") + phrase + "\"";
    });
    listener.SetRecogniser(recogniser.get());
    listener.SetPhrases(phrases);
    if (ofDevices) std::printf("%-12s Please say \"%s\" now.\n", "hearing", PhraseToHear);
    const Levels levels = MeasureLevels(Listen(listener));
    char found[120];
    std::snprintf(found, sizeof found, "speech %.0f dB, background %.0f dB, peak %.0f dB", levels.speech,
                  levels.background, levels.peak);
    Tell("level", found, AdviceOn(levels));
    if (!understood.empty() || !recogniser)
        Tell("understood", understood, recogniser ? "" : "nothing without a model");
    else
        Tell("understood", "", "nothing of the phrases");
}

int Check::Status() const {
    if (problems.empty()) std::printf("\nAll of it works.\n");
    if (!problems.empty()) std::printf("\nThis does not:\n");
    for (const std::string &problem : problems) std::printf("  %s\n", problem.c_str());
    return problems.empty() ? 0 : 1;
}

} // namespace

Levels MeasureLevels(const Samples &sound) {
    Levels levels;
    std::vector<double> tenths;
    const size_t length = SampleRate / 10;
    for (size_t i = 0; i + length <= sound.size(); i += length) tenths.push_back(LevelOf(&sound[i], length));
    std::sort(tenths.begin(), tenths.end());
    if (!tenths.empty()) {
        levels.background = tenths[tenths.size() / 10];
        levels.speech = tenths[tenths.size() * 9 / 10];
    }
    int loudest = 0;
    for (const int16_t sample : sound) {
        loudest = std::max(loudest, std::abs(int{sample}));
        if (std::abs(int{sample}) >= 32760) levels.clipped++;
    }
    levels.peak = Decibels(loudest);
    return levels;
}

std::string AdviceOn(const Levels &levels) {
    if (levels.peak <= -90.0) return "it is silent: is it muted, or another one meant?";
    if (levels.clipped > 10) return "too loud, it clips: turn it down";
    if (levels.speech < TooQuiet) return "too quiet: turn it up, or come nearer";
    if (levels.speech - levels.background < TooNear)
        return "the background is as loud as the speech, or nobody spoke";
    return "";
}

int CheckAll(Sound &sound, bool ofDevices, const Settings &settings, const std::string &context) {
    Check check(sound, ofDevices, settings);
    check.Devices();
    check.Phrases(context);
    check.Words();
    check.Voices();
    check.Speech();
    check.Hearing();
    return check.Status();
}

} // namespace fennic_voice
