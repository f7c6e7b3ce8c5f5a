// The built-in engine speaks with voices of 16,000 samples a second.
#include "speech/voice/synthesis.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "speech/voice/run_command.h"
#include "speech/voice/system.h"
#include "speech/voice/wav_file.h"

extern "C" {
#include <flite.h>
void usenglish_init(cst_voice *voice);
cst_lexicon *cmu_lex_init(void);
cst_voice *register_cmu_us_slt(const char *folder);
cst_voice *register_cmu_us_rms(const char *folder);
cst_voice *register_cmu_us_awb(const char *folder);
}

namespace fennic_voice {

namespace {

const double WordsPerMinute = 185.0;        // at a rate of 50: as usual with the systems' voices
const double MostHaste = 0.67;              // of the usual stretch
const int Quiet = 60;                       // what is quieter than this, of 32,767, is silence
const size_t KeptSilence = SampleRate / 25; // samples, at either end: consonants begin softly

struct Engine {
    cst_voice *voice = nullptr;
    double gain = 1.0; // to a mean power of 19 dB below full scale, which no text's peak takes to its limit
};

Engine EngineOf(BuiltIn voice) {
    static const Engine woman{register_cmu_us_slt(nullptr), 0.75}, man{register_cmu_us_rms(nullptr), 1.4},
        scotsman{register_cmu_us_awb(nullptr), 0.97};
    return voice == BuiltIn::Woman ? woman : voice == BuiltIn::Man ? man : scotsman;
}

void ReplaceAll(std::string &text, const std::string &from, const std::string &to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// The engine reads one byte a character: typographic signs become the plain ones, and what has no Latin
// letter is left out.
std::string InPlainLetters(std::string text) {
    const std::pair<const char *, const char *> signs[] = {{"’", "'"},  {"‘", "'"},        {"“", "\""},
                                                           {"”", "\""}, {"–", ", "},       {"—", ", "},
                                                           {"…", "."},  {"°", " degrees "}};
    for (const auto &[sign, plain] : signs) ReplaceAll(text, sign, plain);
    std::erase_if(text, [](unsigned char c) { return c >= 128; });
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 32 || c == 127; }, ' ');
    return text;
}

bool hasLettersOrDigits(const std::string &text) {
    return std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalnum(c) != 0; });
}

void CutSilence(Samples &sound) {
    const auto isLoud = [](int16_t sample) { return std::abs(int{sample}) > Quiet; };
    const auto first = std::find_if(sound.begin(), sound.end(), isLoud);
    const auto last = std::find_if(sound.rbegin(), sound.rend(), isLoud).base();
    const auto before = std::min<std::ptrdiff_t>(first - sound.begin(), KeptSilence);
    const auto behind = std::min<std::ptrdiff_t>(sound.end() - last, KeptSilence);
    if (first >= last)
        sound.clear();
    else
        sound = Samples(first - before, last + behind);
}

bool SpeakOnce(const std::string &text, const Engine &engine, double stretch, Samples &sound) {
    feat_set_float(engine.voice->features, "duration_stretch", static_cast<float>(stretch));
    cst_wave *const wave = flite_text_to_wave(text.c_str(), engine.voice);
    if (!wave) return false;
    sound.resize(static_cast<size_t>(std::max(wave->num_samples, 0)));
    for (size_t i = 0; i < sound.size(); i++)
        sound[i] =
            static_cast<int16_t>(std::clamp(std::lround(wave->samples[i] * engine.gain), -32767L, 32767L));
    delete_wave(wave);
    CutSilence(sound);
    return true;
}

bool SpeakBuiltIn(const std::string &text, const VoiceChoice &voice, double given, Samples &sound,
                  std::string &error) {
    const std::string plain = InPlainLetters(text);
    if (!hasLettersOrDigits(plain)) {
        error = "a text without Latin letters or digits";
        return false;
    }
    const Engine engine = EngineOf(voice.builtIn);
    const double stretch = StretchOf(voice.rate);
    if (!SpeakOnce(plain, engine, stretch, sound)) {
        error = "the speech engine failed";
        return false;
    }
    const double taken = static_cast<double>(sound.size()) / SampleRate;
    return taken <= given
           || SpeakOnce(plain, engine, stretch * std::max((given - 0.05) / taken, MostHaste), sound);
}

// A file for a command to write to, which is gone with this.
struct TemporaryFile {
    const std::string path = MakeTemporaryWav();
    TemporaryFile() = default;
    ~TemporaryFile() { std::remove(path.c_str()); }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;
};

bool SpeakByCommand(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error) {
    std::string command = voice.command, output;
    const double stretch = StretchOf(voice.rate);
    ReplaceAll(command, "{rate}", std::to_string(voice.rate));
    ReplaceAll(command, "{stretch}", std::to_string(stretch));
    ReplaceAll(command, "{words}", std::to_string(std::lround(WordsPerMinute / stretch)));
    if (command.find("{wav}") == std::string::npos) {
        if (!RunCommand(command, text + "\n", output, error) || !ReadWav(output, sound, error)) return false;
    } else {
        const TemporaryFile file;
        ReplaceAll(command, "{wav}", QuotedForCommand(file.path));
        if (!RunCommand(command, text + "\n", output, error) || !ReadWavFile(file.path, sound, error))
            return false;
    }
    CutSilence(sound);
    return true;
}

} // namespace

size_t CountCharacters(std::string_view text) {
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

double StretchOf(int rate) {
    return std::exp2((50 - std::clamp(rate, 0, 100)) / 50.0);
}

double SecondsGiven(size_t characters, int rate) {
    return (0.1 * static_cast<double>(characters) + 1.0) * StretchOf(rate);
}

void PrepareVoices() {
    Samples sound;
    for (BuiltIn voice : {BuiltIn::Woman, BuiltIn::Man, BuiltIn::Scotsman})
        SpeakOnce("a", EngineOf(voice), 1.0, sound); // the first time takes longer
}

bool Synthesise(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error,
                double given) {
    sound.clear();
    error.clear();
    if (given <= 0.0) given = SecondsGiven(CountCharacters(text), voice.rate);
    if (!voice.command.empty()) {
        if (SpeakByCommand(text, voice, sound, error)) return true;
        error = "\"" + voice.command + "\" " + error + "; the built-in voice speaks instead";
        std::string second;
        return SpeakBuiltIn(text, voice, given, sound, second);
    }
    return SpeakBuiltIn(text, voice, given, sound, error);
}

} // namespace fennic_voice
