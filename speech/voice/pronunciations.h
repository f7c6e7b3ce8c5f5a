// How words are pronounced: the model's dictionary, a file of ours that authors can add to, numbers as
// pilots say them, and for what none of them knows a guess from the spelling.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fennic_voice {

// Phones of the model, joined by blanks: "F L AE P S".
using Pronunciation = std::string;

class Pronunciations {
public:
    // Reads a dictionary: a word, blanks, its phones; "word(2)" is a second way to say it. Lines that begin
    // with "#" or ";;" and empty ones are skipped. False when the file cannot be read; a line that is no
    // such line is told to stderr and dropped. Later files add to the words of earlier ones.
    bool Read(const std::string &path);

    // All ways to say a word in lower case: as it is known, and for a number its digits and its value
    // ("15": one five, fifteen). Empty when nobody knows.
    std::vector<Pronunciation> Known(std::string_view word) const;

    // A guess from the spelling: letter by letter where there is no vowel, else by rule. Empty for a word
    // that is not written in Latin letters.
    static Pronunciation Guess(std::string_view word);

private:
    std::map<std::string, std::vector<Pronunciation>, std::less<>> words;

    void AddNumber(std::string_view digits, std::vector<Pronunciation> &ways) const;
    std::vector<Pronunciation> Join(const std::vector<std::string> &spoken) const;
};

} // namespace fennic_voice
