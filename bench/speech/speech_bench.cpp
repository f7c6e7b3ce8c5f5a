// How well and how fast the voice understands: `fennic-speech-bench FOLDER [--few|--full] [--fit]`, the
// folder being made by make_sounds. The usual run hears six phrases of each voice in each condition, the full
// one four times as many, and with --few it is a third. With --fit it prints new weights for
// speech/voice/rejection.cpp, from every second voice, and what they do with the others.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <thread>

#include "bench/speech/fit_rejection.h"
#include "bench/speech/helper_bench.h"
#include "speech/voice/listener.h"
#include "speech/voice/phrase_file.h"
#include "speech/voice/sound.h"
#include "speech/voice/speaker.h"
#include "speech/voice/wav_file.h"

using namespace fennic_voice;
using namespace speech_bench;

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const double Clean = 1000.0;             // dB of signal to noise
const size_t Lead = SampleRate * 3 / 10; // sound before the speech that is heard
const size_t NoiseLead = SampleRate;     // before that, for the noise
const double NothingHeard = -100.0;      // stands for a confidence
const size_t ExpectedCount = 9;          // what the overlay shows on average

const size_t FewPhrases = 2, UsualPhrases = 6, FullPhrases = 24; // of a voice in each condition

// Of this program's own, whatever else the machine does.
double BusyMilliseconds() {
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double Milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

// The mean power of the pieces that are at most 20 dB softer than the loudest.
double PowerOfSpeech(const Samples &sound) {
    std::vector<double> powers;
    for (size_t i = 0; i + BlockSize <= sound.size(); i += BlockSize) {
        double power = 0.0;
        for (size_t j = 0; j < BlockSize; j++) power += static_cast<double>(sound[i + j]) * sound[i + j];
        powers.push_back(power / BlockSize);
    }
    const double most = powers.empty() ? 0.0 : *std::max_element(powers.begin(), powers.end());
    double sum = 0.0;
    int count = 0;
    for (double power : powers)
        if (power * 100.0 > most) {
            sum += power;
            count++;
        }
    return sum / std::max(count, 1);
}

// The sound between two silences, in pink noise (Paul Kellet's filter of white noise).
Samples WithNoise(const Samples &sound, double decibels, unsigned seed) {
    Samples padded(NoiseLead + Lead);
    padded.insert(padded.end(), sound.begin(), sound.end());
    padded.resize(padded.size() + Lead);
    if (decibels == Clean) return padded;
    std::mt19937 random(seed);
    std::normal_distribution<double> white;
    std::vector<double> pink(padded.size());
    double low = 0.0, middle = 0.0, high = 0.0, power = 0.0;
    for (double &value : pink) {
        const double next = white(random);
        low = 0.99765 * low + next * 0.0990460;
        middle = 0.96300 * middle + next * 0.2965164;
        high = 0.57000 * high + next * 1.0526913;
        value = low + middle + high + next * 0.1848;
        power += value * value / static_cast<double>(pink.size());
    }
    const double factor = std::sqrt(PowerOfSpeech(sound) / power * std::pow(10.0, -decibels / 10.0));
    for (size_t i = 0; i < padded.size(); i++)
        padded[i] = static_cast<int16_t>(std::clamp(padded[i] + factor * pink[i], -32768.0, 32767.0));
    return padded;
}

Samples Load(const fs::path &file) {
    Samples sound;
    std::string error;
    if (!ReadWavFile(file, sound, error)) std::fprintf(stderr, "%s: %s\n", file.c_str(), error.c_str());
    return sound;
}

std::vector<fs::path> Files(const fs::path &folder) {
    std::vector<fs::path> files;
    for (const auto &entry : fs::directory_iterator(folder)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

double MegabytesInUse() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::atof(line.c_str() + 6) / 1024.0;
    return 0.0;
}

class Bench {
public:
    Bench(fs::path folder, size_t phrasesOfAVoice) : folder(std::move(folder)), wanted(phrasesOfAVoice) {}
    bool Start();
    void Understand();
    void HearPeople();
    void Refuse();
    static void PrintHead();
    void PrintSums() const;
    void MeasureReaction();
    void MeasureSpeaking() const;
    void MeasureLoad();
    void MeasureProcess() const;
    void PrintRejection(bool fits) const;

private:
    struct Share {
        int right = 0, all = 0;
        void Add(bool isRight) { right += isRight ? 1 : 0, all++; }
    };

    const fs::path folder;
    const size_t wanted; // phrases of each voice in each condition
    std::vector<std::string> phrases;
    std::unique_ptr<Recogniser> recogniser;
    std::map<std::string, std::map<std::string, Share>> shares; // voice, condition
    std::vector<Example> examples;
    std::vector<double> goodConfidence, otherConfidence;

    static void PrintRow(const std::string &name, const std::map<std::string, Share> &row);
    Heard Hear(const Samples &sound);
    std::vector<std::string> ExpectedWith(const std::string &phrase, unsigned seed) const;
    void Remember(const Heard &heard, const std::string &said, size_t turn);
};

bool Bench::Start() {
    std::string error;
    if (!ReadPhraseFile(folder / "context.txt", phrases) || phrases.empty()) {
        std::fprintf(stderr, "no phrases in %s\n", folder.c_str());
        return false;
    }
    const double before = MegabytesInUse();
    const auto start = Clock::now();
    recogniser = Recogniser::Load(SPEECH_MODEL, {SPEECH_DATA "/pronunciations.txt"}, error);
    if (!recogniser) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    recogniser->SetPhrases(phrases, {});
    std::printf("%zu phrases; ready after %.0f ms; the recognition takes %.0f MB\n", phrases.size(),
                Milliseconds(Clock::now() - start), MegabytesInUse() - before);
    return true;
}

Heard Bench::Hear(const Samples &sound) {
    recogniser->Start(std::span(sound).first(NoiseLead));
    for (size_t i = NoiseLead; i < sound.size(); i += BlockSize)
        recogniser->Hear(std::span(sound).subspan(i, std::min(BlockSize, sound.size() - i)));
    return recogniser->Finish();
}

std::vector<std::string> Bench::ExpectedWith(const std::string &phrase, unsigned seed) const {
    std::mt19937 random(seed);
    std::vector<std::string> expected;
    if (!phrase.empty()) expected.push_back(phrase);
    while (expected.size() < ExpectedCount) expected.push_back(phrases[random() % phrases.size()]);
    return expected;
}

// turn: of the voice; every second one is fitted to.
void Bench::Remember(const Heard &heard, const std::string &said, size_t turn) {
    const bool isGood = heard.phrase == said;
    if (said.empty() && heard.phrase.empty()) otherConfidence.push_back(NothingHeard);
    if (heard.phrase.empty() || (!said.empty() && !isGood)) return; // nothing to refuse; another mistake
    examples.push_back({SignsOf(heard), isGood, turn % 2 == 0});
    (isGood ? goodConfidence : otherConfidence).push_back(Confidence(heard));
}

void Bench::Understand() {
    size_t turn = 0;
    for (const fs::path &voice : Files(folder / "phrases")) {
        turn++;
        // One condition after the other, as of a pilot in one aircraft.
        for (const auto &[name, decibels] :
             {std::pair("clean", Clean), std::pair("20 dB", 20.0), std::pair("10 dB", 10.0)})
            for (size_t k = 0; k < wanted; k++) {
                // Each voice says other phrases, so that all are said.
                const size_t number = (k * phrases.size() / wanted + turn * 5) % phrases.size();
                const std::string &phrase = phrases[number];
                const auto seed = static_cast<unsigned>(number);
                const Samples sound =
                    WithNoise(Load(voice / (std::to_string(number) + ".wav")), decibels, seed);
                for (bool isExpected : {false, true}) {
                    recogniser->SetPhrases(phrases, isExpected ? ExpectedWith(phrase, seed)
                                                               : std::vector<std::string>());
                    const Heard heard = Hear(sound);
                    shares[voice.filename()][name + std::string(isExpected ? " exp." : "")].Add(
                        heard.phrase == phrase && Accept(heard));
                    Remember(heard, phrase, turn);
                }
            }
        PrintRow(voice.filename(), shares[voice.filename()]);
    }
}

// People who say words that are on the list.
void Bench::HearPeople() {
    std::vector<std::string> words;
    ReadPhraseFile(folder / "people.context.txt", words);
    std::swap(words, phrases);
    std::ifstream list(folder / "people.txt");
    size_t number = 0;
    for (std::string line; std::getline(list, line); number++) {
        if (number % (FullPhrases / wanted) != 0) continue;
        const std::string name = line.substr(0, line.find('\t')), word = line.substr(line.find('\t') + 1);
        const Samples sound = Load(folder / "people" / (name + ".wav"));
        for (bool isExpected : {false, true}) {
            recogniser->SetPhrases(phrases, isExpected ? ExpectedWith(word, static_cast<unsigned>(number))
                                                       : std::vector<std::string>());
            const Heard heard = Hear(WithNoise(sound, Clean, 0));
            shares["people"][isExpected ? "clean exp." : "clean"].Add(heard.phrase == word && Accept(heard));
            Remember(heard, word, number / 4);
        }
    }
    std::swap(words, phrases);
    PrintRow("people", shares["people"]);
}

void Bench::Refuse() {
    const size_t sentences = wanted + wanted / 4 + 1;
    unsigned seed = 0;
    size_t turn = 0;
    for (const fs::path &voice : Files(folder / "foreign")) {
        turn++;
        const std::vector<fs::path> files = Files(voice);
        for (size_t k = 0; k < std::min(sentences, files.size()); k++) {
            const Samples sound =
                WithNoise(Load(files[k * files.size() / std::min(sentences, files.size())]), Clean, 0);
            const bool isExpected = ++seed % 2 == 0;
            recogniser->SetPhrases(phrases, isExpected ? ExpectedWith("", seed) : std::vector<std::string>());
            const Heard heard = Hear(sound);
            shares[voice.filename()]["foreign"].Add(Accept(heard));
            Remember(heard, "", turn);
        }
        PrintRow(voice.filename(), {{"foreign", shares[voice.filename()]["foreign"]}});
    }
}

const char *const Conditions[] = {"clean",      "20 dB",      "10 dB",  "clean exp.",
                                  "20 dB exp.", "10 dB exp.", "foreign"};

// As soon as a row is known it is printed: the whole table takes long.
void Bench::PrintHead() {
    std::printf(
        "\nUnderstood, in %%, without and with the expected phrases; and foreign sentences accepted\n%-32s",
        "");
    for (const char *condition : Conditions) std::printf("%11s", condition);
    std::printf("\n");
}

void Bench::PrintRow(const std::string &name, const std::map<std::string, Share> &row) {
    std::printf("%-32s", name.c_str());
    for (const char *condition : Conditions) {
        const auto found = row.find(condition);
        if (found == row.end())
            std::printf("%11s", "");
        else
            std::printf("%11.1f", 100.0 * found->second.right / found->second.all);
    }
    std::printf("\n");
}

void Bench::PrintSums() const {
    std::map<std::string, Share> sums;
    for (const auto &[voice, row] : shares)
        for (const auto &[condition, share] : row) {
            sums[condition].right += share.right;
            sums[condition].all += share.all;
        }
    PrintRow("all", sums);
    std::printf("%-32s", "recordings");
    for (const char *condition : Conditions) std::printf("%11d", sums[condition].all);
    std::printf("\n");
}

// From the end of the sound, as the listener gets it block by block, to the phrase: the blocks that it waits
// for, and what it computes in the last one.
void Bench::MeasureReaction() {
    std::vector<double> times, pauses;
    double busy = 0.0;
    double heardSeconds = 0.0;
    const fs::path voice = folder / "phrases" / "flite_slt";
    for (size_t number = 0; number < phrases.size(); number += 3 * FullPhrases / wanted) {
        Samples sound = Load(voice / (std::to_string(number) + ".wav"));
        size_t end = sound.size();
        const int loudest = std::abs(*std::max_element(
            sound.begin(), sound.end(), [](int16_t a, int16_t b) { return std::abs(a) < std::abs(b); }));
        while (end > 0 && std::abs(sound[end - 1]) * 30 < loudest) end--;
        sound.resize(end);
        sound.resize(end + SampleRate);
        bool isUnderstood = false;
        Listener listener([&](const std::string &) { isUnderstood = true; });
        listener.SetRecogniser(recogniser.get());
        listener.SetPhrases(phrases);
        listener.SetExpected(ExpectedWith(phrases[number], static_cast<unsigned>(number)));
        listener.Hear(Samples(Lead));
        listener.Press();
        for (size_t i = 0; i < sound.size() && !isUnderstood; i += BlockSize) {
            const size_t next = std::min(i + BlockSize, sound.size());
            const double start = BusyMilliseconds();
            listener.Hear({sound.begin() + static_cast<std::ptrdiff_t>(i),
                           sound.begin() + static_cast<std::ptrdiff_t>(next)});
            const double took = BusyMilliseconds() - start;
            busy += took;
            heardSeconds += static_cast<double>(BlockSize) / SampleRate;
            if (!isUnderstood) continue;
            pauses.push_back((static_cast<double>(next) - static_cast<double>(end)) * 1000.0 / SampleRate);
            times.push_back(pauses.back() + took);
        }
        listener.Release();
    }
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    std::sort(pauses.begin(), pauses.end());
    std::printf(
        "\nFrom the end of speech to the phrase, button held: half within %.0f ms, 90 %% within %.0f ms (%zu "
        "phrases)\nof that the pause it waits for: half within %.0f ms\nHearing takes %.2f of the time\n",
        times[times.size() / 2], times[times.size() * 9 / 10], times.size(), pauses[pauses.size() / 2],
        busy / 1000.0 / heardSeconds);
}

void Bench::MeasureSpeaking() const {
    PrepareVoices();
    for (const auto &[name, voice] : {std::pair("woman", BuiltIn::Woman), std::pair("man", BuiltIn::Man)}) {
        double longest = 0.0;
        for (const char *text :
             {"Gear up.", "Before start checklist.",
              "There is no bleed air, Sir. The APU or ground air first, and then the engines."}) {
            Speaker speaker(false);
            VoiceChoice choice;
            choice.builtIn = voice;
            speaker.SetVoice(choice);
            Samples block(BlockSize);
            const auto start = Clock::now();
            speaker.Say(text);
            const auto isSilent = [&] {
                return std::all_of(block.begin(), block.end(), [](int16_t s) { return s == 0; });
            };
            for (speaker.Speak(block); isSilent() && Clock::now() - start < std::chrono::seconds(10);
                 speaker.Speak(block))
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            longest = std::max(longest, Milliseconds(Clock::now() - start));
        }
        std::printf("From say> to the first sample, %s: at most %.0f ms\n", name, longest);
    }
}

// Words of the dictionary, one to four of them in each phrase.
std::vector<std::string> RandomPhrases(size_t count) {
    std::ifstream dictionary(SPEECH_MODEL "/cmudict-en-us.dict");
    std::vector<std::string> words, made;
    for (std::string line; std::getline(dictionary, line);) {
        const std::string word = line.substr(0, line.find(' '));
        if (std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; }))
            words.push_back(word);
    }
    std::mt19937 random(1);
    while (made.size() < count) {
        std::string phrase = words[random() % words.size()];
        for (size_t more = random() % 4; more > 0; more--) phrase += " " + words[random() % words.size()];
        made.push_back(phrase);
    }
    return made;
}

