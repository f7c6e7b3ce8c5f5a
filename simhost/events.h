// What happens in the simulator, told to one listener as it happens. The transcript of a flight is made
// from it; the modules of the interface only report.
#pragma once

#include <functional>
#include <string>

namespace simhost {

enum class EventKind {
    Problem,         // subject: what the log tells of one
    ActionBegun,     // subject: what she does, in words
    ActionOnCommand, // an action is about to fire or hold a command; subject: its name
    ActionOnDataref, // the same of writing a dataref; subject: its name, with "[n]" for an element
    AnswersExpected, // subject: all of them, with tabs between
    SpeechMessage,   // subject: what the plug-in wrote to "kv/to_speech"
    SimulatorSpeech, // subject: what the simulator says with its own voice
    CommandBegun,    // subject: name; detail: "pilot" or "plug-in"
    CommandEnded,    // subject: name; detail as above
    CommandOnce,     // subject: name; detail as above; counts as begun and ended
    DatarefWritten,  // subject: name, with "[n]" for one changed array element; detail: the new value;
                     // only a plug-in's write to a dataref it does not own that changes the value
};

struct Event {
    EventKind kind = EventKind::Problem;
    std::string subject;
    std::string detail;
};

// The listener is called inside the plug-in's call and must not call back into the plug-in. An empty
// function stops the reports.
void SetEventListener(std::function<void(const Event &)> listener);
void ReportEvent(const Event &event);
bool hasEventListener(); // lets a hot path skip making an event

} // namespace simhost
