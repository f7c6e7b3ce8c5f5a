// The guess asks the speech engine's letter-to-sound rules, which were made from the same dictionary of
// American English as the recognition's model; only their names of phones differ.
#include "speech/voice/pronunciations.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <sstream>

extern "C" {
#include <flite.h>
cst_lexicon *cmu_lex_init(void);
}

#include "speech/voice/lines.h"

namespace fennic_voice {

namespace {

const char *const Digits[] = {"zero", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine"};
const char *const Teens[] = {"ten",     "eleven",  "twelve",    "thirteen", "fourteen",
                             "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
const char *const Tens[] = {"",      "",      "twenty",  "thirty", "forty",
                            "fifty", "sixty", "seventy", "eighty", "ninety"};

bool isNumber(std::string_view word) {
    return !word.empty()
           && std::all_of(word.begin(), word.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::vector<std::string> BelowHundred(int number) {
    if (number < 10) return {Digits[number]};
    if (number < 20) return {Teens[number - 10]};
    if (number % 10 == 0) return {Tens[number / 10]};
    return {Tens[number / 10], Digits[number % 10]};
}

// "250" as two hundred fifty, "3000" as three thousand; other numbers are said digit by digit alone.
std::vector<std::string> AsValue(int number) {
    if (number < 100) return BelowHundred(number);
    std::vector<std::string> words;
    const int unit = number % 1000 == 0 ? 1000 : 100;
    if (number / unit >= 100) return {};
    words = BelowHundred(number / unit);
    words.emplace_back(unit == 1000 ? "thousand" : "hundred");
    if (number % unit != 0) {
        const std::vector<std::string> rest = BelowHundred(number % unit);
        words.insert(words.end(), rest.begin(), rest.end());
    }
    return words;
}

// The model has no stress and one phone for the weak vowel.
std::string PhoneOfModel(const char *phone) {
    std::string name;
    for (const char *c = phone; *c != '\0'; c++)
        if (std::isalpha(static_cast<unsigned char>(*c)) != 0)
            name += static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
    return name == "AX" ? "AH" : name;
}

Pronunciation AskRules(const std::string &word) {
    static cst_lexicon *const lexicon = cmu_lex_init();
    cst_val *phones = lex_lookup(lexicon, word.c_str(), nullptr, nullptr);
    Pronunciation pronunciation;
    for (const cst_val *phone = phones; phone != nullptr; phone = val_cdr(phone)) {
        if (!pronunciation.empty()) pronunciation += ' ';
        pronunciation += PhoneOfModel(val_string(val_car(phone)));
    }
    delete_val(phones);
    return pronunciation;
}

} // namespace

bool Pronunciations::Read(const std::string &path) {
    std::ifstream file(path);
    if (!file) return false;
    PassMark(file);
    std::string line;
    for (int number = 1; std::getline(file, line); number++) {
        std::istringstream fields(line);
        std::string word, phone;
        Pronunciation pronunciation;
        if (!(fields >> word) || word[0] == '#' || word.starts_with(";;")) continue;
        while (fields >> phone) pronunciation += (pronunciation.empty() ? "" : " ") + phone;
        if (pronunciation.empty()) {
            std::fprintf(stderr, "%s line %d: a word without phones - line dropped: %s\n", path.c_str(),
                         number, line.c_str());
            continue;
        }
        if (const size_t bracket = word.find('('); bracket != std::string::npos && bracket > 0)
            word.erase(bracket);
        std::vector<Pronunciation> &ways = words[word];
        if (std::find(ways.begin(), ways.end(), pronunciation) == ways.end()) ways.push_back(pronunciation);
    }
    return true;
}

// Every combination would be many; each word's first way is enough in a number.
std::vector<Pronunciation> Pronunciations::Join(const std::vector<std::string> &spoken) const {
    std::vector<Pronunciation> joined = {""};
    for (const std::string &word : spoken) {
        const auto found = words.find(word);
        if (found == words.end()) return {};
        std::vector<Pronunciation> longer;
        for (const Pronunciation &begin : joined)
            for (const Pronunciation &way : found->second)
                if (longer.size() < 16) longer.push_back(begin.empty() ? way : begin + " " + way);
        joined = std::move(longer);
    }
    return joined;
}

void Pronunciations::AddNumber(std::string_view digits, std::vector<Pronunciation> &ways) const {
    std::vector<std::string> oneByOne;
    for (const char digit : digits) oneByOne.emplace_back(Digits[digit - '0']);
    std::vector<std::vector<std::string>> readings = {oneByOne};
    if (digits.size() < 6 && (digits[0] != '0' || digits.size() == 1))
        readings.push_back(AsValue(std::stoi(std::string(digits))));
    for (const std::vector<std::string> &reading : readings)
        if (!reading.empty())
            for (Pronunciation &way : Join(reading))
                if (std::find(ways.begin(), ways.end(), way) == ways.end()) ways.push_back(std::move(way));
}

std::vector<Pronunciation> Pronunciations::Known(std::string_view word) const {
    const auto found = words.find(word);
    std::vector<Pronunciation> ways = found == words.end() ? std::vector<Pronunciation>() : found->second;
    if (isNumber(word)) AddNumber(word, ways);
    return ways;
}

Pronunciation Pronunciations::Guess(std::string_view word) {
    if (word.empty() || word.size() > 40) return "";
    bool hasVowel = false;
    for (const char c : word) {
        if (c < 'a' || c > 'z') return "";
        hasVowel |= std::string_view("aeiouy").find(c) != std::string_view::npos;
    }
    if (hasVowel) return AskRules(std::string(word));
    Pronunciation spelled;
    for (const char c : word) spelled += (spelled.empty() ? "" : " ") + AskRules(std::string(1, c));
    return spelled;
}

} // namespace fennic_voice
