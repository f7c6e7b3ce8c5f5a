// Every reader over its sound inputs and the stored ones, and over a few hundred that came of them by
// accident, the same each time. `./fennic fuzz` looks for more of them, with the program's branches in view.
#include <iostream>
#include <random>

#include <gtest/gtest.h>

#include "tests/fuzz/readers.h"

void PrintTo(const Reader &reader, std::ostream *out) {
    *out << reader.name;
}

namespace {

const size_t MutationsOfReader = 150;
const size_t MostBytesToMutate = 20'000;

class Mutator {
public:
    std::string Of(std::string text) {
        for (unsigned i = 0, count = 1 + Below(12); i < count; i++) Change(text);
        return text;
    }
    unsigned Below(size_t limit) { return static_cast<unsigned>(random() % limit); }

private:
    std::mt19937 random{7};

    void Change(std::string &text) {
        static const std::string pieces[] = {
            "-1",   "99999999999", "2147483648", "1e39", "nan", "\r\n", "\n", "\r", std::string(1, '\0'),
            "\xFF", ",",           "=",          ".",    "/",   "..",   ";",  "[",  "]",
            "<",    ">",           "0",          " ",    "\t",  "%",    "\"", "|",  "\xEF\xBB\xBF"};
        const size_t at = Below(text.size() + 1);
        switch (Below(6)) {
        case 0: text.insert(at, pieces[Below(std::size(pieces))]); break;
        case 1: text.erase(at, Below(20)); break;
        case 2: text.insert(at, text.substr(Below(text.size() + 1), 40)); break;
        case 3: text.insert(at, Below(40), static_cast<char>(Below(256))); break;
        case 4:
            if (at < text.size()) text[at] = static_cast<char>(Below(256));
            break;
        default:
            if (Below(8) == 0) text.resize(at);
            break;
        }
    }
};

class AllReaders : public testing::TestWithParam<Reader> {};

TEST_P(AllReaders, SurviveWhatNobodyWrote) {
    std::vector<std::string> seeds = SeedsOf(GetParam());
    ASSERT_FALSE(seeds.empty()) << "no sound input to begin with";
    size_t inputs = seeds.size() + 1;
    ASSERT_TRUE(ReadBytes(GetParam().name, ""));
    for (const std::string &seed : seeds) ReadBytes(GetParam().name, seed);
    std::erase_if(seeds, [](const std::string &seed) { return seed.size() > MostBytesToMutate; });
    seeds.resize(std::min<size_t>(seeds.size(), 8));
    seeds.emplace_back("");
    Mutator mutator;
    for (size_t i = 0; i < MutationsOfReader; i++, inputs++)
        ReadBytes(GetParam().name, mutator.Of(seeds[mutator.Below(seeds.size())]));
    std::cout << GetParam().name << ": " << inputs << " inputs\n";
}

INSTANTIATE_TEST_SUITE_P(, AllReaders, testing::ValuesIn(Readers),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
