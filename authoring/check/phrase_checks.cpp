// What the pilot can say. A phrase is heard as the speech server knows it: in lower case, without
// punctuation; and the first who waits for it uses it up.
#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/conditions.h"
#include "authoring/check/findings.h"
#include "util/numbers.h"
#include "util/text.h"
#include "voice/phrases.h"

namespace simhost {

namespace {

constexpr const char *Abort = "abort";

// Somebody who waits for a phrase whatever else is going on: the first step of a sequence, or a parameter
// that is none.
struct Listener {
    ParameterPlace place;
    const logicblock_struct *block;
    int line;
};

std::set<std::string> awaited;                       // by any block
std::set<std::string, std::less<>> pronounced;       // the words of the dictionaries; empty: there are none
std::map<std::string, std::vector<Listener>> claims; // by phrase

std::string AsHeard(const std::string &phrase) {
    const std::string text = UpperToLowerCase(MakeStrokaFromText(phrase, NormaliseOnly).text);
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void CheckPhrase(const std::string &phrase, const std::string &file, int line) {
    if (phrase == Abort)
        AddFinding(
            Severity::Error, file, line,
            "\"abort\" breaks everything off by itself; no step hears it, and a block that does keeps it "
            "from the checklists behind it");
    const std::string heard = AsHeard(phrase);
    if (heard.empty())
        AddFinding(Severity::Error, file, line,
                   "nothing is left of this phrase without punctuation: " + phrase);
    else if (heard != phrase)
        AddFinding(Severity::Error, file, line,
                   "this phrase is never heard, the speech server gives it back as \"" + heard
                       + "\": " + phrase);
}

// Each line of a dictionary begins with a word; "word(2)" is another way to say it.
void ReadDictionaries(const std::string &speechFolder) {
    pronounced.clear();
    if (speechFolder.empty()) return;
    for (const char *name :
         {"/model/cmudict-en-us.dict", "/pronunciations.txt", "/user_pronunciations.txt"}) {
        std::ifstream file(speechFolder + name);
        for (std::string line; std::getline(file, line);)
            if (std::string word = line.substr(0, line.find_first_of("( \t\r")); !word.empty())
                pronounced.insert(pronounced.end(), std::move(word)); // which stand in their order
    }
}

// A word is told once. Numbers are always known.
void CheckWords(const std::string &phrase, const std::string &file, int line) {
    if (pronounced.empty() || phrase == AnyPhrase) return;
    for (const std::string &word : StringToWordsArray(AsHeard(phrase), ' ')) {
        if (word.empty() || std::all_of(word.begin(), word.end(), isDigit)) continue;
        if (!pronounced.insert(word).second) continue;
        const bool canBeGuessed =
            std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
        AddFinding(canBeGuessed ? Severity::Note : Severity::Warning, file, line,
                   canBeGuessed ? "the speech server guesses how \"" + word
                                      + "\" is said; user_pronunciations.txt can tell it"
                                : "the speech server cannot listen for \"" + word
                                      + "\": it needs a line in user_pronunciations.txt");
    }
}

bool isOnlyThePhrase(const Conjunction &conjunction) {
    return conjunction.others.empty() && conjunction.ranges.empty();
}

// Where both have conditions of their own, they may well exclude each other.
bool canBothHold(const logicblock_struct &first, const logicblock_struct &second, const std::string &phrase) {
    const Alternatives a = AlternativesOf(first), b = AlternativesOf(second);
    for (const Conjunction &one : a.list) {
        for (const Conjunction &other : b.list) {
            if (one.phrase != phrase || other.phrase != phrase) continue;
            Conjunction both = one;
            if ((isOnlyThePhrase(one) || isOnlyThePhrase(other)) && both.Add(other)) return true;
        }
    }
    return false;
}

// Waits for a phrase and for nothing else.
bool isAlone(const logicblock_struct &block) {
    return block.compares.size() == 1;
}

void CollectListeners() {
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic) {
            for (const compare_block_class &comparison : block.compares) {
                if (comparison.a.kind != LinkSpeech) continue;
                CheckPhrase(comparison.phrase, place.parameter.fileName, comparison.line);
                CheckWords(comparison.phrase, place.parameter.fileName, comparison.line);
                awaited.insert(comparison.phrase);
                if (comparison.phrase == AnyPhrase && isAlone(block)
                    && (!place.device.serialStack || place.isFirstStep()))
                    AddSymptom(Severity::Warning, place.parameter.fileName, comparison.line, place.LastLine(),
                               "uses up whatever the pilot says, so no later block hears it");
                if (comparison.phrase != AnyPhrase && (!place.device.serialStack || place.isFirstStep()))
                    claims[comparison.phrase].push_back({place, &block, comparison.line});
            }
        }
    });
}

void CheckClaims() {
    for (const auto &[phrase, listeners] : claims) {
        for (size_t later = 1; later < listeners.size(); later++) {
            for (size_t earlier = 0; earlier < later; earlier++) {
                const Listener &first = listeners[earlier], &second = listeners[later];
                if (&first.place.device == &second.place.device) continue;
                if (!canBothHold(*first.block, *second.block, phrase)) continue;
                AddFinding(Severity::Warning, second.place.parameter.fileName, second.line,
                           "\"" + phrase + "\" is used up by " + first.place.Name() + " ("
                               + first.place.Place(first.line) + "), which waits for it too");
                break;
            }
        }
    }
}

// Phrases on offer that no block waits for.
void CheckOffers() {
    ForEachParameter([](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic)
            for (const structExecute &action : block.executes)
                if (TextOfAction(action.type) == ActionText::Phrase && action.text != AnyPhrase
                    && !awaited.contains(action.text))
                    AddFinding(Severity::Error, place.parameter.fileName, action.line,
                               "offered to the pilot, but no block waits for it: " + action.text);
    });
}

} // namespace

void CheckPhrases(const std::string &speechFolder) {
    ReadDictionaries(speechFolder);
    awaited.clear();
    claims.clear();
    CollectListeners();
    CheckClaims();
    CheckOffers();
}

} // namespace simhost
