// The executer. Only one action runs per frame, even when it needs no time, so that what an action starts
// (a move, a sentence) is seen before the next one begins.
#include "voice/executer.h"

#include <algorithm>
#include <cstdlib>

#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/flight_computations.h"
#include "figure/liveliness.h"
#include "figure/positions.h"
#include "frame/aircraft.h"
#include "frame/datarefs.h"
#include "frame/settings.h"
#include "systems/action_kinds.h"
#include "systems/checklists.h"
#include "systems/links.h"
#include "util/clock.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/text.h"
#include "voice/action_queue.h"
#include "voice/link_words.h"
#include "voice/published_log.h"
#include "voice/speech_link.h"

const float OneLetterPauseSec = 0.1F;
const float SaySystemPauseSec = 1.0F;
ExecuterState executerState;
ActionQueueState actionQueue;

namespace {

const size_t QueueCapacity = 10000;
const size_t SpokenTextsKept = 100; // more than overlay and editor can show
const float NextActionAfterSaySec = 0.5F;

bool isBegun(XPLMCommandRef command) {
    const std::vector<XPLMCommandRef> &begunCommands = actionQueue.begunCommands;
    return std::find(begunCommands.begin(), begunCommands.end(), command) != begunCommands.end();
}

bool AreAllActionsAnnounced() {
    if (!DRFi_isAnnounceNeed) DRFi_isAnnounceNeed = FindDataref("kv/fennic/comments");
    return XPLMGetDatai(DRFi_isAnnounceNeed) == 1;
}

float SpeakingTime(const std::string &text) {
    return static_cast<float>(CountCharacters(text)) * OneLetterPauseSec + SaySystemPauseSec;
}

float TimeIn(double seconds) {
    return static_cast<float>(FlightTimeSEC + seconds);
}

std::string WithLastText(const std::string &text) {
    return ReplaceString(text, Placeholders[LastText].word,
                         fennicsay.empty() ? "I have said nothing yet." : fennicsay.front());
}

// Sends a text whose placeholders are replaced. One that became empty is not said.
void Speak(const std::string &spoken) {
    if (spoken.empty()) return;
    SendMSG(link_words::Say + spoken);
    LiveWhileSaying(spoken);
    fennicsay.insert(fennicsay.begin(), spoken);
    if (fennicsay.size() > SpokenTextsKept) fennicsay.resize(SpokenTextsKept);
}

// A leading "#" marks an announcement: said only when the pilot wants all actions announced.
void Announce(const std::string &text, void (*say)(const std::string &)) {
    if (text.starts_with("#")) {
        if (AreAllActionsAnnounced()) say(text.substr(1));
    } else if (!text.empty()) {
        say(text);
    }
}

// What is dropped is not begun any more; but a command that is held already is let go if that was among it.
void DropQueue() {
    std::vector<doStruct> dropped;
    dropped.swap(executeFlow);
    for (const doStruct &action : dropped)
        if (action.type == QueueType(ScriptCommandEnd) && isBegun(XPLMFindCommand(action.text.c_str())))
            ExecuteCommand(action.text, "End");
}

// False when the action is none of the hand's. Of a dataref the name counts, not the value.
bool ReachForThingOf(const doStruct &action, double at) {
    const bool isHands = action.type == QueueType(ScriptCommandOnce)
                         || action.type == QueueType(ScriptCommandBegin)
                         || action.type == QueueType(ScriptSet);
    if (isHands) ReachFor(std::string_view(action.text).substr(0, action.text.find('=')), at);
    return isHands;
}

// While she waits, her hand sets out for what is done when the wait is over. An announcement may not be said.
void SetOutForNext() {
    if (waitUntil <= FlightTimeSEC) return;
    for (const doStruct &next : executeFlow)
        if (ReachForThingOf(next, waitUntil) || !next.text.starts_with("#")) return;
}

void Perform(const doStruct &action) {
    switch (action.type) {
    case QueueType(ScriptSay):
        Announce(action.text, ExecuteSay);
        isPrevExecuteCompleted = 1;
        break;
    case QueueType(ScriptSayWait):
        Announce(action.text, ExecuteWaitSay);
        isPrevExecuteCompleted = 1;
        break;
    case QueueType(ScriptPosition):
        isPrevExecuteCompleted = 0;
        ExecutePos(action.text);
        break;
    case QueueTypeAtZero(ScriptPosition):
        isPrevExecuteCompleted = 0;
        ExecutePosFast(action.text);
        break;
    case QueueType(ScriptPause):
        isPrevExecuteCompleted = 1;
        waitUntil = TimeIn(LeadingNumber(action.text));
        break;
    case QueueType(ScriptBreak):
        DropQueue();
        string2debugString("executeFlow.clear() - ", NameOfQueued(action.type), 1);
        break;
    case QueueType(ScriptCommandOnce):
        ReachForThingOf(action, FlightTimeSEC);
        ExecuteCommand(action.text, "Once");
        break;
    case QueueType(ScriptCommandBegin):
        ReachForThingOf(action, FlightTimeSEC);
        ExecuteCommand(action.text, "Begin");
        break;
    case QueueType(ScriptCommandEnd): ExecuteCommand(action.text, "End"); break;
    case QueueType(ScriptSet):
        isPrevExecuteCompleted = 1;
        ReachForThingOf(action, FlightTimeSEC);
        ExecuteDrf(action.text);
        break;
    case QueueType(ScriptAnswer):
        isPrevExecuteCompleted = 1;
        answerstimer.push_back({action.text, FlightTimeSEC + LeadingNumber(action.text)});
        break;
    default: break;
    }
}

// Says once per text that its index cannot be written.
void ReportIndexOnce(const std::string &text) {
    if (executerState.reportedIndices.insert(text).second)
        LogProblem("Error in script - array index outside 0 to 15: ", text);
}

// "name" or "name[index]" taken apart; false when the index is no number from 0 to 15.
bool SplitIndex(const std::string &text, std::string &name, int &index) {
    const size_t bracket = text.find('[');
    name = text.substr(0, bracket);
    index = 0;
    if (bracket == std::string::npos) return true;
    const std::string digits = ReplaceStringAll(text.substr(bracket + 1), "]", "");
    return ParseInt(digits, index) && isReachableElement(index);
}

std::string ReplaceRunway(const std::string &text, const char *placeholder, const std::string &name,
                          float distance) {
    return distance == -1.0F ? "" : ReplaceString(text, placeholder, name);
}

std::string SpokenLinkValue(const SpokenLink &spoken) {
    const sysLink_struct link = String2sysLink(spoken.name);
    if (!ParameterAt(link)) return "UNKNOWN";
    std::string number = int2string(TruncateToInt(GetValueFromSysLink(link)));
    if (!spoken.isSpelled) return number;
    std::string spelled;
    for (char digit : number) spelled.append(1, digit).append(1, ' ');
    return spelled;
}

} // namespace

