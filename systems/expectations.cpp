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

const size_t FewestSlots = 64;

// What is expected in this frame.
struct Expectations {
    // The answers, each once, and a table of hashes over them: slots of index + 1, 0 for an empty one, at
    // least half of them empty.
    RefilledList<std::string> answers;
    std::vector<uint32_t> answerSlots = std::vector<uint32_t>(FewestSlots);
    RefilledList<ExpectedInput> inputs;
    RefilledList<std::string> words; // of the inputs those for the button
    bool isAnyAnswer = false;
    bool wasAnyAnswer = false; // when answers were published last
} expected;

size_t FirstSlot(const std::string &text) {
    return std::hash<std::string>()(text) & (expected.answerSlots.size() - 1);
}

// The slot that holds the answer, or the empty one where it belongs.
size_t SlotOf(const std::string &text) {
    size_t slot = FirstSlot(text);
    while (expected.answerSlots[slot] != 0
           && expected.answers.entries[expected.answerSlots[slot] - 1] != text)
        slot = (slot + 1) & (expected.answerSlots.size() - 1);
    return slot;
}

void GrowAnswerSlots() {
    expected.answerSlots.assign(expected.answerSlots.size() * 2, 0);
    for (uint32_t i = 0; i < expected.answers.count; i++)
        expected.answerSlots[SlotOf(expected.answers.entries[i])] = i + 1;
}

bool isEqual(const ExpectedInput &input, const input_struct &published) {
    return input.name == published.name
           && std::equal(input.texts.begin(), input.texts.end(), published.texts.begin(),
                         published.texts.end());
}

void PublishAnswers() {
    const bool isSame =
        std::equal(expected.answers.begin(), expected.answers.end(), answers.begin(), answers.end());
    if (isSame && expected.isAnyAnswer == expected.wasAnyAnswer) return;
    answers.assign(expected.answers.begin(), expected.answers.end());
    expected.wasAnyAnswer = expected.isAnyAnswer;
    ExpectedPhrasesChange();
    LogAnswers(answers, expected.isAnyAnswer);
}

void PublishInputs() {
    if (std::equal(expected.inputs.begin(), expected.inputs.end(), inputs.begin(), inputs.end(), isEqual))
        return;
    ExpectedPhrasesChange();
    inputs.clear();
    for (const ExpectedInput &input : expected.inputs)
        inputs.push_back({input.name, {input.texts.begin(), input.texts.end()}});
}

void PublishWords() {
    std::vector<std::string> &words = recognitionState.words;
    if (!std::equal(expected.words.begin(), expected.words.end(), words.begin(), words.end()))
        words.assign(expected.words.begin(), expected.words.end());
}

} // namespace

void BeginExpectations() {
    if (!expected.answers.IsEmpty()) std::fill(expected.answerSlots.begin(), expected.answerSlots.end(), 0);
    expected.answers.Clear();
    expected.inputs.Clear();
    expected.words.Clear();
    expected.isAnyAnswer = false;
}

void ExpectAnswer(const std::string &text) {
    const size_t slot = SlotOf(text);
    if (expected.answerSlots[slot] != 0) return;
    expected.answers.Add() = text;
    expected.answerSlots[slot] = static_cast<uint32_t>(expected.answers.count);
    if (expected.answers.count * 2 > expected.answerSlots.size()) GrowAnswerSlots();
}

void ExpectAnyAnswer() {
    expected.isAnyAnswer = true;
}

void ExpectInput(const std::string &device, const std::string &text, bool isForButton) {
    if (expected.inputs.IsEmpty() || expected.inputs.Last().name != device) {
        ExpectedInput &input = expected.inputs.Add();
        input.name = device;
        input.texts.Clear();
    }
    expected.inputs.Last().texts.Add() = text;
    if (isForButton) expected.words.Add() = text;
}

void PublishExpectations() {
    PublishAnswers();
    PublishInputs();
    PublishWords();
}

void ResetExpectations() {
    MakeFresh(expected);
}
