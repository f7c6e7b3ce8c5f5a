// Text to letters. Whatever bytes come in, every step takes at least one, so no text can hang or overrun.
#include "simhost/drawing/screen_font.h"

namespace simhost {

namespace {

// How many bytes a character takes that begins with this byte; 0 for a byte that begins none.
std::size_t CharacterLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

// A whole character at the start of the text, or else the one byte that is none.
std::size_t NextLength(std::string_view text) {
    const std::size_t length = CharacterLength(static_cast<unsigned char>(text[0]));
    if (length == 0 || length > text.size()) return 1;
    for (std::size_t i = 1; i < length; i++)
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 1;
    return length;
}

} // namespace

int TakeLetter(std::string_view &text) {
    const unsigned char first = static_cast<unsigned char>(text[0]);
    text.remove_prefix(NextLength(text));
    return first >= ' ' && first <= '~' ? first - ' ' : ScreenFontBox;
}

int CountLetters(std::string_view text) {
    int count = 0;
    for (; !text.empty(); count++) TakeLetter(text);
    return count;
}

} // namespace simhost