void QueueAction(int type, const std::string &text, bool isOfCalled) {
    if (executeFlow.size() < QueueCapacity) {
        executeFlow.push_back({type, text, isOfCalled});
        return;
    }
    if (!actionQueue.wasOverflowLogged) LogProblem("Error in script - action queue is full, dropped: ", text);
    actionQueue.wasOverflowLogged = true;
}

void Executer() {
    if (executeFlow.empty()) return;
    if (isPrevExecuteCompleted == 0) return;
    if (waitUntil > FlightTimeSEC) return;
    if (lockStep == 1) return;
    const doStruct action = executeFlow.front();
    LogAction(action);
    Perform(action);
    if (!executeFlow.empty()) {
        executeFlow.erase(executeFlow.begin());
        executeFlowActual = executeFlow.empty() ? "" : executeFlow.front().text;
    }
    SetOutForNext();
    if (isNeedStep == 1) lockStep = 1;
}

void AbortExecution() {
    executeFlow.clear();
    DropGestures();
    DropStandBy();
    executeFlowActual.clear();
    string2debugString("executeFlow.clear() - ", "ABORT", 1);
    SayAborted();
    XPLMSetDatai(DRFi_ShowPlanshet, 0);
}

void SayAborted() {
    EndBegunCommands();
    const bool isRepetition = FlightTimeSEC < executerState.abortRepeatsUntil;
    executerState.abortRepeatsUntil = TimeIn(NextActionAfterSaySec);
    if (isRepetition)
        waitUntil = executerState.abortRepeatsUntil;
    else
        ExecuteSay(link_words::AbortedText);
}

void EndBegunCommands() {
    std::vector<XPLMCommandRef> held;
    held.swap(actionQueue.begunCommands); // first: what ends one may abort again
    for (XPLMCommandRef command : held) XPLMCommandEnd(command);
}

