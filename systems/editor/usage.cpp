// The usage list. Links of the whole model are looked through, so it is rebuilt only when the selection or
// the model has changed.
#include "systems/editor/usage.h"

#include <algorithm>
#include <utility>

#include "systems/links.h"
#include "util/numbers.h"

std::vector<out_usage_struct> usageVector;

namespace {

const size_t UsersNamed = 3; // the others are counted

int Index(size_t index) {
    return static_cast<int>(index);
}

// Whether a link ends at a parameter, or with -1 for its index in the device, with another for that in the
// system.
bool isInside(int sys, int dev, int out, const sysLink_struct &link) {
    const bool isResolved = link.kind == LinkLive || link.kind == LinkDeleted;
    return isResolved && link.sys == sys && (dev < 0 || link.dev == dev) && (out < 0 || link.out == out);
}

class UsageSearch {
public:
    UsageSearch(int sys, int dev, int out) : sys(sys), dev(dev), out(out) {}

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
    const int sys, dev, out;

    bool isMeant(const sysLink_struct &link) const { return isInside(sys, dev, out, link); }
};

void ForEachPlace(auto visit) {
    for (size_t s = 0; s < systems_vector.size(); s++)
        for (size_t d = 0; d < systems_vector[s].devices.size(); d++)
            for (size_t o = 0; o < systems_vector[s].devices[d].outs.size(); o++)
                visit(Index(s), Index(d), Index(o));
}

bool isGone(int sys, int dev, int out) {
    return systems_vector[static_cast<size_t>(sys)].deleted || DeviceAt(sys, dev).deleted
           || ParameterAt(sys, dev, out).deleted;
}

} // namespace

void UsageVectorRebuild(int sys, int dev, int out) {
    usageVector.clear();
    if (!isParameter(sys, dev, out)) return;
    const UsageSearch search(sys, dev, out);
    ForEachPlace([&](int s, int d, int o) {
        const std::vector<logicblock_struct> &logic = ParameterAt(s, d, o).logic;
        for (size_t b = 0; b < logic.size(); b++) search.SearchBlock({s, d, o, Index(b)}, logic[b]);
    });
}

std::string UsersOutside(int sys, int dev, int out) {
    std::vector<std::string> users;
    ForEachPlace([&](int s, int d, int o) {
        sysLink_struct self;
        self.kind = LinkLive;
        self.sys = s;
        self.dev = d;
        self.out = o;
        if (isInside(sys, dev, out, self) || isGone(s, d, o)) return;
        bool isUser = false;
        ForEachLinkOf(std::as_const(ParameterAt(s, d, o)),
                      [&](const sysLink_struct &link) { isUser = isUser || isInside(sys, dev, out, link); });
        if (isUser) users.push_back(SysDevOut2name(s, d, o));
    });
    std::string text;
    for (size_t i = 0; i < std::min(users.size(), UsersNamed); i++) text += (i > 0 ? ", " : "") + users[i];
    if (users.size() > UsersNamed) text += " and " + int2string(Index(users.size() - UsersNamed)) + " more";
    return text;
}

std::string SpeakerOf(int sys, int dev, int out) {
    std::string speaker;
    ForEachPlace([&](int s, int d, int o) {
        for (const logicblock_struct &block : ParameterAt(s, d, o).logic)
            for (const structExecute &action : block.executes)
                for (const sysLink_struct &link : action.spokenLinks)
                    if (isInside(sys, dev, out, link)) speaker = SysDevOut2name(s, d, o);
    });
    return speaker;
}
