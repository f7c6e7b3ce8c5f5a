// The calls by which the pilot acts and by which a flight learns what happened: commands, speech, what the
// first officer said, the log, the dataref browser.
#include "simhost/flights/state.h"

#include <deque>
#include <optional>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/transcript.h"
#include "simhost/interface/plugins.h"

namespace simhost {

namespace {

constexpr std::string_view SAY = "say>";

std::string KnownCommand(const Call &call) {
    std::string name = call.Text(1, "name");
    if (!XPLMFindCommand(name.c_str())) call.Refuse("name", "names no command: " + name);
    return name;
}

int AddOne(Call &call) {
    const std::string name = call.Text(1, "name");
    if (name.empty()) call.Refuse("name", "must not be empty");
    AddCommand(name, call.Has(2) ? call.Text(2, "description") : std::string());
    return 0;
}

int Fired(Call &call) {
    const CommandCount count = CountCommand(call.Text(1, "name"));
    lua_createtable(call.lua, 0, 2);
    lua_pushinteger(call.lua, count.begun);
    lua_setfield(call.lua, -2, "begun");
    lua_pushinteger(call.lua, count.ended);
    lua_setfield(call.lua, -2, "ended");
    return 1;
}

int Press(Call &call) {
    const std::string name = KnownCommand(call);
    SimulatorCall inside;
    HoldCommand(name);
    return 0;
}

int Release(Call &call) {
    const std::string name = KnownCommand(call);
    SimulatorCall inside;
    ReleaseCommand(name);
    return 0;
}

int Tap(Call &call) {
    const std::string name = KnownCommand(call);
    TranscribeTap(name);
    const TranscriptPause untold;
    SimulatorCall inside;
    HoldCommand(name);
    ReleaseCommand(name);
    return 0;
}

bool hasSpeechLink() {
    const XPLMDataRef answer = XPLMFindDataRef(FromSpeechServer);
    return answer && (XPLMGetDataRefTypes(answer) & xplmType_Data) != 0;
}

void NeedSpeechLink(const Call &call) {
    if (!hasSpeechLink())
        call.Fail(std::string("there is no string dataref \"") + FromSpeechServer
                  + "\"; is the plug-in started?");
}

// What the pilot is saying: push-to-talk pressed, one frame, the speech server's answer, two frames,
// released, one frame.
struct Utterance {
    std::string text;
    int framesDone = 0;
};
constexpr int UtteranceFrames = 4;

// The first is being said; the others wait.
std::deque<Utterance> utterances;
std::optional<TranscriptPause> untold; // while one is being said
bool wasAnswerRefused = false;

bool Answer(const std::string &text) {
    SimulatorCall inside;
    return SetText(FromSpeechServer, text);
}

void Say(const std::string &text) {
    utterances.push_back({text, 0});
}

int Hear(Call &call) {
    const std::string text = call.Text(1, "text");
    if (!XPLMFindCommand(PushToTalk))
        call.Fail(std::string("there is no command \"") + PushToTalk + "\"; is the plug-in started?");
    NeedSpeechLink(call);
    wasAnswerRefused = false;
    Say(text);
    while (!utterances.empty()) StepFrames(1);
    if (wasAnswerRefused) call.Fail(std::string(FromSpeechServer) + " cannot be written");
    return 0;
}

int Reply(Call &call) {
    const std::string text = call.Text(1, "text");
    NeedSpeechLink(call);
    TranscribeReply(text);
    if (!Answer(text)) call.Fail(std::string(FromSpeechServer) + " cannot be written");
    return 0;
}

// Hands the simulator's messages out to the two calls that ask for them.
void TakeMessages() {
    for (SentMessage &message : TakeSentMessages()) {
        if (message.text.compare(0, SAY.size(), SAY) == 0)
            flight.said.push_back(message.text.substr(SAY.size()));
        flight.sent.push_back(std::move(message));
    }
}

void PushText(lua_State *lua, const std::string &text) {
    lua_pushlstring(lua, text.data(), text.size());
}

int Sent(Call &call) {
    TakeMessages();
    lua_createtable(call.lua, static_cast<int>(flight.sent.size()), 0);
    lua_Integer place = 0;
    for (const SentMessage &message : flight.sent) {
        lua_createtable(call.lua, 0, 2);
        lua_pushnumber(call.lua, message.time);
        lua_setfield(call.lua, -2, "t");
        PushText(call.lua, message.text);
        lua_setfield(call.lua, -2, "text");
        lua_rawseti(call.lua, -2, ++place);
    }
    flight.sent.clear();
    return 1;
}

int Said(Call &call) {
    TakeMessages();
    PushTexts(call.lua, flight.said);
    flight.said.clear();
    return 1;
}

int Log(Call &call) {
    PushTexts(call.lua, TakeLogLines());
    return 1;
}

int Problems(Call &call) {
    PushTexts(call.lua, TakeProblems());
    return 1;
}

int DatarefBrowser(Call &call) {
    SwitchDatarefBrowser(call.Boolean(1, "on"));
    return 0;
}

int DatarefBrowserNames(Call &call) {
    PushTexts(call.lua, TakeNamesToldToDatarefBrowser());
    return 1;
}

int Note(Call &call) {
    TranscribeNote(call.Text(1, "text"));
    return 0;
}

} // namespace

void TypeSpeech(const std::string &text) {
    if (XPLMFindCommand(PushToTalk) && hasSpeechLink())
        Say(text);
    else
        TranscribeDirection("Nobody is there to hear \"" + text + "\".");
}

void BeginFrameOfSpeech() {
    if (utterances.empty()) return;
    const Utterance &utterance = utterances.front();
    if (utterance.framesDone == 0) {
        TranscribeHeard(utterance.text);
        untold.emplace();
        SimulatorCall inside;
        HoldCommand(PushToTalk);
    } else if (utterance.framesDone == 1) {
        wasAnswerRefused = !Answer(utterance.text);
    } else if (utterance.framesDone == 3) {
        SimulatorCall inside;
        ReleaseCommand(PushToTalk);
    }
}

void EndFrameOfSpeech() {
    if (utterances.empty() || ++utterances.front().framesDone < UtteranceFrames) return;
    utterances.pop_front();
    untold.reset();
}

void AddCockpitCalls(lua_State *lua) {
    AddCalls(lua, {{"add_command", Bridge<AddOne>},
                   {"fired", Bridge<Fired>},
                   {"press", Bridge<Press>},
                   {"release", Bridge<Release>},
                   {"tap", Bridge<Tap>},
                   {"hear", Bridge<Hear>},
                   {"reply", Bridge<Reply>},
                   {"sent", Bridge<Sent>},
                   {"said", Bridge<Said>},
                   {"log", Bridge<Log>},
                   {"problems", Bridge<Problems>},
                   {"dataref_browser", Bridge<DatarefBrowser>},
                   {"dataref_browser_names", Bridge<DatarefBrowserNames>},
                   {"note", Bridge<Note>}});
}

} // namespace simhost
