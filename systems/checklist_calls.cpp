#include "systems/checklist_calls.h"

#include <string_view>

namespace {

const char *const ChecklistSystem = "CHECKLIST";
const char *const ChecklistWord = "checklist";

// The first of the phrases that call a sequence, or the first with a word in it; null when there is none.
const std::string *CallOf(const device_struct &sequence, std::string_view word = "") {
    if (sequence.outs.empty()) return nullptr;
    for (const logicblock_struct &block : sequence.outs.front().logic)
        for (const compare_block_class &comparison : block.compares)
            if (comparison.a.kind == LinkSpeech && comparison.phrase.find(word) != std::string::npos)
                return &comparison.phrase;
    return nullptr;
}

} // namespace

bool isChecklist(const device_struct &sequence) {
    if (CallOf(sequence, ChecklistWord)) return true;
    const system_class *system = SystemAt(AddressOf(sequence));
    return system && system->name == ChecklistSystem && CallOf(sequence);
}

const std::string &ChecklistName(const device_struct &checklist) {
    const std::string *phrase = CallOf(checklist, ChecklistWord);
    return phrase ? *phrase : *CallOf(checklist);
}
