// How the texts of a checklist, written for the eye, are spoken and answered.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// A label or remark as she says it: abbreviations written out, capitals undone, signs as words; without a
// mark at its end. Holds nothing that systems files take for a link, a placeholder or a key. Empty when there
// is nothing to be said, as of a line of dashes.
std::string SpokenText(std::string_view text);

// The phrases that answer an item, in the form of the recognition context; the first is the one that was
// written. Empty when any answer will do, as for "as required".
std::vector<std::string> AnswerPhrases(std::string_view answer);

// The phrase that calls the checklist of this name: "before start checklist".
std::string ChecklistPhrase(std::string_view name);
