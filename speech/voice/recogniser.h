// Understands which of a list of phrases was said, or that it was none of them.
//
// Decoders hear the same sound. Some know the phrases alone and always find one that fits least badly: one
// hears the sound as it is, the others with the axis of frequencies stretched, for voices of people who are
// smaller or larger than usual; the one that finds what fits best is believed, unless what the first one
// finds would be refused. Another one knows English. A phrase that was really said fits about as well as
// whatever English finds; any other sound fits English much better, and that is how it is refused (see
// rejection.h).
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "speech/voice/front_end.h"
#include "speech/voice/pronunciations.h"
#include "speech/voice/rejection.h"
#include "speech/voice/samples.h"

namespace fennic_voice {

// What was heard up to a moment in which nobody speaks.
struct SoFar {
    Heard heard;                // without a phrase when it is the beginning of one
    double silence = 0.0;       // seconds since the last word, as both decoders hear it
    double phraseSilence = 0.0; // as the one that knows the phrases does
    double quiet = 0.0;         // seconds since anything was loud
    bool hasSpeech = false;
    bool goesOn = false;         // the phrase is the beginning of a longer one, too,
    bool goesOnExpected = false; // and of a longer one that is expected
};

class Recogniser {
public:
    // folder: the model's, which holds en-us/, en-us.lm.bin and cmudict-en-us.dict. Null, with the reason in
    // error, when it cannot be loaded. ears: how many decoders know the phrases, at most Stretches.size().
    // Takes about a second.
    static std::unique_ptr<Recogniser> Load(const std::string &folder,
                                            const std::vector<std::string> &dictionaries, std::string &error,
                                            size_t ears = Stretches.size());
    ~Recogniser();
    Recogniser(const Recogniser &) = delete;
    Recogniser &operator=(const Recogniser &) = delete;

    // The phrases to understand, in lower case, words separated by blanks; those that are expected now are
    // likelier. Not between Start and Finish. A phrase with a word that nobody can pronounce, or with more
    // than 30 words, is left out; the first ten are told to stderr.
    void SetPhrases(const std::vector<std::string> &phrases, const std::vector<std::string> &expected);

    // The phrases left out.
    const std::vector<std::string> &LeftOut() const { return leftOut; }

    // One utterance: Start, Hear as often as sound comes, Finish. Finish gives what was heard and how sure
    // it is; the phrase is empty when nothing was, or nothing louder than the noise. before: the sound until
    // now, in which nobody spoke, for the noise; without half a second of it the noise is taken to be that of
    // the utterance before.
    void Start(std::span<const int16_t> before = {});
    void Hear(std::span<const int16_t> sound);
    Heard Finish();

    // While hearing: what would be heard if it ended now. Nothing while somebody speaks.
    SoFar HeardSoFar();

private:
    struct Engines;
    std::unique_ptr<Engines> engines;
    Pronunciations pronunciations;
    std::vector<std::string> leftOut;

    explicit Recogniser(std::unique_ptr<Engines> engines);
    bool Teach(const std::string &word);
};

} // namespace fennic_voice