// A list of phrases as nobody would write it: hardly two begin alike, so that there is nothing to share.
void Bench::MeasureLoad() {
    std::vector<std::string> many = RandomPhrases(5000 - phrases.size());
    many.insert(many.end(), phrases.begin(), phrases.end());
    double start = BusyMilliseconds();
    recogniser->SetPhrases(many, {});
    const double load = BusyMilliseconds() - start;
    double busy = 0.0, seconds = 0.0;
    Share understood;
    for (size_t number = 0; number < phrases.size(); number += phrases.size() / 4) {
        const Samples sound =
            WithNoise(Load(folder / "phrases" / "flite_slt" / (std::to_string(number) + ".wav")), Clean, 0);
        start = BusyMilliseconds();
        const Heard heard = Hear(sound);
        busy += (BusyMilliseconds() - start) / 1000.0;
        seconds += static_cast<double>(sound.size()) / SampleRate;
        understood.Add(heard.phrase == phrases[number] && Accept(heard));
    }
    std::printf("5,000 phrases: ready after %.0f ms, hearing takes %.2f of the time, %d of %d understood\n",
                load, busy / seconds, understood.right, understood.all);
    recogniser->SetPhrases(phrases, {});
}

void Bench::MeasureProcess() const {
    MeasureMemory(folder, folder / "phrases" / "flite_slt" / "1.wav", phrases[1]);
    MeasureCompanion();
}

