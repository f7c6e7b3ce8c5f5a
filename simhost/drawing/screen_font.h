// The letters of the simulator's own text: one fixed-width font, from a table that needs no font file.
#pragma once

#include <cstdint>
#include <string_view>

namespace simhost {

inline constexpr int ScreenFontCount = 95;    // the characters 32 to 126
inline constexpr int ScreenFontRowCount = 13; // of a letter's cell, from the top
inline constexpr int ScreenFontColumnCount = 8;
inline constexpr int ScreenFontDescent = 3; // rows below the baseline
inline constexpr int ScreenFontAdvance = 7; // pixels from letter to letter

// Each row holds 4 bits of coverage for each pixel, the leftmost in the highest bits.
extern const std::uint32_t ScreenFontRows[ScreenFontCount][ScreenFontRowCount];

// The number of the letter that draws what the text begins with, and removes that from the text: 0 to 94
// for the characters 32 to 126, screenFontBox for any other character and for each byte that belongs to
// none (the text is read as UTF-8). text must not be empty.
inline constexpr int ScreenFontBox = ScreenFontCount;
int TakeLetter(std::string_view &text);

int CountLetters(std::string_view text);

} // namespace simhost
