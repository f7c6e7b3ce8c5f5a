// The usage list. Links of the whole model are looked through, so it is rebuilt only when the selection or
// the model has changed.
#include "systems/editor/usage.h"

#include <algorithm>
#include <utility>

#include "systems/editor/undo.h"
#include "systems/links.h"
#include "util/numbers.h"

UsageState usageState;

namespace {

const size_t UsersNamed = 3; // the others are counted

int Index(size_t index) {
    return static_cast<int>(index);
}

// Whether an address lies at another one or within the device or system that it names.
bool isInside(const ParameterAddress &whole, const ParameterAddress &place) {
    return whole.sys == place.sys && (whole.dev < 0 || whole.dev == place.dev)
           && (whole.out < 0 || whole.out == place.out);
}

bool isLinkInto(const ParameterAddress &whole, const sysLink_struct &link) {
    return (link.kind == LinkLive || link.kind == LinkDeleted) && isInside(whole, link);
}

class UsageSearch {
public:
    explicit UsageSearch(const ParameterAddress &target) : target(target) {}

    void SearchBlock(const BlockPlace &place, const logicblock_struct &block) const {
        for (size_t i = 0; i < block.compares.size(); i++)
            if (isMeant(block.compares[i].a) || isMeant(block.compares[i].b))
                usageVector.push_back({place, UsedInComparison, Index(i), -1});
        for (size_t i = 0; i < block.calcs.size(); i++)
            for (size_t e = 0; e < block.calcs[i].stack.size(); e++)
                if (isMeant(block.calcs[i].stack[e].link))
                    usageVector.push_back({place, UsedInCalculation, Index(i), Index(e)});
        for (size_t i = 0; i < block.executes.size(); i++) {
            const std::vector<sysLink_struct> &links = block.executes[i].spokenLinks;
            if (std::any_of(links.begin(), links.end(), [this](const auto &link) { return isMeant(link); }))
                usageVector.push_back({place, UsedInText, Index(i), -1});
        }
    }

private:
    const ParameterAddress target;

    bool isMeant(const sysLink_struct &link) const { return isLinkInto(target, link); }
};

bool isGone(const ParameterAddress &place) {
    return SystemAt(place)->deleted || DeviceAt(place)->deleted || ParameterAt(place)->deleted;
}

} // namespace

void UsageVectorRebuild(const ParameterAddress &place) {
    usageState = {.uses = {}, .place = place, .changeCount = modelChangeCount, .isCollected = true};
    if (!ParameterAt(place)) return;
    const UsageSearch search(place);
    ForEachAddress([&](const ParameterAddress &user) {
        const std::vector<logicblock_struct> &logic = ParameterAt(user)->logic;
        for (size_t b = 0; b < logic.size(); b++) search.SearchBlock({user, Index(b)}, logic[b]);
    });
}

void RefreshUsage(const ParameterAddress &place) {
    if (!usageState.isCollected || usageState.changeCount != modelChangeCount || usageState.place != place)
        UsageVectorRebuild(place);
}

std::string UsersOutside(const ParameterAddress &place) {
    std::vector<std::string> users;
    ForEachAddress([&](const ParameterAddress &user) {
        if (isInside(place, user) || isGone(user)) return;
        bool isUser = false;
        ForEachLinkOf(std::as_const(*ParameterAt(user)),
                      [&](const sysLink_struct &link) { isUser = isUser || isLinkInto(place, link); });
        if (isUser) users.push_back(SysDevOut2name(user));
    });
    std::string text;
    for (size_t i = 0; i < std::min(users.size(), UsersNamed); i++) text += (i > 0 ? ", " : "") + users[i];
    if (users.size() > UsersNamed) text += " and " + int2string(Index(users.size() - UsersNamed)) + " more";
    return text;
}

std::string SpeakerOf(const ParameterAddress &place) {
    std::string speaker;
    ForEachAddress([&](const ParameterAddress &user) {
        for (const logicblock_struct &block : ParameterAt(user)->logic)
            for (const structExecute &action : block.executes)
                for (const sysLink_struct &link : action.spokenLinks)
                    if (isLinkInto(place, link)) speaker = SysDevOut2name(user);
    });
    return speaker;
}
