// The pilot is brought to one loudness whoever speaks, so that the noise's distance from it is what was asked
// for; a recording is left as it is.
#include "simhost/sound/microphone.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <fstream>
#include <map>
#include <vector>

#include "simhost/sound/run_program.h"
#include "speech/voice/wav_file.h"

namespace simhost {

namespace {

using fennic_voice::Samples;

constexpr double SpeechRms =
    32768 * 0.09; // -21 dB of full scale: peaks of speech lie some 12 to 15 dB higher

// White noise through three poles and a zero, flat to within half a dB of 1/f between 10 Hz and 8 kHz; the
// filter is Paul Kellet's ("economy"), for some 44 kHz, which moves its band and not its slope.
class PinkNoise {
public:
    double Next() {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        const double white = static_cast<double>(state >> 11) / 4503599627370496.0 - 1.0;
        slow = 0.99765 * slow + white * 0.0990460;
        middle = 0.96300 * middle + white * 0.2965164;
        fast = 0.57000 * fast + white * 1.0526913;
        return (slow + middle + fast + white * 0.1848) / Rms;
    }

private:
    static constexpr double Rms = 1.73; // of what comes out
    std::uint64_t state = 88172645463325252;
    double slow = 0, middle = 0, fast = 0;
};

struct Utterance {
    std::string text;
    Samples sound;
};

struct Microphone {
    std::deque<Utterance> waiting; // the first is being heard
    std::size_t next = 0;          // its first sample not heard yet
    PinkNoise noise;
    double noiseBelow = QuietRoom;
    std::map<std::string, Samples> spoken; // by voice and text: a flight says the same things again
};
Microphone microphone;

void BringToOneLoudness(Samples &sound) {
    double power = 0;
    for (const std::int16_t sample : sound) power += static_cast<double>(sample) * sample;
    if (power == 0) return;
    const double gain = SpeechRms / std::sqrt(power / static_cast<double>(sound.size()));
    for (std::int16_t &sample : sound)
        sample = static_cast<std::int16_t>(std::clamp(sample * gain, -32767.0, 32767.0));
}

// The built-in voices: whatever the pilot has set for his first officer, a flight sounds the same everywhere.
bool Synthesise(const std::string &text, const PilotsVoice &voice, const std::string &program,
                const std::string &folder, Samples &sound, std::string &error) {
    const std::string input = folder + "pilot.txt", output = folder + "pilot.wav";
    {
        std::ofstream file(input);
        file << "rate>" << voice.rate << "\nsetvoice>" << (voice.isWoman ? "female" : "male") << "\nsay>";
        for (const char character : text) file << (character == '\n' ? ' ' : character);
        file << '\n';
    }
    const bool isSaid =
        RunProgram({program, "--loudspeaker", output, "--settings", "/dev/null", "--model", folder}, input);
    if (!isSaid) error = program + " does not run";
    const bool isSpoken = isSaid && fennic_voice::ReadWavFile(output, sound, error);
    std::remove(input.c_str());
    std::remove(output.c_str());
    if (!isSpoken) return false;
    const auto isHeard = [](std::int16_t sample) { return sample != 0; };
    sound.erase(sound.begin(), std::find_if(sound.begin(), sound.end(), isHeard));
    sound.erase(std::find_if(sound.rbegin(), sound.rend(), isHeard).base(), sound.end());
    if (sound.empty()) error = "the voice has no sound for it";
    BringToOneLoudness(sound);
    return !sound.empty();
}

} // namespace

bool SpeakIntoMicrophone(const std::string &text, const PilotsVoice &voice, const std::string &program,
                         const std::string &folder, double &seconds, std::string &error) {
    Samples sound;
    const bool isRecording = text.ends_with(".wav");
    if (isRecording) {
        if (!fennic_voice::ReadWavFile(text, sound, error)) return false;
    } else {
        Samples &known =
            microphone.spoken[std::to_string(voice.rate) + (voice.isWoman ? " w " : " m ") + text];
        if (known.empty() && !Synthesise(text, voice, program, folder, known, error)) return false;
        sound = known;
    }
    seconds = static_cast<double>(sound.size()) / SoundRate;
    const std::string told = isRecording ? text.substr(text.rfind('/') + 1) : text;
    if (!sound.empty()) microphone.waiting.push_back({told, std::move(sound)});
    return true;
}

void SetMicrophoneNoise(double decibelsBelow) {
    microphone.noiseBelow = decibelsBelow;
}

SoundBlock HearMicrophone(std::string &begun) {
    SoundBlock block;
    begun.clear();
    const double gain = SpeechRms * std::pow(10.0, -microphone.noiseBelow / 20);
    for (std::int16_t &sample : block) {
        double value = microphone.noise.Next() * gain;
        if (!microphone.waiting.empty()) {
            const Utterance &utterance = microphone.waiting.front();
            if (microphone.next == 0) begun = utterance.text;
            value += utterance.sound[microphone.next++];
            if (microphone.next == utterance.sound.size()) {
                microphone.waiting.pop_front();
                microphone.next = 0;
            }
        }
        sample = static_cast<std::int16_t>(std::lround(std::clamp(value, -32767.0, 32767.0)));
    }
    return block;
}

bool isPilotSpeaking() {
    return !microphone.waiting.empty();
}

void ResetMicrophone() {
    microphone = Microphone();
}

} // namespace simhost
