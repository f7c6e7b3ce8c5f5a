// What is queued is done by the executer, when it comes to it; all else is done here.
#include "systems/block_actions.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "systems/action_kinds.h"
#include "systems/checklists.h"
#include "systems/expectations.h"
#include "systems/links.h"
#include "util/clock.h"
#include "util/log.h"
#include "util/numbers.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/expected_phrases.h"

namespace {

std::vector<const structExecute *> restartedTimers; // by the actions of this frame, in order

std::string QueuedTextOf(const structExecute &action, QueuedText form) {
    if (form == QueuedText::Value) return double2string(action.value);
    return form == QueuedText::Text ? action.text : action.text + "=" + double2string(action.value);
}

} // namespace

void ExpectAnswerTimers() {
    size_t kept = 0;
    for (size_t i = 0; i < answerstimer.size(); i++) {
        ExpectAnswer(answerstimer[i].name);
        if (answerstimer[i].time < FlightTimeSEC && ++i == answerstimer.size()) break;
        if (kept != i) std::swap(answerstimer[kept], answerstimer[i]);
        kept++;
    }
    answerstimer.resize(kept);
}

void BeginAnswerTimers() {
    restartedTimers.clear();
}

void RestartAnswerTimers() {
    if (restartedTimers.empty()) return;
    std::unordered_set<std::string_view> texts;
    const auto isSuperseded = [&](const structExecute *action) { return !texts.insert(action->text).second; };
    std::reverse(restartedTimers.begin(), restartedTimers.end());
    std::erase_if(restartedTimers, isSuperseded);
    std::reverse(restartedTimers.begin(), restartedTimers.end());
    std::erase_if(answerstimer, [&](const answertimer_struct &timer) { return texts.contains(timer.name); });
    for (const structExecute *action : restartedTimers)
        if (action->value > 0) answerstimer.push_back({action->text, FlightTimeSEC + action->value});
    restartedTimers.clear();
}

void RunAction(const structExecute &action, const device_struct &device, StepContext &step) {
    const ActionKind *kind = ActionKindOf(action.type);
    if (!kind) return;
    if (kind->when == ActionTime::Queued) {
        const bool isOther = action.value == 0.0 && kind->queueTypeAtZero >= 0;
        std::string text = QueuedTextOf(action, kind->queued);
        if (kind->text == ActionText::Spoken) text = WithChecklistWords(text, device);
        QueueAction(isOther ? kind->queueTypeAtZero : kind->queueType, text, step.called != nullptr);
    }
    switch (action.type) {
    case ScriptBreak: step.isBrokenOff = true; break;
    case ScriptInput: ExpectInput(device.name, action.text, action.value != 0.0); break;
    case ScriptCommandEndNow: ExecuteCommand(action.text, "End"); break;
    case ScriptAnswer: restartedTimers.push_back(&action); break;
    case ScriptHold:
        if (action.value != 0.0)
            StandBy();
        else
            GoOn(true);
        break;
    case ScriptSkip: SkipItem(); break;
    default: break;
    }
}

void RunActions(const BlockFiring &firing, StepContext &step) {
    const std::vector<structExecute> &actions = firing.block->executes;
    if (actions.front().type != ScriptInput) {
        string2debugString("EXECUTE FROM:", SysDevOut2name(firing.place) + " B " + int2string(firing.index),
                           1);
    }
    for (const structExecute &action : actions) RunAction(action, *firing.device, step);
}
