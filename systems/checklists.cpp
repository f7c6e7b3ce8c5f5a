// An item is named by the question that the steps before have asked: "Fuel pumps?" is "fuel pumps". Nothing
// of this is done in a steady frame, apart from two flags.
#include "systems/checklists.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "XPLMDataAccess.h"
#include "frame/datarefs.h"
#include "systems/checklist_calls.h"
#include "systems/program.h"
#include "systems/spoken_links.h"
#include "util/make_fresh.h"
#include "util/text.h"
#include "voice/action_queue.h"

namespace {

const int FramesToSkip = 2; // the words may stand behind the checklists in the files

struct ChecklistsState {
    bool isRunning = false; // a checklist, in this frame
    bool isWanted = false;  // to stand by
    bool isHeld = false;    // and it is so
    std::vector<doStruct> putAside;
    int framesToSkip = 0;
    std::map<ParameterAddress, std::vector<std::string>> skipped; // by device
};
ChecklistsState state;

struct ChecklistDatarefs {
    XPLMDataRef running = nullptr, standingBy = nullptr;
};
ChecklistDatarefs datarefs;

bool isSpoken(const structExecute &action) {
    return TextOfAction(action.type) == ActionText::Spoken && !action.text.empty()
           && !action.text.starts_with('#');
}

const structExecute *LastSpoken(const logicblock_struct &block) {
    const auto last = std::find_if(block.executes.rbegin(), block.executes.rend(), isSpoken);
    return last == block.executes.rend() ? nullptr : &*last;
}

// What was said last before the step; null when nothing was.
const structExecute *SaidBefore(ParameterAddress step) {
    while (step.out-- > 0) {
        const logicblock_struct *block = RecordAt(ParameterAt(step)->logic, FiredBlock(step));
        const structExecute *spoken = block ? LastSpoken(*block) : nullptr;
        if (spoken) return spoken;
    }
    return nullptr;
}

// Small, where it is no abbreviation: "Fuel pumps", but "APU" and "V one".
std::string WithSmallLetter(std::string text) {
    const bool isWord = text.size() > 1 && text[1] >= 'a' && text[1] <= 'z';
    if (isWord && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
    return text;
}

// "Primed. Propeller area, [SIR]?" asks for the propeller area. Empty when it asks for nothing that can be
// named.
std::string AskedFor(std::string text) {
    text = text.substr(0, text.find('#'));
    if (!text.ends_with('?')) return "";
    text.pop_back();
    for (const char *end : {". ", "! "})
        if (const size_t sentence = text.rfind(end); sentence != std::string::npos)
            text.erase(0, sentence + 2);
    text = ReplaceString(std::move(text), std::string(", ") + Placeholders[PilotAddress].word, "");
    if (text.starts_with("And ")) text.erase(0, 4);
    return text.find_first_of("<[") == std::string::npos ? WithSmallLetter(std::move(text)) : "";
}

// The question, or else the step's name: "GEAR PINS" is "gear pins".
std::string ItemName(const ParameterAddress &step) {
    const structExecute *said = SaidBefore(step);
    const std::string asked = said ? AskedFor(said->text) : "";
    if (!asked.empty()) return asked;
    const std::string &name = ParameterAt(step)->name;
    return LowerToUpperCase(name) == name ? UpperToLowerCase(name) : WithSmallLetter(name);
}

bool isUnderWay(const ParameterAddress &first) {
    return DeviceAt(first)->serialStack && ParameterAt(first) && LiveValue(first) > 0.0
           && isChecklist(*DeviceAt(first));
}

// Calls visit with the step that each running checklist waits for; it may lie behind the last one.
template <typename Visit> void ForEachRunning(Visit visit) {
    for (ParameterAddress place{0, 0, 0}; SystemAt(place); place = {place.sys + 1, 0, 0}) {
        for (; DeviceAt(place); place = {place.sys, place.dev + 1, 0}) {
            if (!isUnderWay(place)) continue;
            while (ParameterAt(place) && LiveValue(place) != 0.0) place.out++;
            visit(std::as_const(place));
        }
    }
}

// "a", "a and b", "a, b and c".
std::string Enumerated(const std::vector<std::string> &names) {
    std::string text;
    for (size_t i = 0; i < names.size(); i++)
        text += (i == 0 ? "" : i + 1 < names.size() ? ", " : " and ") + names[i];
    return text;
}

std::string SkippedItemsOf(const device_struct &device) {
    const auto items = state.skipped.find(AddressOf(device));
    return items == state.skipped.end() ? "" : ", except " + Enumerated(items->second);
}

std::string RunningChecklists() {
    std::string text;
    ForEachRunning([&](const ParameterAddress &step) {
        text += (text.empty() ? "" : ", and ") + ChecklistName(*DeviceAt(step));
        if (ParameterAt(step)) text += ", at " + ItemName(step);
    });
    return text.empty() ? "no checklist" : text;
}

// Once no command is held down any more.
void HoldWhatIsQueued() {
    if (!state.isWanted || state.isHeld || !actionQueue.begunCommands.empty()) return;
    state.isHeld = true;
    const auto rest = std::stable_partition(executeFlow.begin(), executeFlow.end(),
                                            [](const doStruct &action) { return !action.isOfCalled; });
    state.putAside.assign(rest, executeFlow.end());
    executeFlow.erase(rest, executeFlow.end());
}

// What a step that is skipped does to nobody but herself and the list.
bool isDoneWhenSkipped(const structExecute &action) {
    switch (action.type) {
    case ScriptPosition:
    case ScriptAnswer:
    case ScriptInput:
    case ScriptCommandEndNow: return true;
    case ScriptSay:
    case ScriptSayWait: return action.value != 0.0;
    case ScriptSet: return action.text.starts_with("kv/");
    default: return false;
    }
}

bool GoesOn(const logicblock_struct &block) {
    const auto breaksOff = [](const structExecute &action) { return action.type == ScriptBreak; };
    return !block.executes.empty() && std::none_of(block.executes.begin(), block.executes.end(), breaksOff);
}

// The last text of a step is the question that the next one waits with, or an end; else it answers the pilot.
bool isSaidWhenSkipped(const structExecute &last, const device_struct &sequence, size_t step) {
    if (last.text.ends_with('?') || Contains(last.text, Placeholders[SkippedItems].word)) return true;
    if (step + 1 == sequence.outs.size()) return true;
    const std::vector<logicblock_struct> &next = sequence.outs[step + 1].logic;
    return std::none_of(next.begin(), next.end(),
                        [](const logicblock_struct &block) { return block.compares.empty(); });
}

} // namespace

void CreateChecklistDatarefs() {
    datarefs.running = CreateDrf_Int("kv/fo/checklist", 0);
    datarefs.standingBy = CreateDrf_Int("kv/fo/stand_by", 0);
}

void BeginChecklists() {
    state.isRunning = false;
    HoldWhatIsQueued();
}

void EndChecklists() {
    if (state.framesToSkip > 0) state.framesToSkip--;
    XPLMSetDatai(datarefs.running, state.isRunning ? 1 : 0);
    XPLMSetDatai(datarefs.standingBy, state.isWanted ? 1 : 0);
}

void NoteChecklistRuns() {
    state.isRunning = true;
}

void StandBy() {
    state.isWanted = true;
    HoldWhatIsQueued();
}

void GoOn(bool repeats) {
    if (!state.isWanted) return;
    const bool isAskedAgain = repeats && state.putAside.empty();
    executeFlow.insert(executeFlow.begin(), state.putAside.begin(), state.putAside.end());
    DropStandBy();
    if (!isAskedAgain) return;
    ForEachRunning([](const ParameterAddress &step) {
        const structExecute *said = SaidBefore(step);
        if (said) QueueAction(QueueType(ScriptSayWait), said->text, true);
    });
}

void DropStandBy() {
    state.isWanted = state.isHeld = false;
    state.putAside.clear();
}

bool isStandingBy() {
    return state.isHeld;
}

bool isQueuePutAside() {
    return !state.putAside.empty();
}

void SkipItem() {
    GoOn(false);
    state.framesToSkip = FramesToSkip;
}

bool TakeSkip() {
    return std::exchange(state.framesToSkip, 0) != 0;
}

SkippedStep SkipStep(const device_struct &sequence, size_t step) {
    ParameterAddress place = AddressOf(sequence);
    std::vector<std::string> &items = state.skipped[place];
    place.out = static_cast<int>(step);
    items.push_back(ItemName(place));
    const std::vector<logicblock_struct> &blocks = sequence.outs[step].logic;
    const auto block = std::find_if(blocks.begin(), blocks.end(), GoesOn);
    SkippedStep skipped;
    if (block == blocks.end()) return skipped;
    skipped.block = static_cast<int>(block - blocks.begin());
    const structExecute *last = LastSpoken(*block);
    if (last && !isSaidWhenSkipped(*last, sequence, step)) last = nullptr;
    for (const structExecute &action : block->executes) {
        const bool isPauseBehind = action.type == ScriptPause && last && &action > last;
        if (&action == last || isPauseBehind || isDoneWhenSkipped(action)) skipped.actions.push_back(&action);
    }
    return skipped;
}

void ForgetSkipped(const device_struct &sequence) {
    if (!state.skipped.empty()) state.skipped.erase(AddressOf(sequence));
}

std::string WithChecklistWords(const std::string &text, const device_struct &device) {
    if (text.find('[') == std::string::npos) return text;
    const std::string skipped = Placeholders[SkippedItems].word,
                      running = Placeholders[WhereInChecklist].word;
    std::string spoken = text;
    if (Contains(text, skipped))
        spoken = ReplaceStringAll(std::move(spoken), skipped, SkippedItemsOf(device));
    if (!Contains(text, running)) return spoken;
    std::string where = RunningChecklists();
    if (text.starts_with(running)) where = LowerToUpperCase(where.substr(0, 1)) + where.substr(1);
    return ReplaceStringAll(std::move(spoken), running, where);
}

void ResetChecklists() {
    MakeFresh(state);
}
