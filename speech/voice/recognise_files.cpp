#include "speech/voice/recognise_files.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <numeric>

#include "speech/voice/phrase_file.h"
#include "speech/voice/recogniser.h"
#include "speech/voice/sound.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {

namespace {

const size_t Silence = SampleRate * 3 / 10; // samples, before and behind a recording that is cut close
// Power of a piece of noise, at most, times that of the quietest ones. Of eleven words in pink noise at 10
// dB, cut with a tenth of a second at each end, the noise found was on average 0.1 dB too soft, at most 0.6.
const double SpreadOfNoise = 2.5;
// Of a filter that takes off what is lower than 25 Hz.
const double OffsetKept = 0.99;

// Without the offset that sound devices leave: silence would be as loud as speech.
Samples WithoutOffset(const Samples &sound) {
    Samples free;
    double before = sound.empty() ? 0.0 : sound[0], last = 0.0;
    for (const int16_t sample : sound) {
        last = sample - before + OffsetKept * last;
        before = sample;
        free.push_back(static_cast<int16_t>(std::lround(std::clamp(last, -32768.0, 32767.0))));
    }
    return free;
}

// The part of a recording that is not silent, with so much of the rest on both sides.
std::span<const int16_t> WithoutEnds(const Samples &sound) {
    int loudest = 0;
    for (const int16_t sample : sound) loudest = std::max(loudest, std::abs(int{sample}));
    const auto isLoud = [&](int16_t sample) { return std::abs(int{sample}) * 50 > loudest; };
    const size_t first =
        static_cast<size_t>(std::find_if(sound.begin(), sound.end(), isLoud) - sound.begin());
    const size_t last =
        static_cast<size_t>(sound.rend() - std::find_if(sound.rbegin(), sound.rend(), isLoud));
    const size_t begin = first - std::min(first, Silence), end = std::min(last + Silence, sound.size());
    return std::span(sound).subspan(std::min(begin, end), end - std::min(begin, end));
}

double PowerOf(std::span<const int16_t> sound) {
    return std::accumulate(sound.begin(), sound.end(), 0.0, [](double sum, int16_t sample) {
        return sum + static_cast<double>(sample) * sample;
    });
}

// A second of what is to be heard where nobody speaks: the quietest pieces of the recording, each faded into
// the next. They are short, since a word that is cut close has no silence but some hundredths of a second.
Samples NoiseOf(const Samples &sound) {
    std::vector<double> powers;
    for (size_t begin = 0; begin + BlockSize <= sound.size(); begin += BlockSize)
        powers.push_back(PowerOf(std::span(sound).subspan(begin, BlockSize)));
    Samples noise(SampleRate, 0);
    if (powers.empty()) return noise;
    std::vector<double> sorted = powers;
    std::sort(sorted.begin(), sorted.end());
    const double most = SpreadOfNoise * sorted[sorted.size() / 20];
    std::vector<std::span<const int16_t>> pieces;
    for (size_t i = 0; i < powers.size(); i++)
        if (powers[i] <= most) pieces.push_back(std::span(sound).subspan(i * BlockSize, BlockSize));
    for (size_t begin = 0, piece = 0; begin + BlockSize <= noise.size(); begin += BlockSize / 2, piece++)
        for (size_t i = 0; i < BlockSize; i++) {
            const double share = std::sin(std::numbers::pi * (static_cast<double>(i) + 0.5) / BlockSize);
            const double sum = noise[begin + i] + share * pieces[piece % pieces.size()][i];
            noise[begin + i] = static_cast<int16_t>(std::clamp(sum, -32768.0, 32767.0));
        }
    return noise;
}

void HearRecording(Recogniser &recogniser, const Samples &recording) {
    const Samples sound = WithoutOffset(recording), noise = NoiseOf(sound);
    const std::span<const int16_t> silence = std::span(noise).first(Silence), part = WithoutEnds(sound);
    recogniser.Start(noise);
    recogniser.Hear(silence);
    for (size_t i = 0; i < part.size(); i += BlockSize)
        recogniser.Hear(part.subspan(i, std::min(BlockSize, part.size() - i)));
    recogniser.Hear(silence);
}

} // namespace

int RecogniseFiles(const Settings &settings, const std::string &context, const std::string &expected,
                   const std::vector<std::string> &recordings, bool withScores) {
    std::string error;
    std::vector<std::string> phrases, likely;
    if (!ReadPhraseFile(context, phrases) || (!expected.empty() && !ReadPhraseFile(expected, likely))) {
        std::fprintf(stderr, "fennic-voice: cannot read the phrases\n");
        return 1;
    }
    const std::unique_ptr<Recogniser> recogniser =
        Recogniser::Load(settings.modelFolder, settings.pronunciations, error);
    if (!recogniser) {
        std::fprintf(stderr, "fennic-voice: %s\n", error.c_str());
        return 1;
    }
    recogniser->SetPhrases(phrases, likely);
    int status = 0;
    for (const std::string &recording : recordings) {
        Samples sound;
        Heard heard;
        if (ReadWavFile(recording, sound, error)) {
            HearRecording(*recogniser, sound);
            heard = recogniser->Finish();
        } else {
            std::fprintf(stderr, "fennic-voice: %s: %s\n", recording.c_str(), error.c_str());
            status = 1;
        }
        std::fputs(Accept(heard) ? heard.phrase.c_str() : "", stdout);
        if (withScores)
            std::printf("\t%s\t%s\t%.2f", heard.phrase.c_str(), TextOf(heard.english).c_str(),
                        Confidence(heard));
        std::fputs("\n", stdout);
        std::fflush(stdout);
    }
    return status;
}

} // namespace fennic_voice