void ReInitExecuter() {
    waitUntil = 0.0F;
    executerState.abortRepeatsUntil = 0.0F;
    answerstimer.clear(); // their times are those of the flight before
    GoOn(false);
    EndBegunCommands();
}

void ExecuteSay(const std::string &text) {
    const float seconds = SpeakingTime(WithLastText(text));
    Speak(VarToString(text));
    waitUntil = TimeIn(NextActionAfterSaySec);
    Next_lipsAnimTime = TimeIn(seconds);
}

void ExecuteWaitSay(const std::string &text) {
    const std::vector<std::string> alternatives = StringToWordsArray(text, '#');
    const size_t choice =
        alternatives.size() > 1 ? static_cast<size_t>(std::rand()) % alternatives.size() : 0;
    const std::string &chosen = alternatives[choice];
    const float seconds = SpeakingTime(WithLastText(chosen));
    const std::string spoken = VarToString(chosen);
    Speak(spoken);
    if (alternatives.size() > 1) string2debugString("Send to speech server: ", spoken, 1);
    waitUntil = TimeIn(seconds);
    Next_lipsAnimTime = waitUntil;
}

void ExecuteDrf(const std::string &text) {
    std::vector<std::string> pieces = StringToWordsArray(text, '=');
    if (pieces.size() != 2) {
        LogProblem("Error in script - no operand in this string: ", text);
        return;
    }
    for (std::string &piece : pieces) std::erase(piece, ' ');
    std::string name;
    int index = 0;
    const bool isIndexGood = SplitIndex(pieces[0], name, index);
    double value = 0.0;
    if (!ParseDouble(pieces[1], value)) {
        LogProblem("Error in script - value is no number: ", text);
        return;
    }
    const XPLMDataRef handle = FindDataref(name.c_str());
    if (!handle) {
        LogProblem("Error in script - cant find dataref: ", name);
        return;
    }
    if (!isIndexGood) {
        ReportIndexOnce(text);
        return;
    }
    switch (XPLMGetDataRefTypes(handle)) {
    case xplmType_Int: XPLMSetDatai(handle, TruncateToInt(value)); break;
    case xplmType_Float: XPLMSetDataf(handle, static_cast<float>(value)); break;
    case xplmType_FloatArray: SetElementf(handle, index, static_cast<float>(value)); break;
    case xplmType_IntArray: SetElementi(handle, index, TruncateToInt(value)); break;
    default: XPLMSetDatad(handle, value); break;
    }
}

void ExecuteCommand(const std::string &name, const std::string &mode) {
    const XPLMCommandRef command = XPLMFindCommand(name.c_str());
    if (!command) return;
    if (mode == "Once") XPLMCommandOnce(command);
    if (mode == "Begin" && !isBegun(command)) {
        actionQueue.begunCommands.push_back(command);
        XPLMCommandBegin(command);
    }
    if (mode == "End") {
        std::erase(actionQueue.begunCommands, command);
        XPLMCommandEnd(command);
    }
}

std::string VarToString(std::string text) {
    const auto word = [](PlaceholderMeaning meaning) { return Placeholders[meaning].word; };
    text = ReplaceString(std::move(text), word(HerName), globalName);
    text = ReplaceString(std::move(text), word(PilotName), globalUser);
    text = ReplaceString(std::move(text), word(PilotAddress), globalSir);
    if (ThisAircraft().publishesRunways) {
        if (Contains(text, word(TakeoffRunway)))
            text = ReplaceRunway(text, word(TakeoffRunway), OrvikToRwyName, OrvikToRwyDistM);
        else if (Contains(text, word(LandingRunway)))
            text = ReplaceRunway(text, word(LandingRunway), OrvikLdgRwyName, OrvikLdgRwyDistM);
    }
    // One pass from left to right: what a link is replaced by is not looked at again.
    std::string spoken;
    size_t done = 0;
    for (SpokenLink link; FindSpokenLink(text, done, link); done = link.end)
        spoken.append(text, done, link.begin - done).append(SpokenLinkValue(link));
    return WithLastText(spoken.append(text, done));
}

void ResetActionQueue() {
    MakeFresh(actionQueue);
}

void ResetExecuter() {
    MakeFresh(executerState);
    ResetActionQueue();
}
