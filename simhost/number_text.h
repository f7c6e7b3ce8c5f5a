// Numbers as texts and back, the same under every locale.
#pragma once

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace simhost {

// The shortest text that reads back as the same number: "0.5", "3", "1e+30".
template <typename Real> std::string NumberText(Real value) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string(text, end);
}

// Takes what stands before the first tab, and the tab.
inline std::string_view TakeField(std::string_view &rest) {
    const std::string_view field = rest.substr(0, rest.find('\t'));
    rest.remove_prefix(std::min(field.size() + 1, rest.size()));
    return field;
}

// Reads a text that is a number and nothing else; false, with number untouched, for any other.
template <typename Number> bool ReadWholeNumber(std::string_view text, Number &number) {
    Number read = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), read);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size()) return false;
    number = read;
    return true;
}

// Flight time as "mm:ss.t", cut, not rounded. Needs 24 bytes; gives the length.
inline int FormatFlightTime(double seconds, char *text) {
    const long long tenths = seconds > 0 && seconds < 1e12 ? static_cast<long long>(seconds * 10 + 1e-6) : 0;
    const long long minutes = tenths / 600;
    int length = 0;
    char digits[20];
    int count = 0;
    for (long long rest = minutes; rest > 0 || count < 2; rest /= 10)
        digits[count++] = static_cast<char>('0' + rest % 10);
    while (count > 0) text[length++] = digits[--count];
    text[length++] = ':';
    text[length++] = static_cast<char>('0' + tenths / 100 % 6);
    text[length++] = static_cast<char>('0' + tenths / 10 % 10);
    text[length++] = '.';
    text[length++] = static_cast<char>('0' + tenths % 10);
    text[length] = 0;
    return length;
}

} // namespace simhost
