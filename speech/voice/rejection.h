// Whether what was heard is a phrase of the list, or something else that the list was only the nearest to.
#pragma once

#include <string>

namespace fennic_voice {

// What the two decoders say of one utterance.
struct Heard {
    std::string phrase;   // the nearest of the list; empty: silence, or no list
    std::string english;  // what the English decoder understood
    double lag = 0.0;     // how much worse the phrase fits than English: score per frame of speech
    double covered = 0.0; // share of the speech that the words of the phrase lie over, 0 to 1
    double seconds = 0.0; // of speech
};

// How sure it is that the phrase was said; Accept takes what is above 0.
double Confidence(const Heard &heard);
bool Accept(const Heard &heard);

} // namespace fennic_voice
