// Random systems files: everything an author may write and much that he should not, within the grammar.
#pragma once

#include <random>
#include <string>
#include <vector>

class RandomModel {
public:
    explicit RandomModel(unsigned seed) : random(seed) {}

    // The text of a systems file of one to three systems.
    std::string Text();

    // The text with mistakes in some of its lines: letters too many and too few, keys, signs and operators
    // where they do not belong, lines doubled, lost and out of place.
    std::string WithMistakes(const std::string &text);

    // A number below the limit; the same sequence for the same seed on every platform.
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    bool Chance(unsigned percent) { return Below(100) < percent; }
    const char *OneOf(const std::vector<const char *> &choices) {
        return choices[Below(static_cast<unsigned>(choices.size()))];
    }

private:
    std::mt19937 random;
    int published = 0; // datarefs "t/new<n>" so far
    std::string own;   // the link of the parameter that is being made
    bool hasInput = false;
    std::vector<std::string> moving; // those with inputs so far

    std::string Number();
    std::string Link();
    std::string Operand() { return Chance(50) ? Number() : Link(); }
    std::string Comparison(bool isSerial);
    std::string Calculation();
    std::string Action();
    std::string Block(bool isSerial);
    std::string Parameter(unsigned index, bool isSerial);
};

// The datarefs that the models bind to, to be published before loading; without an index. "t/missing" does
// not exist.
struct ModelDataref {
    const char *name;
    int type, elements;
};
extern const std::vector<ModelDataref> ModelDatarefs;
