#include "speech/voice/recognise_files.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "speech/voice/phrase_file.h"
#include "speech/voice/recogniser.h"
#include "speech/voice/wav_file.h"

namespace fennic_voice {

namespace {

const size_t Silence = SampleRate * 3 / 10; // samples, before and behind a recording that is cut close

void HearRecording(Recogniser &recogniser, const Samples &sound) {
    const Samples silence(Silence, 0);
    recogniser.Hear(silence);
    for (size_t i = 0; i < sound.size(); i += SampleRate / 50)
        recogniser.Hear(std::span(sound).subspan(i, std::min<size_t>(SampleRate / 50, sound.size() - i)));
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
            recogniser->Start();
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
