// `fennic-speech-bench --fit` fits new weights.
#include "speech/voice/rejection.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <sstream>

namespace fennic_voice {

namespace {

struct Totals {
    double acoustic = 0.0, language = 0.0;
    int words = 0, frames = 0;     // of words
    double wordAcoustic = 0.0;     // of words
    std::vector<double> eachFrame; // acoustic score, spread evenly over the frames of each word
    std::vector<std::string> phones;
};

Totals TotalsOf(const std::vector<HeardWord> &words) {
    Totals totals;
    for (const HeardWord &word : words) {
        totals.acoustic += word.acoustic;
        totals.eachFrame.insert(totals.eachFrame.end(), static_cast<size_t>(std::max(word.frames, 0)),
                                word.acoustic / std::max(word.frames, 1));
        if (word.word.empty()) continue;
        totals.words++;
        totals.frames += word.frames;
        totals.wordAcoustic += word.acoustic;
        totals.language += word.language;
        std::istringstream stream(word.phones);
        for (std::string phone; stream >> phone;) totals.phones.push_back(phone);
    }
    return totals;
}

// Phones to be put in, left out or exchanged so that one becomes the other.
size_t Distance(const std::vector<std::string> &from, const std::vector<std::string> &to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0U);
    for (size_t i = 0; i < from.size(); i++) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < to.size(); j++) {
            const size_t exchanged = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, row[j] + 1, diagonal + 1});
        }
    }
    return row[to.size()];
}

// Logistic regression over 615 recordings of people and of synthetic voices, clean and noisy, half of them
// said a phrase: what is above 0 was likelier a phrase than not.
const double Constant = 8.78;
const Signs Weights = {-1.49, -3.15, -7.19, -2.14, 4.02,  -1.24, -1.39, -0.30,
                       -0.13, -1.40, -3.10, 0.92,  -1.44, 4.06,  -3.65};

} // namespace

std::string TextOf(const std::vector<HeardWord> &words) {
    std::string text;
    for (const HeardWord &word : words)
        if (!word.word.empty()) text += (text.empty() ? "" : " ") + word.word;
    return text;
}

Signs SignsOf(const Heard &heard) {
    const Totals phrase = TotalsOf(heard.words), english = TotalsOf(heard.english);
    const double speech = std::max({phrase.frames, english.frames, 1});
    const double wordFrames = std::max(phrase.frames, 1);
    double worst = 0.0, longest = 0.0, shortest = 0.0;
    size_t frame = 0;
    for (const HeardWord &word : heard.words) {
        const size_t end = std::min(frame + static_cast<size_t>(word.frames), english.eachFrame.size());
        if (!word.word.empty() && word.frames > 0) {
            double there = 0.0;
            for (size_t i = frame; i < end; i++) there += english.eachFrame[i];
            worst = std::max(worst, (there - word.acoustic) / word.frames);
            const double phones =
                1.0 + static_cast<double>(std::count(word.phones.begin(), word.phones.end(), ' '));
            const double length = std::log(word.frames / phones / 8.0); // 80 ms is usual
            longest = std::max(longest, length);
            shortest = std::max(shortest, -length);
        }
        frame += static_cast<size_t>(word.frames);
    }
    const size_t mostPhones = std::max({phrase.phones.size(), english.phones.size(), size_t(1)});
    const double lag = (english.acoustic - phrase.acoustic) / speech / 20.0;
    const double phones = std::max<double>(static_cast<double>(phrase.phones.size()), 1.0);
    return {
        lag, // how much worse the phrase fits than English
        std::log1p(std::max(lag, 0.0)),
        1.0 - phrase.frames / speech,              // speech that the phrase leaves out
        -phrase.wordAcoustic / wordFrames / 100.0, // how badly the phrase fits, and English:
        -english.wordAcoustic / std::max(english.frames, 1) / 100.0, // in noise both do
        static_cast<double>(Distance(phrase.phones, english.phones)) / static_cast<double>(mostPhones),
        heard.phrase == TextOf(heard.english) ? 0.0 : 1.0,
        std::log1p(std::max(worst, 0.0) / 20.0), // the lag of the word that fits worst
        longest,                                 // words that are drawn out or hurried
        shortest,
        30.0 / std::max(speech, 10.0), // of what is short, all this tells less
        3.0 / phones,
        -english.language / std::max(english.words, 1) / 1000.0, // English that nobody says
        -english.language / speech / 20.0,
        heard.isExpected ? 0.0 : 1.0,
    };
}

double Confidence(const Heard &heard) {
    const Signs signs = SignsOf(heard);
    return std::inner_product(signs.begin(), signs.end(), Weights.begin(), Constant);
}

bool Accept(const Heard &heard) {
    return !heard.phrase.empty() && Confidence(heard) > 0.0;
}

} // namespace fennic_voice
