#include "systems/spoken_links.h"

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
