// The kinds of actions: what each is called, in the files, in the editor, in the log, for readers; what its
// text and its value are; and what becomes of it. The rows are in systems/action_kinds.def. Only what an
// action does stands elsewhere: in the executer, or for one that is done at once in the systems cycle.
#pragma once

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <string_view>

// What the text of an action is.
enum class ActionText {
    None,     // not looked at
    Spoken,   // said, with what it holds replaced (systems/spoken_links.h)
    Position, // of the figure
    Command,  // of the simulator
    Dataref,  // with "[index]" for an array
    Phrase,   // which the pilot may say
};

enum class ActionTime {
    Queued, // when the executer comes to it
    AtOnce, // in the frame in which its block fires
    Never,
};

// The text that the queue gets.
enum class QueuedText {
    Text,
    Value,      // the value, decimal
    Assignment, // text=value
};

struct ActionKind {
    int code = 0; // "execute=<code>,<text>,<value>"
    const char *label = "";
    bool isOffered = true; // by the editor
    ActionText text = ActionText::None;
    const char *newText = ""; // that it begins with in the editor
    ActionTime when = ActionTime::Queued;
    QueuedText queued = QueuedText::Text;
    int queueType = -1; // type in the queue, and the name that the executer logs; -1: none
    const char *queueName = "";
    int queueTypeAtZero = -1; // the same where the value is 0 and that makes a difference
    const char *queueNameAtZero = "";
    const char *listedAs = nullptr; // what its text stands behind in the list of phrases; null: not listed

    // What she does, in charts and transcripts: "%t" is the text, "%v" the value.
    const char *deed = "";
    const char *deedAtZero = nullptr; // when the value is not above 0 and that makes a difference

    // For the table of docs/systems-files.md, in its language.
    const char *does = "";
    const char *textIs = "";
    const char *valueIs = "";
    const char *note = "";
};

// Script<name>: the code of each kind.
enum {
#define ACTION(name, ...) Script##name = ActionKind{__VA_ARGS__}.code,
#include "systems/action_kinds.def"
#undef ACTION
};

inline constexpr ActionKind ActionKinds[] = {
#define ACTION(name, ...) ActionKind{__VA_ARGS__},
#include "systems/action_kinds.def"
#undef ACTION
};

// The places of the rows by their code; the codes go from 0 on, without a gap.
inline constexpr auto PlacesByCode = [] {
    std::array<size_t, std::size(ActionKinds)> places = {};
    places.fill(std::size(ActionKinds));
    for (size_t place = 0; place < std::size(ActionKinds); place++)
        places.at(static_cast<size_t>(ActionKinds[place].code)) = place;
    return places;
}();
static_assert(std::find(PlacesByCode.begin(), PlacesByCode.end(), std::size(ActionKinds))
                  == PlacesByCode.end(),
              "a code twice");

// The row of a code; null when there is none.
constexpr const ActionKind *ActionKindOf(int code) {
    const auto index = static_cast<size_t>(code);
    return index < PlacesByCode.size() ? &ActionKinds[PlacesByCode[index]] : nullptr;
}

// The type in the queue of an action that is known to have one.
constexpr int QueueType(int code) {
    return ActionKinds[PlacesByCode.at(static_cast<size_t>(code))].queueType;
}
constexpr int QueueTypeAtZero(int code) {
    return ActionKinds[PlacesByCode.at(static_cast<size_t>(code))].queueTypeAtZero;
}

// The row whose actions have that type in the queue, and the name that the executer logs; null and "unknown".
const ActionKind *ActionKindOfQueued(int type);
const char *NameOfQueued(int type);

// What an action of the kind does, in words.
std::string DeedOf(const ActionKind &kind, std::string_view text, double value);

constexpr ActionText TextOfAction(int code) {
    const ActionKind *kind = ActionKindOf(code);
    return kind ? kind->text : ActionText::None;
}
