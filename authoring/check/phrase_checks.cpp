// What the pilot can say. A phrase is heard as the speech server knows it: in lower case, without
// punctuation; and the first who waits for it uses it up.
#include <map>
#include <set>
#include <string>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/conditions.h"
#include "authoring/check/findings.h"
#include "util/text.h"
#include "voice/phrases.h"

namespace simhost {

namespace {

constexpr const char *ABORT = "abort";

// Somebody who waits for a phrase whatever else is going on: the first step of a sequence, or a parameter
// that is none.
struct Listener {
    ParameterPlace place;
    const logicblock_struct *block;
    int line;
};

std::set<std::string> awaited;                       // by any block
std::map<std::string, std::vector<Listener>> claims; // by phrase

std::string AsHeard(const std::string &phrase) {
    const std::string text = UpperToLowerCase(MakeStrokaFromText(phrase, NormaliseOnly).text);
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void CheckPhrase(const std::string &phrase, const std::string &file, int line) {
    if (phrase == ABORT)
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

void CheckPhrases() {
    awaited.clear();
    claims.clear();
    CollectListeners();
    CheckClaims();
    CheckOffers();
}

} // namespace simhost
