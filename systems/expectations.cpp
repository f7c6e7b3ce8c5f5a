// Lists that are filled anew every frame and keep their memory.
#include "systems/expectations.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "util/make_fresh.h"
#include "util/refilled_list.h"
#include "voice/expected_phrases.h"
#include "voice/published_log.h"
#include "voice/recognition.h"

namespace {

struct ExpectedInput {
    std::string name;
    RefilledList<std::string> texts;
};

// The answers of this frame, each once, and a table of hashes over them: slots of index + 1, 0 for an empty
// one, at least half of them empty.
RefilledList<std::string> expectedAnswers;
const size_t FewestSlots = 64;
std::vector<uint32_t> answerSlots(FewestSlots);

size_t FirstSlot(const std::string &text) {
    return std::hash<std::string>()(text) & (answerSlots.size() - 1);
}

// The slot that holds the answer, or the empty one where it belongs.
size_t SlotOf(const std::string &text) {
    size_t slot = FirstSlot(text);
    while (answerSlots[slot] != 0 && expectedAnswers.entries[answerSlots[slot] - 1] != text)
        slot = (slot + 1) & (answerSlots.size() - 1);
    return slot;
}

void GrowAnswerSlots() {
    answerSlots.assign(answerSlots.size() * 2, 0);
    for (uint32_t i = 0; i < expectedAnswers.count; i++)
        answerSlots[SlotOf(expectedAnswers.entries[i])] = i + 1;
}

RefilledList<ExpectedInput> expectedInputs;
RefilledList<std::string> expectedWords; // of the inputs those for the button
bool isAnyAnswerExpected = false;
bool wasAnyAnswerExpected = false;

bool isEqual(const ExpectedInput &expected, const input_struct &published) {
    return expected.name == published.name
           && std::equal(expected.texts.begin(), expected.texts.end(), published.texts.begin(),
                         published.texts.end());
}

void PublishAnswers() {
    const bool isSame =
        std::equal(expectedAnswers.begin(), expectedAnswers.end(), answers.begin(), answers.end());
    if (isSame && isAnyAnswerExpected == wasAnyAnswerExpected) return;
    answers.assign(expectedAnswers.begin(), expectedAnswers.end());
    wasAnyAnswerExpected = isAnyAnswerExpected;
    ExpectedPhrasesChange();
    LogAnswers(answers, isAnyAnswerExpected);
}

void PublishInputs() {
    if (std::equal(expectedInputs.begin(), expectedInputs.end(), inputs.begin(), inputs.end(), isEqual))
        return;
    ExpectedPhrasesChange();
    inputs.clear();
    for (const ExpectedInput &input : expectedInputs)
        inputs.push_back({input.name, {input.texts.begin(), input.texts.end()}});
}

void PublishWords() {
    std::vector<std::string> &words = recognitionState.words;
    if (!std::equal(expectedWords.begin(), expectedWords.end(), words.begin(), words.end()))
        words.assign(expectedWords.begin(), expectedWords.end());
}

} // namespace

void BeginExpectations() {
    if (!expectedAnswers.IsEmpty()) std::fill(answerSlots.begin(), answerSlots.end(), 0);
    expectedAnswers.Clear();
    expectedInputs.Clear();
    expectedWords.Clear();
    isAnyAnswerExpected = false;
}

void ExpectAnswer(const std::string &text) {
    const size_t slot = SlotOf(text);
    if (answerSlots[slot] != 0) return;
    expectedAnswers.Add() = text;
    answerSlots[slot] = static_cast<uint32_t>(expectedAnswers.count);
    if (expectedAnswers.count * 2 > answerSlots.size()) GrowAnswerSlots();
}

void ExpectAnyAnswer() {
    isAnyAnswerExpected = true;
}

void ExpectInput(const std::string &device, const std::string &text, bool isForButton) {
    if (expectedInputs.IsEmpty() || expectedInputs.Last().name != device) {
        ExpectedInput &input = expectedInputs.Add();
        input.name = device;
        input.texts.Clear();
    }
    expectedInputs.Last().texts.Add() = text;
    if (isForButton) expectedWords.Add() = text;
}

void PublishExpectations() {
    PublishAnswers();
    PublishInputs();
    PublishWords();
}

void ResetExpectations() {
    MakeFresh(expectedAnswers, expectedInputs, expectedWords, isAnyAnswerExpected, wasAnyAnswerExpected);
    answerSlots.assign(FewestSlots, 0);
}
