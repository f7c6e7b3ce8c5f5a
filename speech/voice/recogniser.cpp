// The scores of all decoders are comparable because each normalises a frame by the best of all senones, not
// of those that happen to be active (-compallsen).
#include "speech/voice/recogniser.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>

extern "C" {
#include <feat.h>
#include <pocketsphinx.h>
#include <sphinxbase/err.h>
}

#include "speech/voice/front_end.h"
#include "speech/voice/grammar.h"

namespace fennic_voice {

namespace {

struct FreeDecoder {
    void operator()(ps_decoder_t *decoder) const { ps_free(decoder); }
};
using Decoder = std::unique_ptr<ps_decoder_t, FreeDecoder>;

const size_t MostWords = 30; // of a phrase
const size_t MostTold = 10;  // phrases that are left out
// The mean of speech that the model's makers give, until some was heard.
const Cepstrum FirstMean = {41.00F, -5.29F, -0.12F, 5.09F,  2.48F,  -4.07F, -1.37F,
                            -1.78F, -5.08F, -2.05F, -6.45F, -1.42F, 1.17F};
// Sounds of words that are searched in a frame. A list of thousands of phrases that begin with as many words
// would keep all of them alive, and hearing would not keep up.
const size_t ManyPhrases = 1000;
const int MostSounds = 10000, MostOfMany = 1500;
// Of the probability, for the phrases that are expected now. The others are heard as well in silence, but in
// noise the expected ones are.
const double ExpectedShare = 0.9999;
// By how much a stretched ear must fit better before it is believed.
const int32 BetterEar = 50;

Decoder MakeDecoder(const std::string &folder, const std::vector<std::string> &settings) {
    std::vector<std::string> words = {"fennic-voice", "-hmm", folder + "/en-us", "-logfn", "/dev/null",
                                      "-compallsen",  "yes",  "-bestpath",       "no"};
    words.insert(words.end(), settings.begin(), settings.end());
    std::vector<char *> arguments;
    for (std::string &word : words) arguments.push_back(word.data());
    cmd_ln_t *config =
        cmd_ln_parse_r(nullptr, ps_args(), static_cast<int>(arguments.size()), arguments.data(), TRUE);
    Decoder decoder(config ? ps_init(config) : nullptr);
    if (config) cmd_ln_free_r(config);
    if (decoder) ps_get_feat(decoder.get())->cmn = CMN_NONE; // frames come without the mean
    return decoder;
}

bool isSilence(std::string_view word) {
    return word.empty() || word[0] == '<' || word[0] == '[' || word[0] == '+' || word[0] == '(';
}

// "nine(2)" is the word nine.
std::string WithoutVariant(std::string_view word) {
    return std::string(word.substr(0, word.find('(')));
}

// The best path of a decoder so far.
std::vector<HeardWord> PathOf(ps_decoder_t *decoder) {
    std::vector<HeardWord> path;
    for (ps_seg_t *segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
        int first = 0, last = 0;
        int32 acoustic = 0, language = 0, backOff = 0;
        ps_seg_frames(segment, &first, &last);
        ps_seg_prob(segment, &acoustic, &language, &backOff);
        const char *word = ps_seg_word(segment);
        HeardWord heard;
        heard.frames = last - first + 1;
        heard.acoustic = acoustic;
        heard.language = language;
        if (!isSilence(word)) {
            heard.word = WithoutVariant(word);
            if (char *phones = ps_lookup_word(decoder, word)) {
                heard.phones = phones;
                ckd_free(phones);
            }
        }
        path.push_back(std::move(heard));
    }
    return path;
}

void TellLeftOut(const std::vector<std::string> &phrases) {
    for (size_t i = 0; i < std::min(phrases.size(), MostTold); i++)
        std::fprintf(stderr, "reco 1 cannot listen for \"%.100s\": %s\n", phrases[i].c_str(),
                     WordsOf(phrases[i]).size() > MostWords ? "too many words"
                                                            : "a word that nobody can pronounce");
    if (phrases.size() > MostTold)
        std::fprintf(stderr, "reco 1 cannot listen for %zu phrases more\n", phrases.size() - MostTold);
}

// Of the loudest frame that belongs to a word.
double LoudestOf(const std::vector<HeardWord> &path, std::span<const Cepstrum> frames) {
    double loudest = LoudnessOf(Cepstrum());
    size_t frame = 0;
    for (const HeardWord &word : path) {
        const size_t end = std::min(frame + static_cast<size_t>(word.frames), frames.size());
        for (; frame < end; frame++)
            if (!word.word.empty()) loudest = std::max(loudest, LoudnessOf(frames[frame]));
    }
    return loudest;
}

int SilenceAtEnd(const std::vector<HeardWord> &path) {
    int frames = 0;
    for (auto word = path.rbegin(); word != path.rend() && word->word.empty(); ++word) frames += word->frames;
    return frames;
}

// Hears the phrases, with the axis of frequencies stretched as that of its frames is.
struct Ear {
    Decoder decoder;
    Cepstrum mean = FirstMean;    // of the speech so far, with this microphone
    std::vector<Cepstrum> frames; // of the utterance
};

} // namespace

struct Recogniser::Engines {
    std::unique_ptr<FrontEnd> front;
    std::vector<Ear> ears;
    size_t used = 1;                                           // of the ears
    Decoder english;                                           // hears what the first ear does
    std::set<std::string, std::less<>> begins, expectedBegins; // of longer phrases, of longer expected ones
    std::set<std::string, std::less<>> wholes;
    std::map<std::string, int> ways;             // to say each word that the decoder was taught
    std::set<std::string, std::less<>> expected; // phrases
    bool hasPhrases = false;
    bool isHearing = false;

