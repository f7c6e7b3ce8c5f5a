// Looking rows up, and putting words together.
#include "systems/action_kinds.h"

#include "util/numbers.h"
#include "util/text.h"

const ActionKind *ActionKindOfQueued(int type) {
    for (const ActionKind &kind : ActionKinds)
        if (type >= 0 && (kind.queueType == type || kind.queueTypeAtZero == type)) return &kind;
    return nullptr;
}

const char *NameOfQueued(int type) {
    const ActionKind *kind = ActionKindOfQueued(type);
    if (!kind) return "unknown";
    return kind->queueType == type ? kind->queueName : kind->queueNameAtZero;
}

// The value first: a text may hold anything.
std::string DeedOf(const ActionKind &kind, std::string_view text, double value) {
    std::string words = kind.deedAtZero && value <= 0.0 ? kind.deedAtZero : kind.deed;
    words = ReplaceString(std::move(words), "%v", SignificantDigits(value));
    return ReplaceString(std::move(words), "%t", std::string(text));
}
