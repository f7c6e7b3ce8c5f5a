// Text helpers that every file parser uses. Their odd corners (RemoveNRS and RemoveS spare the last two
// characters) are relied on by files in users' hands.
#include "util/text.h"

#include <algorithm>

namespace {

std::string RemoveCharacters(std::string s, std::string_view characters) {
    std::erase_if(s, [&](char c) { return characters.find(c) != std::string_view::npos; });
    return s;
}

bool isInsideCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// How many bytes the character takes that stands first in a text; 1 for a byte that is no part of one. From
// RFC 3629: 0x80 to 0xC1 and those above 0xF4 begin none.
size_t FirstCharacterSize(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0xC2 || first > 0xF4) return 1;
    const size_t size = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (size > text.size()) return 1;
    return std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(size), isInsideCharacter)
               ? size
               : 1;
}

// The small letter of a capital one below 0x800, by the blocks of Unicode; any other code is itself.
unsigned SmallLetter(unsigned code) {
    const bool isLatin1 = code >= 0xC0 && code <= 0xDE && code != 0xD7;
    const bool isGreek = code >= 0x391 && code <= 0x3AB && code != 0x3A2;
    const bool isCyrillic = code >= 0x410 && code <= 0x42F;
    if (isLatin1 || isGreek || isCyrillic) return code + 0x20;
    if (code >= 0x400 && code <= 0x40F) return code + 0x50; // Cyrillic, with accents
    // Latin Extended-A and Cyrillic of other languages: pairs of a capital and a small letter.
    const bool isEvenPair = (code >= 0x100 && code <= 0x137 && code != 0x130 && code != 0x131)
                            || (code >= 0x14A && code <= 0x177) || (code >= 0x460 && code <= 0x481)
                            || (code >= 0x48A && code <= 0x4BF) || (code >= 0x4D0 && code <= 0x52F);
    const bool isOddPair = (code >= 0x139 && code <= 0x148) || (code >= 0x179 && code <= 0x17E);
    if (isEvenPair) return code | 1U;
    return isOddPair ? code + (code & 1U) : code;
}

} // namespace

std::string RemoveNR(std::string s) {
    return RemoveCharacters(std::move(s), "\r\n");
}

std::string RemoveNRS(std::string s) {
    s = RemoveNR(std::move(s));
    std::string result;
    result.reserve(s.size());
    for (size_t i = 0; i < s.size(); i++) {
        const bool isInnerRepeat = i + 2 < s.size() && s[i] == ' ' && s[i + 1] == ' ';
        if (!isInnerRepeat) result += s[i];
    }
    return result;
}

std::string RemoveS(std::string s) {
    if (s.size() < 3) return s;
    const std::string kept = s.substr(s.size() - 2);
    s.resize(s.size() - 2);
    std::erase(s, ' ');
    return s + kept;
}

std::string RemoveTags(std::string s) {
    return RemoveCharacters(std::move(s), "()<>[]");
}

std::string ReplaceString(std::string s, std::string_view from, std::string_view to) {
    if (from.empty()) return s;
    const size_t at = s.find(from);
    if (at != std::string::npos) s.replace(at, from.size(), to);
    return s;
}

std::string ReplaceStringAll(std::string s, std::string_view from, std::string_view to) {
    if (from.empty()) return s;
    std::string result;
    size_t done = 0;
    for (size_t at = s.find(from); at != std::string::npos; at = s.find(from, done)) {
        result.append(s, done, at - done).append(to);
        done = at + from.size();
    }
    return result.append(s, done);
}

std::string ReplaceStringDoubleSpace(const std::string &s) {
    std::string result;
    result.reserve(s.size());
    for (char c : s)
        if (c != ' ' || result.empty() || result.back() != ' ') result += c;
    return result;
}

std::string LowerToUpperCase(std::string s) {
    for (char &c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return s;
}

std::string UpperToLowerCase(std::string s) {
    for (char &c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

std::string FoldCase(std::string_view s) {
    std::string folded = UpperToLowerCase(std::string(s));
    for (size_t i = 0; i + 1 < folded.size(); i++) {
        const auto lead = static_cast<unsigned char>(folded[i]),
                   next = static_cast<unsigned char>(folded[i + 1]);
        if (lead < 0xC3 || lead > 0xD4 || !isInsideCharacter(folded[i + 1])) continue; // two bytes
        const unsigned code = SmallLetter((lead & 0x1FU) << 6U | (next & 0x3FU));
        folded[i] = static_cast<char>(0xC0U | code >> 6U);
        folded[++i] = static_cast<char>(0x80U | (code & 0x3FU));
    }
    return folded;
}

std::string alignR(std::string s, int width) {
    if (width > static_cast<int>(s.size())) s.insert(0, static_cast<size_t>(width) - s.size(), ' ');
    return s;
}

std::string alignC(std::string s) {
    return s.append(s.size() / 2, ' ');
}

std::vector<std::string> StringToWordsArray(const std::string &s, char delimiter) {
    const std::string line = RemoveNR(s);
    std::vector<std::string_view> fields;
    SplitFields(line, delimiter, fields);
    return {fields.begin(), fields.end()};
}

void SplitFields(std::string_view text, char delimiter, std::vector<std::string_view> &fields) {
    fields.clear();
    size_t start = 0;
    for (;;) {
        const size_t end = text.find(delimiter, start);
        fields.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos) return;
        start = end + 1;
    }
}

size_t CountCharacters(std::string_view text) {
    size_t count = 0;
    for (; !text.empty(); count++) text.remove_prefix(FirstCharacterSize(text));
    return count;
}

bool isUtf8(std::string_view text) {
    size_t following = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isFollowing = (byte & 0xC0U) == 0x80U;
        if (isFollowing != (following > 0)) return false;
        if (isFollowing)
            following--;
        else if (byte >= 0xC0U)
            following = byte >= 0xF0U ? 3 : byte >= 0xE0U ? 2 : 1;
    }
    return following == 0;
}

std::string Latin1ToUtf8(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80U) utf8 += static_cast<char>(0xC0U | (byte >> 6U));
        utf8 += byte >= 0x80U ? static_cast<char>(0x80U | (byte & 0x3FU)) : c;
    }
    return utf8;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}
