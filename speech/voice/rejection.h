// Whether what was heard is a phrase of the list, or something else that the list was only the nearest to.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace fennic_voice {

// A word that a decoder found, or a silence between words.
struct HeardWord {
    std::string word; // empty: silence
    int frames = 0;
    double acoustic = 0.0; // score of its sound: how much worse than the best of all sounds, in all frames
    double language = 0.0; // score of its place among the words
    std::string phones;    // joined by blanks
};

// What the two decoders say of one utterance.
struct Heard {
    std::string phrase;             // the nearest of the list; empty: silence, or no list
    bool isExpected = false;        // that phrase is expected now
    double loudness = 0.0;          // of its loudest sound, in decibels of no particular zero
    std::vector<HeardWord> words;   // of the phrase
    std::vector<HeardWord> english; // what the English decoder understood
};

// The words, joined by blanks.
std::string TextOf(const std::vector<HeardWord> &words);

// The signs that tell, each a number of the order of 1.
const size_t SignCount = 15;
using Signs = std::array<double, SignCount>;
Signs SignsOf(const Heard &heard);

// How sure it is that the phrase was said, in natural logarithms of the odds; Accept takes what is above 0.
double Confidence(const Heard &heard);
bool Accept(const Heard &heard);

} // namespace fennic_voice