void Bench::PrintRejection(bool fits) const {
    std::printf("\nRefusing, over all recordings above (accepted is what has a confidence above 0)\n");
    PrintCurve(goodConfidence, otherConfidence);
    if (!fits) return;
    const Weights weights = FitRejection(examples);
    std::vector<double> good, other;
    for (const Example &example : examples)
        if (!example.isFitted) (example.isGood ? good : other).push_back(weights.ConfidenceOf(example.signs));
    std::printf("With these weights, the voices that were not fitted to\n");
    PrintCurve(good, other);
}

} // namespace

int main(int count, char **words) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    size_t phrasesOfAVoice = UsualPhrases;
    bool fits = false;
    std::string folder;
    for (int i = 1; i < count; i++) {
        if (std::strcmp(words[i], "--full") == 0)
            phrasesOfAVoice = FullPhrases;
        else if (std::strcmp(words[i], "--few") == 0)
            phrasesOfAVoice = FewPhrases;
        else if (std::strcmp(words[i], "--fit") == 0)
            fits = true;
        else
            folder = words[i];
    }
    Bench bench(folder, phrasesOfAVoice);
    if (folder.empty() || !bench.Start()) return 2;
    bench.MeasureProcess();
    bench.MeasureSpeaking();
    bench.MeasureReaction();
    bench.MeasureLoad();
    Bench::PrintHead();
    bench.Understand();
    bench.HearPeople();
    bench.Refuse();
    bench.PrintSums();
    bench.PrintRejection(fits);
}
