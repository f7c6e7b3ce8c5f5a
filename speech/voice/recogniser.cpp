// The scores of both decoders are comparable because each normalises a frame by the best of all senones, not
// of those that happen to be active (-compallsen).
#include "speech/voice/recogniser.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>

extern "C" {
#include <err.h>
#include <fsg_model.h>
#include <pocketsphinx.h>
}

namespace fennic_voice {

namespace {

struct FreeDecoder {
    void operator()(ps_decoder_t *decoder) const { ps_free(decoder); }
};
using Decoder = std::unique_ptr<ps_decoder_t, FreeDecoder>;

const char *const GrammarName = "phrases";
const double ExpectedShare = 0.9; // of the probability, for the phrases that are expected now

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
    return decoder;
}

std::vector<std::string> WordsOf(const std::string &phrase) {
    std::istringstream stream(phrase);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

bool isSilence(std::string_view word) {
    return word.empty() || word[0] == '<' || word[0] == '[' || word[0] == '+' || word[0] == '(';
}

// "nine(2)" is the word nine.
std::string WithoutVariant(std::string_view word) {
    return std::string(word.substr(0, word.find('(')));
}

// The best path of a decoder so far.
struct Path {
    std::string words;
    double score = 0.0; // acoustic, of all frames
    int frames = 0;
    int speechFrames = 0;
    int silenceAtEnd = 0; // frames
};

Path PathOf(ps_decoder_t *decoder) {
    Path path;
    for (ps_seg_t *segment = ps_seg_iter(decoder); segment; segment = ps_seg_next(segment)) {
        int first = 0, last = 0;
        int32 acoustic = 0, language = 0, backOff = 0;
        ps_seg_frames(segment, &first, &last);
        ps_seg_prob(segment, &acoustic, &language, &backOff);
        const char *word = ps_seg_word(segment);
        const int frames = last - first + 1;
        path.score += acoustic;
        path.frames += frames;
        if (isSilence(word)) {
            path.silenceAtEnd += frames;
            continue;
        }
        path.silenceAtEnd = 0;
        path.speechFrames += frames;
        if (!path.words.empty()) path.words += ' ';
        path.words += WithoutVariant(word);
    }
    return path;
}

} // namespace

struct Recogniser::Engines {
    Decoder phrases, english;
    int framesPerSecond = 100;
    std::set<std::string, std::less<>> begins; // of longer phrases: phrases that others go on from
    bool hasPhrases = false;
    bool isHearing = false;
};

Recogniser::Recogniser(std::unique_ptr<Engines> engines) : engines(std::move(engines)) {}
Recogniser::~Recogniser() = default;

std::unique_ptr<Recogniser> Recogniser::Load(const std::string &folder,
                                             const std::vector<std::string> &dictionaries,
                                             std::string &error) {
    err_set_logfp(nullptr);
    auto engines = std::make_unique<Engines>();
    engines->phrases = MakeDecoder(folder, {"-lw", "6.5", "-wip", "1", "-fsgusefiller", "yes"});
    const std::string dictionary = folder + "/cmudict-en-us.dict";
    engines->english = MakeDecoder(folder, {"-lm", folder + "/en-us.lm.bin", "-dict", dictionary, "-fwdflat",
                                            "no", "-maxhmmpf", "3000"});
    std::unique_ptr<Recogniser> recogniser(new Recogniser(std::move(engines)));
    if (!recogniser->engines->phrases || !recogniser->engines->english
        || !recogniser->pronunciations.Read(dictionary)) {
        error = "no model of speech in " + folder;
        return nullptr;
    }
    for (const std::string &file : dictionaries) recogniser->pronunciations.Read(file);
    return recogniser;
}

// Tells the decoder every way to say a word. False when there is none.
bool Recogniser::Teach(const std::string &word) {
    ps_decoder_t *decoder = engines->phrases.get();
    if (char *phones = ps_lookup_word(decoder, word.c_str())) {
        ckd_free(phones);
        return true;
    }
    std::vector<Pronunciation> ways = pronunciations.Known(word);
    if (ways.empty()) {
        const Pronunciation guess = Pronunciations::Guess(word);
        if (guess.empty()) return false;
        ways.push_back(guess);
    }
    int count = 0;
    for (const Pronunciation &way : ways) {
        const std::string name = count == 0 ? word : word + "(" + std::to_string(count + 1) + ")";
        if (ps_add_word(decoder, name.c_str(), way.c_str(), FALSE) >= 0) count++;
    }
    return count > 0;
}

void Recogniser::SetPhrases(const std::vector<std::string> &phrases,
                            const std::vector<std::string> &expected) {
    leftOut.clear();
    engines->begins.clear();
    std::vector<std::pair<std::vector<std::string>, bool>> known; // words, expected
    const std::set<std::string> wanted(expected.begin(), expected.end());
    std::set<std::string> all(phrases.begin(), phrases.end());
    all.insert(expected.begin(), expected.end());
    int states = 2;
    for (const std::string &phrase : all) {
        std::vector<std::string> words = WordsOf(phrase);
        if (words.empty()) continue;
        if (!std::all_of(words.begin(), words.end(), [&](const std::string &word) { return Teach(word); })) {
            std::fprintf(stderr, "reco 1 cannot listen for \"%s\": a word that nobody can pronounce\n",
                         phrase.c_str());
            leftOut.push_back(phrase);
            continue;
        }
        std::string begin;
        for (size_t i = 0; i + 1 < words.size(); i++)
            engines->begins.insert(begin += (i == 0 ? "" : " ") + words[i]);
        states += static_cast<int>(words.size()) - 1;
        known.emplace_back(std::move(words), wanted.contains(phrase));
    }
    engines->hasPhrases = !known.empty();
    if (known.empty()) return;

    const auto expectedCount = static_cast<double>(
        std::count_if(known.begin(), known.end(), [](const auto &phrase) { return phrase.second; }));
    const double others = static_cast<double>(known.size()) - expectedCount;
    const double share = expectedCount == 0 ? 0.0 : others == 0 ? 1.0 : ExpectedShare;
    ps_decoder_t *decoder = engines->phrases.get();
    logmath_t *log = ps_get_logmath(decoder);
    fsg_model_t *grammar = fsg_model_init(
        GrammarName, log, static_cast<float32>(cmd_ln_float32_r(ps_get_config(decoder), "-lw")), states);
    grammar->start_state = 0;
    grammar->final_state = 1;
    int next = 2;
    for (const auto &[words, isExpected] : known) {
        const double probability = isExpected ? share / expectedCount : (1.0 - share) / others;
        int from = 0;
        for (size_t i = 0; i < words.size(); i++) {
            const int to = i + 1 == words.size() ? 1 : next++;
            const int word = fsg_model_word_add(grammar, words[i].c_str());
            const int cost = i == 0 ? static_cast<int>(logmath_log(log, probability)) : 0;
            fsg_model_trans_add(grammar, from, to, static_cast<int32>(cost * fsg_model_lw(grammar)), word);
            from = to;
        }
    }
    ps_set_fsg(decoder, GrammarName, grammar);
    ps_set_search(decoder, GrammarName);
    fsg_model_free(grammar);
}

void Recogniser::Start() {
    if (!engines->hasPhrases) return;
    for (ps_decoder_t *decoder : {engines->phrases.get(), engines->english.get()}) ps_start_utt(decoder);
    engines->isHearing = true;
}

void Recogniser::Hear(std::span<const int16_t> sound) {
    if (!engines->isHearing) return;
    for (ps_decoder_t *decoder : {engines->phrases.get(), engines->english.get()})
        ps_process_raw(decoder, sound.data(), sound.size(), FALSE, FALSE);
}

double Recogniser::SilenceBehindPhrase() {
    if (!engines->isHearing) return 0.0;
    const Path path = PathOf(engines->phrases.get());
    if (path.words.empty() || path.silenceAtEnd == 0) return 0.0;
    return engines->begins.contains(path.words)
               ? 0.0
               : static_cast<double>(path.silenceAtEnd) / engines->framesPerSecond;
}

Heard Recogniser::Finish() {
    Heard heard;
    if (!engines->isHearing) return heard;
    engines->isHearing = false;
    for (ps_decoder_t *decoder : {engines->phrases.get(), engines->english.get()}) ps_end_utt(decoder);
    int32 score = 0;
    if (const char *phrase = ps_get_hyp(engines->phrases.get(), &score)) heard.phrase = phrase;
    const Path phrase = PathOf(engines->phrases.get()), english = PathOf(engines->english.get());
    heard.english = english.words;
    const int speech = std::max({phrase.speechFrames, english.speechFrames, 1});
    heard.seconds = static_cast<double>(speech) / engines->framesPerSecond;
    heard.covered = static_cast<double>(phrase.speechFrames) / speech;
    heard.lag = (english.score - phrase.score) / speech;
    return heard;
}

} // namespace fennic_voice
