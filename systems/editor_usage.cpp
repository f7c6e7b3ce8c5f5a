// The usage list. Links of the whole model are looked through, so it is rebuilt only when the selection or
// the model has changed.
#include "systems/editor_usage.h"

#include "systems/links.h"

std::vector<out_usage_struct> usageVector;

namespace {

int Index(size_t index) {
    return static_cast<int>(index);
}

class UsageSearch {
public:
    UsageSearch(int sys, int dev, int out) : sys(sys), dev(dev), out(out) {}

    void SearchBlock(const BlockPlace &place, const logicblock_struct &block) const {
        for (size_t i = 0; i < block.compares.size(); i++)
            if (isMeant(block.compares[i].a) || isMeant(block.compares[i].b))
                usageVector.push_back({place, Index(i), -1});
        for (size_t i = 0; i < block.calcs.size(); i++)
            for (size_t e = 0; e < block.calcs[i].stack.size(); e++)
                if (isMeant(block.calcs[i].stack[e].link)) usageVector.push_back({place, Index(i), Index(e)});
    }

private:
    const int sys, dev, out;

    bool isMeant(const sysLink_struct &link) const {
        return (link.kind == LinkLive || link.kind == LinkDeleted) && link.sys == sys && link.dev == dev
               && link.out == out;
    }
};

} // namespace

void UsageVectorRebuild(int sys, int dev, int out) {
    usageVector.clear();
    if (!isParameter(sys, dev, out)) return;
    const UsageSearch search(sys, dev, out);
    for (size_t s = 0; s < systems_vector.size(); s++)
        for (size_t d = 0; d < systems_vector[s].devices.size(); d++)
            for (size_t o = 0; o < systems_vector[s].devices[d].outs.size(); o++) {
                const std::vector<logicblock_struct> &logic = systems_vector[s].devices[d].outs[o].logic;
                for (size_t b = 0; b < logic.size(); b++)
                    search.SearchBlock({Index(s), Index(d), Index(o), Index(b)}, logic[b]);
            }
}
