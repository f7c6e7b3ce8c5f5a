// The engine has functions of its own that add words, links and ways to say a word. They look through all
// there are each time, which takes many seconds for a list of some thousand numbers, so this is done here.
#include "speech/voice/grammar.h"

#include <memory>
#include <sstream>
#include <unordered_map>

extern "C" {
#include <ckd_alloc.h>
#include <fsg_model.h>
#include <pocketsphinx.h>
}

namespace fennic_voice {

namespace {

const char *const Name = "phrases";

// The phrases as a tree: those that begin alike share their first words.
struct PhraseNode {
    std::map<std::string, int> longer;  // phrases that go on: the word, and where to
    std::map<std::string, double> ends; // phrases that end with a word: their probability
    double probability = 0.0;           // of all phrases that come here
};

void AddPhrase(std::vector<PhraseNode> &tree, const GrammarPhrase &phrase) {
    size_t node = 0;
    for (size_t i = 0; i + 1 < phrase.words.size(); i++) {
        tree[node].probability += phrase.probability;
        const auto [next, isNew] = tree[node].longer.emplace(phrase.words[i], static_cast<int>(tree.size()));
        node = static_cast<size_t>(next->second);
        if (isNew) tree.emplace_back();
    }
    tree[node].probability += phrase.probability;
    tree[node].ends[phrase.words.back()] += phrase.probability;
}

// The engine's model while it is built.
class Network {
public:
    Network(ps_decoder_t *decoder, int states, const std::map<std::string, int> &ways)
        : log(ps_get_logmath(decoder)),
          weight(static_cast<float32>(cmd_ln_float32_r(ps_get_config(decoder), "-lw"))),
          model(fsg_model_init(Name, log, weight, states)), ways(ways) {
        model->start_state = 0;
        model->final_state = 1;
    }
    ~Network() { fsg_model_free(model); }
    Network(const Network &) = delete;
    Network &operator=(const Network &) = delete;

    fsg_model_t *Model() const { return model; }

    void AddWord(int from, int to, const std::string &word, double probability) {
        const auto score = static_cast<int32>(weight * static_cast<float>(logmath_log(log, probability)));
        const auto found = ways.find(word);
        const int count = found == ways.end() ? 1 : found->second;
        for (int way = 1; way <= count; way++)
            AddLink(from, to, way == 1 ? word : word + "(" + std::to_string(way) + ")", score);
    }

private:
    logmath_t *const log;
    const float32 weight;
    fsg_model_t *const model;
    const std::map<std::string, int> &ways;
    std::unordered_map<std::string, int> numbers; // of words

    int NumberOf(const std::string &word) {
        const auto [found, isNew] = numbers.emplace(word, model->n_word);
        if (!isNew) return found->second;
        if (model->n_word == model->n_word_alloc) {
            model->n_word_alloc = 2 * model->n_word_alloc + 16;
            model->vocab = static_cast<char **>(
                ckd_realloc(model->vocab, static_cast<size_t>(model->n_word_alloc) * sizeof(*model->vocab)));
        }
        model->vocab[model->n_word++] = ckd_salloc(word.c_str());
        return found->second;
    }

    // No link is added twice: a node of the tree has each word once. One that there is already between both
    // states makes room for the next behind it.
    void AddLink(int from, int to, const std::string &word, int32 score) {
        const int32 number = NumberOf(word);
        const glist_t links = fsg_model_trans(model, from, to);
        if (!links) {
            fsg_model_trans_add(model, from, to, score, number);
            return;
        }
        // What listelem_malloc stands for; it would take the file's name for one that may be changed.
        auto *const link = static_cast<fsg_link_t *>(
            __listelem_malloc__(model->link_alloc, const_cast<char *>(__FILE__), __LINE__));
        *link = {from, to, score, number};
        glist_insert_ptr(links, link);
    }
};

} // namespace

std::vector<std::string> WordsOf(const std::string &phrase) {
    std::istringstream stream(phrase);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

void SearchPhrases(ps_decoder_s *decoder, const std::vector<GrammarPhrase> &phrases,
                   const std::map<std::string, int> &ways) {
    std::vector<PhraseNode> tree(1);
    for (const GrammarPhrase &phrase : phrases) AddPhrase(tree, phrase);
    Network network(decoder, static_cast<int>(tree.size()) + 1, ways);
    const auto state = [](size_t node) { return node == 0 ? 0 : static_cast<int>(node) + 1; };
    for (size_t i = 0; i < tree.size(); i++) {
        for (const auto &[word, node] : tree[i].longer) {
            const auto next = static_cast<size_t>(node);
            network.AddWord(state(i), state(next), word, tree[next].probability / tree[i].probability);
        }
        for (const auto &[word, probability] : tree[i].ends)
            network.AddWord(state(i), 1, word, probability / tree[i].probability);
    }
    ps_set_fsg(decoder, Name, network.Model());
    ps_set_search(decoder, Name);
}

} // namespace fennic_voice
