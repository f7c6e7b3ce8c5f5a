// Puts the transcript together. The columns are the flight time (left out while it stays the same), the
// speaker, and the words; what the first officer does stands indented, a verb and its object.
//
// An action's write of a dataref is told from the figure's own traffic by what the plug-in publishes of its
// log, which comes right before it.
#include "simhost/flights/transcript.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "simhost/number_text.h"
#include "simhost/simulator.h"
#include "simhost/sound/microphone.h"
#include "simhost/system.h"

namespace simhost {

namespace {

constexpr size_t LineWidth = 98;
constexpr size_t SpeakerColumn = 9;
constexpr size_t SpeechColumn = 17;
constexpr size_t ActionColumn = 11;
constexpr size_t ObjectColumn = 19;
constexpr size_t NarrowestText = 20;

constexpr const char *Bold = "\033[1m";
constexpr const char *PilotColour = "\033[1;36m";
constexpr const char *FennicColour = "\033[1;32m";
constexpr const char *ProblemColour = "\033[33m";
constexpr const char *Dim = "\033[2m";
constexpr const char *Plain = "";

bool isShown = false;
bool isColoured = false;
bool isVoiceThere = false;  // it hears the pilot
bool isButtonTold = true;   // else what he says is told, and not how he holds the button
bool hasPilotSpoken = true; // since he took the button
int silent = 0;             // TranscriptPauses alive
std::string lastTime;       // as printed last
std::string xplaneFolder;

struct {
    int heard = 0, said = 0, fired = 0, set = 0;
} counted;

// What has changed must stay the same for so many frames before it is told, or the pilot must go on.
constexpr int SettledFrames = 10;

// What the pilot sets. A switch is told with the next line; a lever that is being moved, set again and
// again, when it has come to rest.
struct PendingSet {
    std::string dataref, value, time;
    bool isMoving = false;
    int framesToGo = SettledFrames;
};
std::vector<PendingSet> pendingSets;

// While a script goes from one step to the next the expected answers change with each frame.
struct {
    std::string told, now;
    int framesToGo = 0; // 0: nothing to be told
} answers;

// The action that was announced and has not been seen yet.
struct {
    std::string dataref, index, command;
} announced;

std::string TimeNow() {
    char text[24];
    return std::string(text, static_cast<size_t>(FormatFlightTime(FlightTimeSeconds(), text)));
}

// Columns a text takes: bytes that continue a UTF-8 character take none.
size_t Width(std::string_view text) {
    size_t width = 0;
    for (const char c : text) width += (c & 0xC0) != 0x80;
    return width;
}

// Cuts off as many words as fit.
std::string_view TakeWords(std::string_view &rest, size_t room) {
    size_t end = rest.size();
    if (Width(rest) > room) {
        size_t fits = 0;
        for (size_t blank = rest.find(' ');
             blank != std::string_view::npos && Width(rest.substr(0, blank)) <= room;
             blank = rest.find(' ', blank + 1))
            fits = blank;
        if (fits == 0) fits = std::min(rest.find(' '), rest.size()); // one long word: a name, left whole
        end = fits;
    }
    const std::string_view words = rest.substr(0, end);
    rest.remove_prefix(end);
    while (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);
    return words;
}

void Print(const std::string &time, const char *colour, size_t headColumn, const std::string &head,
           size_t textColumn, const std::string &text) {
    std::string line = time == lastTime ? std::string() : time;
    lastTime = time;
    line.append(headColumn > line.size() ? headColumn - line.size() : 1, ' ');
    if (isColoured) line += colour;
    line += head;
    size_t column = headColumn + Width(head);
    std::string_view rest = text;
    for (bool first = true; first || !rest.empty(); first = false) {
        if (!first) {
            line += '\n';
            column = 0;
        }
        if (column < textColumn)
            line.append(textColumn - column, ' ');
        else if (first && !head.empty())
            line += ' ';
        line += TakeWords(rest, std::max(LineWidth - textColumn, NarrowestText));
    }
    if (isColoured && *colour != 0) line += "\033[0m";
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
}

void PrintSet(const PendingSet &set) {
    Print(set.isMoving ? TimeNow() : set.time, PilotColour, SpeakerColumn, "PILOT", SpeechColumn,
          "sets " + set.dataref + " = " + set.value);
}

void PrintSetsIf(bool (*isDue)(const PendingSet &)) {
    if (pendingSets.empty()) return;
    for (const PendingSet &set : pendingSets)
        if (isDue(set)) PrintSet(set);
    std::erase_if(pendingSets, isDue);
}

void PrintSwitches() {
    PrintSetsIf([](const PendingSet &set) { return !set.isMoving; });
}

void PrintAllSets() {
    PrintSetsIf([](const PendingSet &) { return true; });
}

void Speaker(const char *colour, const char *who, const std::string &text) {
    if (!isShown) return;
    PrintSwitches();
    Print(TimeNow(), colour, SpeakerColumn, who, SpeechColumn, text);
}

void Action(const char *verb, const std::string &object, const char *colour = Plain) {
    if (!isShown) return;
    PrintSwitches();
    Print(TimeNow(), colour, ActionColumn, verb, ObjectColumn, object);
}

std::string Quoted(std::string_view text) {
    return std::string("\"").append(text).append("\"");
}

// CHECKED and SET become: for "CHECKED" or "SET".
void TellAnswers() {
    answers.framesToGo = 0;
    if (answers.now == answers.told) return;
    answers.told = answers.now;
    std::string_view rest = answers.now;
    if (rest.empty()) return;
    std::string text = "for ";
    while (!rest.empty()) {
        text += Quoted(TakeField(rest));
        if (!rest.empty()) text += rest.find('\t') == std::string_view::npos ? " or " : ", ";
    }
    Action("waits", text);
}

void NoteAnswers(std::string_view list) {
    answers.now = list;
    answers.framesToGo = SettledFrames;
}

void AnnounceWrite(std::string_view element) {
    const size_t bracket = std::min(element.find('['), element.size());
    announced.dataref = element.substr(0, bracket);
    announced.index = element.substr(bracket);
}

// A verb and what it is about.
void TellAction(std::string_view words) {
    const size_t blank = std::min(words.find(' '), words.size());
    Action(std::string(words.substr(0, blank)).c_str(),
           std::string(words.substr(std::min(blank + 1, words.size()))));
}

std::string WithoutScratchPath(std::string_view text) {
    std::string shortened(text);
    if (xplaneFolder.empty()) return shortened;
    for (size_t at = shortened.find(xplaneFolder); at != std::string::npos;
         at = shortened.find(xplaneFolder, at + 1))
        shortened.replace(at, xplaneFolder.size(), "X-Plane/");
    return shortened;
}

void TellSpeech(std::string_view message) {
    constexpr std::string_view Say = "say>";
    if (message.starts_with(Say)) {
        ++counted.said;
        message.remove_prefix(Say.size());
        while (!message.empty() && message.back() == ' ') message.remove_suffix(1); // spelled numbers end so
        return Speaker(FennicColour, "FENNIC", Quoted(message));
    }
    if ((silent > 0 || !isButtonTold) && (message == "CmdRecStart" || message == "CmdRecStop")) return;
    Action("sends", WithoutScratchPath(message), Dim);
}

// True when it is told by what the pilot says, or that he says nothing.
bool isTalkTold(bool isHeld) {
    if (isHeld) {
        isButtonTold = !isVoiceThere;
        hasPilotSpoken = isPilotSpeaking();
    } else if (!isButtonTold && !hasPilotSpoken) {
        TranscribeHeard("");
    }
    return !isButtonTold;
}

void TellCommand(const Event &event) {
    if (event.detail == "pilot") {
        if (silent > 0) return;
        if (event.subject == PushToTalk && isTalkTold(event.kind == EventKind::CommandBegun)) return;
        return Speaker(PilotColour, "PILOT",
                       (event.kind == EventKind::CommandEnded ? "lets go of " : "holds ") + event.subject);
    }
    announced.command.clear();
    switch (event.kind) {
    case EventKind::CommandBegun: ++counted.fired; return Action("holds", event.subject);
    case EventKind::CommandEnded: return Action("lets go", event.subject);
    default: ++counted.fired; return Action("fires", event.subject);
    }
}

// From a speech server in the same simulator.
void TellUnderstood(const std::string &message) {
    if (!message.empty() && message != "stop>") Action("hears", Quoted(message));
}

void TellWritten(const Event &event) {
    if (event.subject == FromSpeechServer) return TellUnderstood(event.detail);
    const std::string &dataref = announced.dataref;
    if (dataref.empty()) return;
    // One changed element is told as "name[n]".
    const bool same =
        event.subject == dataref
        || (event.subject.compare(0, dataref.size(), dataref) == 0 && event.subject[dataref.size()] == '[');
    if (!same) return;
    ++counted.set;
    Action("sets", event.subject + " = " + event.detail);
    announced.dataref.clear();
}

} // namespace

void OpenTranscript(bool shown, const std::string &folder) {
    isShown = shown;
    xplaneFolder = folder;
    isColoured = shown && (isTerminalOutput() || std::getenv("CLICOLOR_FORCE") != nullptr);
}

void CloseTranscript(double simulatedSeconds, double realSeconds) {
    PrintAllSets();
    char flown[24];
    FormatFlightTime(simulatedSeconds, flown);
    char real[32];
    const auto end = std::to_chars(real, real + sizeof real, realSeconds, std::chars_format::fixed, 1).ptr;
    TranscribeDirection("The end. Heard " + std::to_string(counted.heard) + ", said "
                        + std::to_string(counted.said) + ", commands " + std::to_string(counted.fired)
                        + ", datarefs set " + std::to_string(counted.set) + "; " + flown + " flown in "
                        + std::string(real, end) + " s.");
}

void TranscribeEvent(const Event &event) {
    if (event.kind == EventKind::ActionBegun || event.kind == EventKind::ActionOnCommand
        || event.kind == EventKind::ActionOnDataref)
        announced = {};
    switch (event.kind) {
    case EventKind::Problem: return Speaker(ProblemColour, "LOG", WithoutScratchPath(event.subject));
    case EventKind::ActionBegun: return TellAction(event.subject);
    case EventKind::ActionOnCommand: announced.command = event.subject; return;
    case EventKind::ActionOnDataref: return AnnounceWrite(event.subject);
    case EventKind::AnswersExpected: return NoteAnswers(event.subject);
    case EventKind::SpeechMessage: return TellSpeech(event.subject);
    case EventKind::DatarefWritten: return TellWritten(event);
    case EventKind::SimulatorSpeech: return Speaker(Plain, "X-PLANE", Quoted(event.subject));
    default: return TellCommand(event);
    }
}

void TranscribeFrameEnd() {
    if (!pendingSets.empty()) {
        for (PendingSet &set : pendingSets) --set.framesToGo;
        PrintSetsIf([](const PendingSet &set) { return set.framesToGo <= 0; });
    }
    if (answers.framesToGo > 0 && --answers.framesToGo == 0) TellAnswers();
    if (!announced.dataref.empty()) {
        const XPLMDataRef handle = XPLMFindDataRef(announced.dataref.c_str());
        // An unknown dataref the plug-in has reported itself. This one had its value before, or is the
        // plug-in's own.
        if (handle != nullptr && XPLMIsDataRefGood(handle) != 0) {
            int index = 0;
            if (announced.index.size() > 1)
                std::from_chars(announced.index.data() + 1, announced.index.data() + announced.index.size(),
                                index);
            ++counted.set;
            Action("sets", announced.dataref + announced.index + " = "
                               + NumberText(static_cast<float>(GetNumber(announced.dataref, index))));
        }
        announced.dataref.clear();
    }
    if (!announced.command.empty()) {
        if (XPLMFindCommand(announced.command.c_str()) == nullptr)
            Action("misses", announced.command + " (there is no such command)", ProblemColour);
        announced.command.clear();
    }
}

void TranscribeVoice(bool isThere) {
    isVoiceThere = isThere;
}

void TranscribeHeard(const std::string &text) {
    ++counted.heard;
    hasPilotSpoken = true;
    if (answers.framesToGo > 0) TellAnswers();
    PrintAllSets();
    Speaker(PilotColour, "PILOT", text.empty() ? "(says nothing)" : Quoted(text));
}

void TranscribeReply(const std::string &text) {
    Speaker(Dim, "", "(the speech server writes: " + text + ")");
}

void TranscribeSet(const std::string &dataref, const std::string &value) {
    if (!isShown) return;
    for (PendingSet &set : pendingSets) {
        if (set.dataref != dataref) continue;
        set.value = value;
        set.isMoving = true;
        set.framesToGo = SettledFrames;
        return;
    }
    pendingSets.push_back({dataref, value, TimeNow()});
}

void TranscribeTap(const std::string &command) {
    Speaker(PilotColour, "PILOT", "presses " + command);
}

void TranscribeAct(const std::string &act) {
    Speaker(PilotColour, "PILOT", act);
}

TranscriptPause::TranscriptPause() {
    ++silent;
}
TranscriptPause::~TranscriptPause() {
    --silent;
}

void TranscribeDirection(const std::string &text) {
    if (!isShown) return;
    PrintSwitches();
    Print(TimeNow(), Dim, SpeakerColumn, "", SpeakerColumn, std::string("(").append(text).append(")"));
}

void TranscribeNote(const std::string &text) {
    if (!isShown) return;
    PrintSwitches();
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        Print(TimeNow(), Bold, SpeakerColumn, "", SpeakerColumn, text.substr(start, end - start));
        start = end + 1;
    }
}

} // namespace simhost
