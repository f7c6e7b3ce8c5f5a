// The built-in engine speaks with one woman's and one man's voice, both of 16,000 samples a second.
#include "speech/voice/synthesis.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "speech/voice/run_command.h"
#include "speech/voice/wav_file.h"

extern "C" {
#include <flite.h>
void usenglish_init(cst_voice *voice);
cst_lexicon *cmu_lex_init(void);
cst_voice *register_cmu_us_slt(const char *folder);
cst_voice *register_cmu_us_rms(const char *folder);
}

namespace fennic_voice {

namespace {

// Men among the voices that Apple's systems have had, and among those of the engines for Linux.
const char *const MensNames[] = {"aaron", "albert", "alex",   "arthur", "awb",    "bruce",  "daniel",
                                 "diego", "fred",   "gordon", "jonas",  "jorge",  "junior", "kal",
                                 "lee",   "luca",   "male",   "nathan", "oliver", "ralph",  "reed",
                                 "rishi", "rms",    "rocko",  "thomas", "tom",    "xander"};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

void ReplaceAll(std::string &text, const std::string &from, const std::string &to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

bool hasLettersOrDigits(const std::string &text) {
    return std::any_of(text.begin(), text.end(),
                       [](unsigned char c) { return c < 128 && std::isalnum(c) != 0; });
}

cst_voice *BuiltInVoice(bool isMan) {
    static cst_voice *const woman = register_cmu_us_slt(nullptr);
    static cst_voice *const man = register_cmu_us_rms(nullptr);
    return isMan ? man : woman;
}

bool SpeakBuiltIn(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error) {
    cst_voice *const engine = BuiltInVoice(voice.isMan);
    feat_set_float(engine->features, "duration_stretch", static_cast<float>(StretchOf(voice.rate)));
    cst_wave *const wave = flite_text_to_wave(text.c_str(), engine);
    if (!wave) {
        error = "the speech engine failed";
        return false;
    }
    sound.assign(wave->samples, wave->samples + wave->num_samples);
    delete_wave(wave);
    return true;
}

bool SpeakByCommand(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error) {
    std::string command = voice.command, output;
    ReplaceAll(command, "{rate}", std::to_string(voice.rate));
    ReplaceAll(command, "{stretch}", std::to_string(StretchOf(voice.rate)));
    return RunCommand(command, text + "\n", output, error) && ReadWav(output, sound, error);
}

} // namespace

bool isMansVoice(const std::string &identifier) {
    const std::string name = Lower(identifier.substr(identifier.rfind('.') + 1));
    return std::any_of(std::begin(MensNames), std::end(MensNames),
                       [&](const char *man) { return name == man; });
}

double StretchOf(int rate) {
    return std::exp2((50 - std::clamp(rate, 0, 100)) / 50.0);
}

bool Synthesise(const std::string &text, const VoiceChoice &voice, Samples &sound, std::string &error) {
    sound.clear();
    if (!voice.command.empty()) return SpeakByCommand(text, voice, sound, error);
    if (!hasLettersOrDigits(text)) {
        error = "a text without Latin letters or digits";
        return false;
    }
    return SpeakBuiltIn(text, voice, sound, error);
}

} // namespace fennic_voice
