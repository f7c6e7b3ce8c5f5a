// English by its letters, which is as near as three open mouths come to it.
#include "figure/mouth.h"

#include <algorithm>
#include <string>

namespace {

const float LetterSeconds = 0.065F; // fifteen letters a second
const float LeastSyllable = 0.09F;
const float LeadSeconds = 0.2F; // until the voice is heard
const float CommaSeconds = 0.22F, StopSeconds = 0.38F;

const char *const Digits[] = {"zero", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine"};

bool isIn(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}

bool isVowel(std::string_view word, size_t at) {
    return isIn(word[at], "aeiou") || (word[at] == 'y' && at > 0);
}

// The e of "gear" sounds, that of "flame" does not.
bool isSilent(std::string_view word, size_t at) {
    if (word[at] != 'e' || at + 1 < word.size() || at == 0 || isVowel(word, at - 1)) return false;
    for (size_t i = 0; i < at; i++)
        if (isVowel(word, i)) return true;
    return false;
}

MouthShape ShapeOfVowels(std::string_view run, bool isLast) {
    if (isIn(run[0], "ou") || run == "au") return MouthRound;
    if (run == "ee" || run == "ea" || run == "ie" || (run == "y" && isLast)) return MouthNarrow;
    return MouthOpen;
}

class Phases {
public:
    explicit Phases(std::vector<MouthPhase> &phases) : phases(phases) {
        phases.clear();
        Add(MouthClosed, LeadSeconds);
    }

    void Add(MouthShape shape, float seconds) {
        const float until = (phases.empty() ? 0.0F : phases.back().until) + seconds;
        if (!phases.empty() && phases.back().shape == shape)
            phases.back().until = until;
        else
            phases.push_back({until, shape});
    }

    void AddWord(std::string_view word) {
        bool hasSyllable = false;
        for (size_t at = 0; at < word.size(); at++) hasSyllable |= isVowel(word, at);
        for (size_t at = 0; at < word.size();) {
            if (!hasSyllable) { // letters that are spelled
                Add(MouthNarrow, LetterSeconds);
                Add(MouthOpen, 2 * LetterSeconds);
                at++;
            } else if (isVowel(word, at)) {
                const size_t first = at;
                while (at < word.size() && isVowel(word, at)) at++;
                if (isSilent(word, first)) continue;
                const float seconds = LetterSeconds * static_cast<float>(at - first);
                Add(ShapeOfVowels(word.substr(first, at - first), at == word.size()),
                    std::max(seconds, LeastSyllable));
            } else {
                const char letter = word[at++];
                Add(isIn(letter, "bmpfv") ? MouthClosed
                    : letter == 'w'       ? MouthRound
                                          : MouthNarrow,
                    LetterSeconds);
            }
        }
    }

private:
    std::vector<MouthPhase> &phases;
};

} // namespace

void MakeMouthPhases(std::string_view text, std::vector<MouthPhase> &phases) {
    Phases made(phases);
    std::string word;
    const auto endWord = [&] {
        made.AddWord(word);
        word.clear();
    };
    for (char c : text) {
        const char small = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        if (small >= 'a' && small <= 'z') {
            word += small;
            continue;
        }
        if (c == '\'') continue;
        endWord();
        if (c >= '0' && c <= '9') made.AddWord(Digits[c - '0']);
        if (isIn(c, ",;:")) made.Add(MouthClosed, CommaSeconds);
        if (isIn(c, ".!?")) made.Add(MouthClosed, StopSeconds);
    }
    endWord();
    made.Add(MouthClosed, LeastSyllable);
}
