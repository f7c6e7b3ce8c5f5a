// Phrases as the network of words that a decoder searches.
#pragma once

#include <map>
#include <string>
#include <vector>

struct ps_decoder_s;

namespace fennic_voice {

// Words separated by blanks.
std::vector<std::string> WordsOf(const std::string &phrase);

struct GrammarPhrase {
    std::vector<std::string> words;
    double probability = 0.0; // of all phrases the sum is 1
};

// Makes the decoder search these phrases, at least one. ways: in how many ways each of their words is said;
// the decoder's dictionary has the first under the word itself, the others as "word(2)" and so on. Takes
// less than a second for 5,000 phrases.
void SearchPhrases(ps_decoder_s *decoder, const std::vector<GrammarPhrase> &phrases,
                   const std::map<std::string, int> &ways);

} // namespace fennic_voice
