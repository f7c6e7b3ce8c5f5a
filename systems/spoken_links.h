// What is replaced in spoken texts. Links: "<SYSTEM.DEVICE.PARAMETER>" is said as the parameter's value, with
// "&" behind the "<" digit by digit. And words between brackets, each once.
#pragma once

#include <string>
#include <string_view>

// Words between brackets, by their meaning.
enum PlaceholderMeaning {
    HerName,
    PilotName,
    PilotAddress,
    TakeoffRunway,
    LandingRunway,
    LastText,
    SkippedItems,
    WhereInChecklist,
};

struct Placeholder {
    const char *word;
    bool isRunway;      // of the two only the first of these rows is replaced in a text
    const char *onPage; // stands for it on the page of phrases
    const char *spoken; // for the table of docs/systems-files.md, in its language
};
inline constexpr Placeholder Placeholders[] = {
    {"[NAME]", false, "…", "the first officer's name, from the settings"},
    {"[USER]", false, "…", "the pilot's name, from the settings"},
    {"[SIR]", false, "Sir", "how the pilot is addressed, from the settings"},
    {"[TORW]", true, "…", "the take-off runway"},
    {"[LDRW]", true, "…", "the landing runway"},
    {"[LAST]", false, "…", "what she has said last"},
    {"[SKIPPED]", false, "",
     "in a checklist: what was skipped in it, \", except fuel pumps and beacon\", or nothing"},
    {"[CHECKLIST]", false, "…",
     "the checklist that runs, and its item: \"before start checklist, at fuel pumps\""},
}; // by meaning

// A link in a text: from a "<" to the first ">" behind it.
struct SpokenLink {
    size_t begin = 0, end = 0; // the place of "<" and the one behind ">"
    std::string name;          // what stands between them, without every "&"
    bool isSpelled = false;
};

// The next link that begins at a place or behind it. False when there is none.
bool FindSpokenLink(std::string_view text, size_t from, SpokenLink &found);
