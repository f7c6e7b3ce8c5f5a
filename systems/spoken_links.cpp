// A text is looked through as it is spoken: of "say and wait" each alternative between "#" by itself.
#include "systems/spoken_links.h"

#include <algorithm>

#include "systems/links.h"

namespace {

// The next link of a spoken text that lies within one of its alternatives.
bool FindLinkOfAction(const structExecute &action, size_t from, SpokenLink &found) {
    if (action.type != ScriptSayWait) return FindSpokenLink(action.text, from, found);
    const std::string_view text = action.text;
    while (from < text.size()) {
        const size_t end = std::min(text.find('#', from), text.size());
        if (FindSpokenLink(text.substr(0, end), from, found)) return true;
        from = end + 1;
    }
    return false;
}

} // namespace

bool FindSpokenLink(std::string_view text, size_t from, SpokenLink &found) {
    const size_t open = text.find('<', from);
    if (open == std::string_view::npos) return false;
    const size_t close = text.find('>', open);
    if (close == std::string_view::npos) return false;
    found.begin = open;
    found.end = close + 1;
    found.name = text.substr(open + 1, close - open - 1);
    found.isSpelled = found.name.starts_with('&');
    std::erase(found.name, '&');
    return true;
}

void ReadSpokenLinks(structExecute &action, const ParameterAddress &owner) {
    action.spokenLinks.clear();
    if (TextOfAction(action.type) != ActionText::Spoken) return;
    SpokenLink found;
    for (size_t from = 0; FindLinkOfAction(action, from, found); from = found.end) {
        sysLink_struct link = String2sysLinkSDO(owner, found.name);
        link.name = found.name;
        if (link.kind == LinkNone) link.kind = LinkUnresolved;
        action.spokenLinks.push_back(std::move(link));
    }
}

void WriteSpokenLinks(structExecute &action) {
    SpokenLink found;
    size_t from = 0;
    for (const sysLink_struct &link : action.spokenLinks) {
        if (!FindLinkOfAction(action, from, found)) return;
        from = found.end;
        if (found.name == link.name) continue;
        const std::string written = (found.isSpelled ? "<&" : "<") + link.name + ">";
        action.text.replace(found.begin, found.end - found.begin, written);
        from = found.begin + written.size();
    }
}
