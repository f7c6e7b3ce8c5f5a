// Call-outs without a memory. What is said in a frame is said again in the next, unless the condition has
// ended: so something in it must know that it was said. A parameter that only follows the simulator's
// datarefs knows nothing of that; one that keeps a value, or waits for a phrase, may.
#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "authoring/check/checks.h"
#include "authoring/check/conditions.h"
#include "authoring/check/findings.h"
#include "systems/dataref_binding.h"
#include "systems/links.h"

namespace simhost {

namespace {

constexpr int DeepestMemory = 200; // of a chain that is followed; a longer one counts as a memory

std::set<std::string> writtenDatarefs;      // by actions and parameters of these files
std::map<ParameterAddress, bool> followers; // what is known; false also while it is looked at

bool isFollower(const ParameterAddress &place, int depth);

// A link to a later parameter reads the frame before, which tells a beginning from what lasts.
bool FollowsLink(const sysLink_struct &link, const ParameterAddress &owner, int depth) {
    if (link.kind == LinkSpeech) return false;
    return link.kind != LinkLive || (link < owner && isFollower(link, depth + 1));
}

bool FollowsConditions(const logicblock_struct &block, const ParameterAddress &owner, int depth) {
    return std::all_of(block.compares.begin(), block.compares.end(), [&](const auto &comparison) {
        return FollowsLink(comparison.a, owner, depth) && FollowsLink(comparison.b, owner, depth);
    });
}

bool FollowsCalculations(const logicblock_struct &block, bool hasInput, const ParameterAddress &owner,
                         int depth) {
    for (const calcBlock_struct &calculation : block.calcs) {
        const std::vector<calcStack_class> &stack = calculation.stack;
        if (!hasInput && !stack.empty() && !stack.front().oper.empty()) return false; // its own value goes on
        for (const calcStack_class &element : stack)
            if (!FollowsLink(element.link, owner, depth)) return false;
    }
    return hasInput || !block.calcs.empty();
}

// Whether the value is computed anew in each frame from datarefs that these files do not write.
bool Follows(const ParameterAddress &place, int depth) {
    if (!ParameterAt(place) || depth > DeepestMemory) return false;
    const device_struct &device = *DeviceAt(place);
    const out_parameter_struct &parameter = *ParameterAt(place);
    const bool hasInput = !parameter.inDataref.fullName.empty();
    if (device.serialStack || writtenDatarefs.contains(parameter.inDataref.name)) return false;
    if (parameter.logic.empty()) return true;
    bool isAlways = hasInput;
    for (const logicblock_struct &block : parameter.logic) {
        if (!FollowsConditions(block, place, depth) || !FollowsCalculations(block, hasInput, place, depth))
            return false;
        isAlways = isAlways || block.compares.empty();
    }
    return isAlways;
}

bool isFollower(const ParameterAddress &place, int depth) {
    const auto [entry, isNew] = followers.emplace(place, false);
    if (isNew) entry->second = Follows(place, depth);
    return entry->second;
}

bool isSpoken(const structExecute &action) {
    return TextOfAction(action.type) == ActionText::Spoken;
}

// Whether the block can fire without a phrase, so in every frame.
bool NeedsNoPhrase(const logicblock_struct &block) {
    const Alternatives alternatives = AlternativesOf(block);
    return alternatives.isExact && !alternatives.isAlwaysTrue()
           && std::any_of(alternatives.list.begin(), alternatives.list.end(),
                          [](const Conjunction &one) { return one.phrase.empty(); });
}

void CheckCallOuts(const ParameterPlace &place) {
    if (place.device.serialStack) return;
    const auto sys = static_cast<int>(&place.system - systems_vector.data());
    const auto dev = static_cast<int>(&place.device - place.system.devices.data());
    const ParameterAddress own{sys, dev, place.out};
    for (const logicblock_struct &block : place.parameter.logic) {
        // A block above that holds keeps this one from firing: its conditions count, too.
        if (!FollowsConditions(block, own, 0)) return;
        if (NeedsNoPhrase(block) && std::any_of(block.executes.begin(), block.executes.end(), isSpoken))
            AddFinding(Severity::Warning, place.parameter.fileName, block.line,
                       "said again in every frame while this holds, since nothing remembers that it was "
                       "said; add ["
                           + place.Name() + "]==[0] and calc=[1], and a block that sets it back");
    }
}

void CollectWrittenDatarefs() {
    writtenDatarefs.clear();
    ForEachParameter([](const ParameterPlace &place) {
        if (!place.parameter.outDataref.name.empty()) writtenDatarefs.insert(place.parameter.outDataref.name);
        for (const logicblock_struct &block : place.parameter.logic)
            for (const structExecute &action : block.executes)
                if (TextOfAction(action.type) == ActionText::Dataref)
                    writtenDatarefs.insert(DatarefName(action.text).name);
    });
}

} // namespace

void CheckRepeats() {
    followers.clear();
    CollectWrittenDatarefs();
    ForEachParameter(CheckCallOuts);
}

} // namespace simhost
