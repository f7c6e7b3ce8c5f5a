// Lists that are filled anew every frame and keep their memory.
#include "systems/expectations.h"

#include <algorithm>
#include <vector>

#include "util/log.h"
#include "util/refilled_list.h"
#include "voice/recognition.h"

namespace {

struct ExpectedInput {
    std::string name;
    RefilledList<std::string> texts;
};

RefilledList<std::string> expectedAnswers;
RefilledList<ExpectedInput> expectedInputs;
bool isAnyAnswerExpected = false;
bool wasAnyAnswerExpected = false;

bool isEqual(const ExpectedInput &expected, const input_struct &published) {
    return expected.name == published.name
           && std::equal(expected.texts.begin(), expected.texts.end(), published.texts.begin(),
                         published.texts.end());
}

void LogAnswers() {
    std::string list;
    for (const std::string &answer : answers) list += (list.empty() ? "" : ", ") + answer;
    if (isAnyAnswerExpected) list += list.empty() ? "any" : ", any";
    string2debugString("Expected answers: ", list.empty() ? "none" : list, 1);
}

void PublishAnswers() {
    const bool isSame =
        std::equal(expectedAnswers.begin(), expectedAnswers.end(), answers.begin(), answers.end());
    if (isSame && isAnyAnswerExpected == wasAnyAnswerExpected) return;
    answers.assign(expectedAnswers.begin(), expectedAnswers.end());
    wasAnyAnswerExpected = isAnyAnswerExpected;
    LogAnswers();
}

void PublishInputs() {
    if (std::equal(expectedInputs.begin(), expectedInputs.end(), inputs.begin(), inputs.end(), isEqual))
        return;
    inputs.clear();
    for (const ExpectedInput &input : expectedInputs)
        inputs.push_back({input.name, {input.texts.begin(), input.texts.end()}});
}

} // namespace

void BeginExpectations() {
    expectedAnswers.Clear();
    expectedInputs.Clear();
    isAnyAnswerExpected = false;
}

void ExpectAnswer(const std::string &text) {
    if (std::find(expectedAnswers.begin(), expectedAnswers.end(), text) == expectedAnswers.end())
        expectedAnswers.Add() = text;
}

void ExpectAnyAnswer() {
    isAnyAnswerExpected = true;
}

void ExpectInput(const std::string &device, const std::string &text) {
    if (expectedInputs.IsEmpty() || expectedInputs.Last().name != device) {
        ExpectedInput &input = expectedInputs.Add();
        input.name = device;
        input.texts.Clear();
    }
    expectedInputs.Last().texts.Add() = text;
}

void PublishExpectations() {
    PublishAnswers();
    PublishInputs();
}
