// Undoing by opposites. Only what a step touches is kept: one parameter, a name, the texts of the links that
// followed a rename. Records are found again by their indices, which are right because steps are undone in
// the opposite order.
#include "systems/editor/undo.h"

#include <memory>
#include <unordered_map>

#include "XPLMDataAccess.h"
#include "systems/links.h"
#include "systems/program.h"

UndoState undoState;

namespace {

void DropOldSteps() {
    while (undoState.steps.size() > FewestUndoSteps && undoState.bytes > UndoMemory) {
        undoState.bytes -= undoState.steps.front().bytes;
        undoState.steps.pop_front();
    }
}

void EndChanges(const UndoStep &step) {
    if (step.changesTree)
        SysLinkRefresh(0);
    else
        for (const ParameterAddress &place : step.parameters) ResolveLinksOf(*ParameterAt(place));
    MarkLinkErrors();
    modelChangeCount++;
    if (afterEdit) afterEdit();
}

size_t TextBytes(const std::string &text) {
    return sizeof(std::string) + (text.capacity() > 15 ? text.capacity() : 0);
}

size_t ApproximateBytes(const out_parameter_struct &parameter) {
    size_t bytes = sizeof parameter + parameter.text.capacity() + parameter.name.capacity();
    for (const logicblock_struct &block : parameter.logic) {
        bytes += sizeof block + block.graph.capacity() * sizeof(graf_struct);
        for (const compare_block_class &comparison : block.compares)
            bytes += sizeof comparison + TextBytes(comparison.a.name) + TextBytes(comparison.b.name)
                     + comparison.phrase.capacity() * 2
                     + comparison.phraseStroka.words.capacity() * sizeof(slovoStruct);
        for (const calcBlock_struct &calculation : block.calcs)
            for (const calcStack_class &element : calculation.stack)
                bytes += sizeof element + TextBytes(element.link.name);
        for (const structExecute &action : block.executes) {
            bytes += sizeof action + action.text.capacity();
            for (const sysLink_struct &link : action.spokenLinks) bytes += sizeof link + TextBytes(link.name);
        }
    }
    return bytes;
}

void RestoreDataref(dataref_class &present, const dataref_class &saved, int presentType, int type,
                    double initial) {
    const bool isSame = present.fullName == saved.fullName && present.mode == saved.mode
                        && (presentType == type || saved.mode != BindingNew);
    if (!isSame) BindDataref(present, saved.fullName, saved.mode, type, initial);
}

// The record as it was, at work as it is.
void RestoreParameter(out_parameter_struct &present, const out_parameter_struct &saved) {
    out_parameter_struct restored = saved;
    restored.value = present.value;
    restored.intValue = present.intValue;
    restored.inDataref = present.inDataref;
    restored.outDataref = present.outDataref;
    RestoreDataref(restored.inDataref, saved.inDataref, BindingType(present), BindingType(saved),
                   saved.initValue);
    RestoreDataref(restored.outDataref, saved.outDataref, BindingType(present), BindingType(saved),
                   saved.initValue);
    present = std::move(restored);
}

// Texts of links by their place in the model's order. Many links share a text, which is kept once.
struct KeptTexts {
    std::vector<std::string> texts;
    std::vector<std::pair<uint32_t, uint32_t>> links; // place, index in texts; ascending

    void Restore() const {
        auto next = links.begin();
        uint32_t place = 0;
        ForEachLink([&](sysLink_struct &link) {
            if (next == links.end() || next->first != place++) return;
            link.name = texts[next->second];
            link.kind = LinkUnresolved; // until all links are resolved again
            ++next;
        });
    }
};

void AddOpposite(std::function<void()> opposite, size_t bytes) {
    bytes += sizeof opposite;
    undoState.steps.back().opposites.push_back(std::move(opposite));
    undoState.steps.back().bytes += bytes;
    undoState.bytes += bytes;
}

} // namespace

