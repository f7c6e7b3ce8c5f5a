// Callbacks that plug-ins have registered, in their order. A callback may register and unregister any, itself
// included, while they are called: who is unregistered is only marked, and swept out behind the last call;
// who is registered meanwhile waits for the next time.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "simhost/modules.h"

namespace simhost {

// An entry has at least a callback, which is null once it is unregistered, the refcon for it, and its owner.
template <typename Entry> class CallbackList {
public:
    // The time of one round of calls, or of several that belong together.
    class Round {
    public:
        explicit Round(CallbackList &of) : list(of), count(of.entries.size()) { list.rounds++; }
        ~Round() {
            list.rounds--;
            list.Sweep();
        }
        Round(const Round &) = delete;
        Round &operator=(const Round &) = delete;

        // Gives call each entry that is registered, of plug-ins that are enabled, with its number: a copy, as
        // the list may move in memory meanwhile. Ends when call says false; then false.
        template <typename Call> bool Run(Call &&call) {
            for (std::size_t i = 0; i < count; i++) {
                const Entry entry = list.entries[i];
                if (entry.callback && isPluginEnabled(entry.owner) && !call(entry, i)) return false;
            }
            return true;
        }

    private:
        CallbackList &list;
        std::size_t count;
    };

    bool isEmpty() const { return entries.empty(); }
    void Add(const Entry &entry) { entries.push_back(entry); }
    void Clear() { entries.clear(); }

    // The entry of a number, unless it is unregistered.
    Entry *At(std::size_t number) { return entries[number].callback ? &entries[number] : nullptr; }

    // The first entry, still registered, that matches.
    template <typename Matches> Entry *FindWhere(Matches &&matches) {
        for (Entry &entry : entries)
            if (entry.callback && matches(entry)) return &entry;
        return nullptr;
    }

    // The first entry registered with these.
    template <typename Callback, typename Matches>
    Entry *Find(Callback callback, const void *refcon, Matches &&matches) {
        return FindWhere([&](const Entry &entry) {
            return entry.callback == callback && entry.refcon == refcon && matches(entry);
        });
    }

    // Unregisters it; false when it is null.
    bool Remove(Entry *entry) {
        if (!entry) return false;
        entry->callback = nullptr;
        Sweep();
        return true;
    }

    // Unregisters the first entry registered with these; false when there is none.
    template <typename Callback, typename Matches>
    bool Remove(Callback callback, const void *refcon, Matches &&matches) {
        return Remove(Find(callback, refcon, matches));
    }

    // Shows all that are registered, in their order.
    template <typename Visit> void ForEach(Visit &&visit) const {
        for (const Entry &entry : entries)
            if (entry.callback) visit(entry);
    }

    // Unregisters all of a plug-in and tells of each before.
    template <typename Tell> void Drop(XPLMPluginID plugin, Tell &&tell) {
        for (Entry &entry : entries) {
            if (!entry.callback || entry.owner != plugin) continue;
            tell(entry);
            entry.callback = nullptr;
        }
        Sweep();
    }

    // The same, as what a plug-in must not leave behind: "flight loop lin.xpl+0x1a2b".
    void Drop(XPLMPluginID plugin, const char *what, LeftBehind &leftBehind) {
        Drop(plugin, [&](const Entry &entry) {
            leftBehind.errors.push_back(std::string(what) + " "
                                        + DescribeFunction(reinterpret_cast<void *>(entry.callback)));
        });
    }

private:
    std::vector<Entry> entries;
    int rounds = 0;

    void Sweep() {
        if (rounds == 0) std::erase_if(entries, [](const Entry &entry) { return !entry.callback; });
    }
};

} // namespace simhost
