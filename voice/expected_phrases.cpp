// A text is made only when something of it has changed.
#include "voice/expected_phrases.h"

#include <string>

#include "XPLMDataAccess.h"
#include "frame/datarefs.h"
#include "util/make_fresh.h"
#include "voice/link_words.h"
#include "voice/recognition.h"
#include "voice/selection_window.h"

namespace {

struct Published {
    XPLMDataRef dataref = nullptr;
    bool hasChanged = false;
    // What it was made from, beside answers and inputs.
    bool anyAnswer = false;
    std::string unfolded;
};
Published published;

std::string ExpectedPhrases() {
    std::string text;
    const auto add = [&](const std::string &phrase) { text.append(phrase).append("\n"); };
    for (const std::string &answer : answers) add(answer);
    if (isAnyInputGood) add("any");
    for (const input_struct &group : inputs)
        if (group.name == unfoldedTitle)
            for (const std::string &item : group.texts) add(item);
    return text;
}

} // namespace

void CreateExpectedPhrases() {
    published.dataref = CreateDrf_String(link_words::Expected, "");
}

void ExpectedPhrasesChange() {
    published.hasChanged = true;
}

void PublishExpectedPhrases() {
    if (!published.hasChanged && published.anyAnswer == isAnyInputGood && published.unfolded == unfoldedTitle)
        return;
    published.hasChanged = false;
    published.anyAnswer = isAnyInputGood;
    published.unfolded = unfoldedTitle;
    std::string text = ExpectedPhrases();
    XPLMSetDatab(published.dataref, text.data(), 0, static_cast<int>(text.size()) + 1);
}

void ResetExpectedPhrases() {
    MakeFresh(published);
}