EditStep::EditStep(const char *name) {
    if (undoState.openSteps++ > 0) return;
    ModelChanges();
    undoState.steps.push_back({name, {}, 0, false, {}});
}

EditStep::~EditStep() {
    if (--undoState.openSteps > 0) return;
    if (undoState.steps.back().opposites.empty()) {
        undoState.steps.pop_back();
        return;
    }
    DropOldSteps();
    EndChanges(undoState.steps.back());
}

void OnUndo(std::function<void()> opposite, size_t bytes) {
    AddOpposite(std::move(opposite), bytes);
    undoState.steps.back().changesTree = true;
}

void KeepParameter(const ParameterAddress &place) {
    const auto saved = std::make_shared<const out_parameter_struct>(*ParameterAt(place));
    AddOpposite([=] { RestoreParameter(*ParameterAt(place), *saved); }, ApproximateBytes(*saved));
    undoState.steps.back().parameters.push_back(place);
}

void KeepNamedParameter(const ParameterAddress &place) {
    KeepParameter(place);
    undoState.steps.back().changesTree = true;
}

void KeepDeviceHead(const ParameterAddress &place) {
    const device_struct &device = *DeviceAt(place);
    OnUndo(
        [=, name = device.name, deleted = device.deleted, serialStack = device.serialStack] {
            device_struct &present = *DeviceAt(place);
            present.name = name;
            present.deleted = deleted;
            present.serialStack = serialStack;
        },
        TextBytes(device.name));
}

void KeepSystemHead(const ParameterAddress &place) {
    const system_class &system = *SystemAt(place);
    OnUndo(
        [=, name = system.name, deleted = system.deleted] {
            SystemAt(place)->name = name;
            SystemAt(place)->deleted = deleted;
        },
        TextBytes(system.name));
}

void KeepLinkTexts(const std::function<bool(const sysLink_struct &)> &willChange) {
    const auto kept = std::make_shared<KeptTexts>();
    std::unordered_map<std::string, uint32_t> known;
    size_t bytes = 0;
    uint32_t next = 0;
    ForEachLink([&](const sysLink_struct &link) {
        const uint32_t place = next++;
        if (!willChange(link)) return;
        const auto [entry, isNew] = known.emplace(link.name, static_cast<uint32_t>(kept->texts.size()));
        if (isNew) {
            kept->texts.push_back(link.name);
            bytes += TextBytes(link.name);
        }
        kept->links.emplace_back(place, entry->second);
    });
    if (kept->links.empty()) return;
    kept->links.shrink_to_fit();
    OnUndo([kept] { kept->Restore(); }, bytes + kept->links.size() * sizeof kept->links[0]);
}

const char *UndoEditStep() {
    if (undoState.steps.empty() || undoState.openSteps > 0) return nullptr;
    ModelChanges();
    const UndoStep step = std::move(undoState.steps.back());
    undoState.steps.pop_back();
    undoState.bytes -= step.bytes;
    for (auto opposite = step.opposites.rbegin(); opposite != step.opposites.rend(); ++opposite)
        (*opposite)();
    EndChanges(step);
    return step.name;
}

size_t CountUndoSteps() {
    return undoState.steps.size();
}

size_t UndoBytes() {
    return undoState.bytes;
}

void ForgetUndo() {
    undoState.steps.clear();
    undoState.bytes = 0;
}

// Of the simulator's or another plug-in's datarefs only the handle is let go.
void BindDataref(dataref_class &dataref, const std::string &fullName, int mode, int type, double initial) {
    if (dataref.mode == BindingNew) dataref.Unregister();
    dataref = {};
    if (fullName.empty()) return;
    const char *const words[] = {"", "new", "exist"};
    dataref.Init(fullName, words[mode], type, initial);
}

int BindingType(const out_parameter_struct &parameter) {
    return parameter.type == TypeDouble ? xplmType_Float : xplmType_Int;
}