    std::span<Ear> Used() { return std::span(ears).first(used); }
    Heard HeardBy(const Ear &ear) const;
    Heard HeardByBest();
};

Heard Recogniser::Engines::HeardBy(const Ear &ear) const {
    Heard heard;
    heard.words = PathOf(ear.decoder.get());
    heard.english = PathOf(english.get());
    const std::string text = TextOf(heard.words);
    if (wholes.contains(text)) heard.phrase = text;
    heard.isExpected = expected.contains(heard.phrase);
    heard.loudness = LoudestOf(heard.words, ears[0].frames);
    return heard;
}

// By the ear that finds what fits best. English hears what the first one does, so what that one refuses is
// refused, and where both find the same phrase the first one's signs tell how sure it is.
Heard Recogniser::Engines::HeardByBest() {
    Heard first = HeardBy(ears[0]);
    int32 most = 0;
    if (!ps_get_hyp(ears[0].decoder.get(), &most) || !Accept(first)) return first;
    most += BetterEar;
    const Ear *best = nullptr;
    for (const Ear &ear : Used().subspan(1)) {
        int32 score = 0;
        if (!ps_get_hyp(ear.decoder.get(), &score) || score <= most) continue;
        most = score;
        best = &ear;
    }
    if (!best) return first;
    Heard other = HeardBy(*best);
    return other.phrase == first.phrase ? first : other;
}

Recogniser::Recogniser(std::unique_ptr<Engines> engines) : engines(std::move(engines)) {}
Recogniser::~Recogniser() {
    Finish(); // a decoder that is freed while it hears leaves memory behind
}

std::unique_ptr<Recogniser> Recogniser::Load(const std::string &folder,
                                             const std::vector<std::string> &dictionaries, std::string &error,
                                             size_t ears) {
    err_set_logfp(nullptr);
    auto engines = std::make_unique<Engines>();
    engines->front = FrontEnd::Load(folder);
    engines->ears.resize(ears);
    // Few phrases are soon searched; in noise the right one falls far behind before it catches up. Silence is
    // as likely as a word, or "up" would be heard in the breath behind "flaps".
    for (Ear &ear : engines->ears)
        ear.decoder = MakeDecoder(folder, {"-lw", "6.5", "-silprob", "0.3", "-fsgusefiller", "yes",
                                           "-fsgusealtpron", "no", "-beam", "1e-120", "-pbeam", "1e-120",
                                           "-wbeam", "1e-100", "-topn", "8"});
    const std::string dictionary = folder + "/cmudict-en-us.dict";
    engines->english = MakeDecoder(folder, {"-lm", folder + "/en-us.lm.bin", "-dict", dictionary, "-silprob",
                                            "0.1", "-fwdflat", "no", "-maxhmmpf", "1500"});
    std::unique_ptr<Recogniser> recogniser(new Recogniser(std::move(engines)));
    const std::vector<Ear> &made = recogniser->engines->ears;
    if (!recogniser->engines->front || !recogniser->engines->english
        || !std::all_of(made.begin(), made.end(), [](const Ear &ear) { return ear.decoder != nullptr; })
        || !recogniser->pronunciations.Read(dictionary)) {
        error = "no model of speech in " + folder;
        return nullptr;
    }
    for (const std::string &file : dictionaries) recogniser->pronunciations.Read(file);
    return recogniser;
}

// Tells the decoders every way to say a word. False when there is none.
bool Recogniser::Teach(const std::string &word) {
    // The decoder has words of its own, for silence and breath, and names of variants.
    if (isSilence(word) || word.find('(') != std::string::npos) return false;
    if (engines->ways.contains(word)) return true;
    std::vector<Pronunciation> ways = pronunciations.Known(word);
    if (ways.empty()) {
        const Pronunciation guess = Pronunciations::Guess(word);
        if (guess.empty()) return false;
        ways.push_back(guess);
    }
    int count = 0;
    for (const Pronunciation &way : ways) {
        const std::string name = count == 0 ? word : word + "(" + std::to_string(count + 1) + ")";
        bool isTaught = true;
        for (const Ear &ear : engines->ears)
            isTaught &= ps_add_word(ear.decoder.get(), name.c_str(), way.c_str(), FALSE) >= 0;
        if (isTaught) count++;
    }
    if (count > 0) engines->ways[word] = count;
    return count > 0;
}

void Recogniser::SetPhrases(const std::vector<std::string> &phrases,
                            const std::vector<std::string> &expected) {
    leftOut.clear();
    engines->begins.clear();
    engines->expectedBegins.clear();
    engines->wholes.clear();
    engines->expected = {expected.begin(), expected.end()};
    std::vector<GrammarPhrase> known, knownExpected;
    std::set<std::string> all(phrases.begin(), phrases.end());
    all.insert(expected.begin(), expected.end());
    for (const std::string &phrase : all) {
        std::vector<std::string> words = WordsOf(phrase);
        if (words.empty()) continue;
        if (words.size() > MostWords
            || !std::all_of(words.begin(), words.end(),
                            [&](const std::string &word) { return Teach(word); })) {
            leftOut.push_back(phrase);
            continue;
        }
        std::string begin;
        for (size_t i = 0; i + 1 < words.size(); i++) {
            engines->begins.insert(begin += (i == 0 ? "" : " ") + words[i]);
            if (engines->expected.contains(phrase)) engines->expectedBegins.insert(begin);
        }
        engines->wholes.insert(begin + (begin.empty() ? "" : " ") + words.back());
        (engines->expected.contains(phrase) ? knownExpected : known).push_back({std::move(words), 0.0});
    }
    TellLeftOut(leftOut);
    engines->hasPhrases = !known.empty() || !knownExpected.empty();
    if (!engines->hasPhrases) return;

    const double share = knownExpected.empty() ? 0.0 : known.empty() ? 1.0 : ExpectedShare;
    for (GrammarPhrase &phrase : knownExpected)
        phrase.probability = share / static_cast<double>(knownExpected.size());
    for (GrammarPhrase &phrase : known) {
        phrase.probability = (1.0 - share) / static_cast<double>(known.size());
        knownExpected.push_back(std::move(phrase));
    }
    const bool areMany = knownExpected.size() > ManyPhrases;
    engines->used = areMany ? 1 : engines->ears.size();
    for (const Ear &ear : engines->Used()) {
        cmd_ln_set_int32_r(ps_get_config(ear.decoder.get()), "-maxhmmpf", areMany ? MostOfMany : MostSounds);
        SearchPhrases(ear.decoder.get(), knownExpected, engines->ways);
    }
}

void Recogniser::Start(std::span<const int16_t> before) {
    if (!engines->hasPhrases) return;
    engines->front->Start(before);
    for (Ear &ear : engines->Used()) {
        ear.frames.clear();
        ps_start_utt(ear.decoder.get());
    }
    ps_start_utt(engines->english.get());
    engines->isHearing = true;
}

// One frame at a time: many at once, at the beginning of an utterance, confuse the decoders' buffers.
void Recogniser::Hear(std::span<const int16_t> sound) {
    if (!engines->isHearing) return;
    for (const Frame &frame : engines->front->Hear(sound))
        for (size_t e = 0; e < engines->used; e++) {
            Ear &ear = engines->ears[e];
            ear.frames.push_back(frame[e]);
            Cepstrum heard = frame[e];
            for (size_t i = 0; i < heard.size(); i++) heard[i] -= ear.mean[i];
            mfcc_t *row = heard.data();
            ps_process_cep(ear.decoder.get(), &row, 1, FALSE, FALSE);
            if (e == 0) ps_process_cep(engines->english.get(), &row, 1, FALSE, FALSE);
        }
}

SoFar Recogniser::HeardSoFar() {
    SoFar soFar;
    if (!engines->isHearing) return soFar;
    const std::vector<Cepstrum> &frames = engines->ears[0].frames;
    const int quiet = QuietAtEnd(frames);
    if (quiet == 0 || !HasSpeech(frames)) return soFar;
    Heard &heard = soFar.heard;
    heard = engines->HeardByBest();
    const int phraseSilence = SilenceAtEnd(heard.words);
    const int silence = std::min(phraseSilence, SilenceAtEnd(heard.english));
    soFar.quiet = static_cast<double>(quiet) / FramesPerSecond;
    soFar.silence = static_cast<double>(silence) / FramesPerSecond;
    soFar.phraseSilence = static_cast<double>(phraseSilence) / FramesPerSecond;
    const std::string text = TextOf(heard.words);
    soFar.hasSpeech = !text.empty() || !TextOf(heard.english).empty();
    soFar.goesOn = engines->begins.contains(text);
    soFar.goesOnExpected = engines->expectedBegins.contains(text);
    return soFar;
}

Heard Recogniser::Finish() {
    Heard heard;
    if (!engines->isHearing) return heard;
    engines->isHearing = false;
    for (const Ear &ear : engines->Used()) ps_end_utt(ear.decoder.get());
    ps_end_utt(engines->english.get());
    heard = engines->HeardByBest();
    if (!HasSpeech(engines->ears[0].frames)) heard.phrase.clear();
    for (Ear &ear : engines->Used()) LearnMean(ear.frames, ear.mean);
    return heard;
}

} // namespace fennic_voice
