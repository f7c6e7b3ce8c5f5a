// Reads the BMFont text format: lines of a tag and key=value words. Numbers are taken as far as they are
// numbers and fit their field; what is wrong with one is said in the log, and reading goes on.
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "gfx/fonts.h"
#include "util/log.h"
#include "util/numbers.h"

namespace {

const char *const Blanks = " \t\r\n\v\f";
const double LargestUnsigned = 65535;
const double FarthestOffset = 100000; // pixels; farther than any screen

// One key=value word. An "=" may stand apart from both.
struct Word {
    std::string_view key, value;
};

std::string_view TakeUntil(std::string_view &rest, const char *ends) {
    const std::string_view taken = rest.substr(0, std::min(rest.find_first_of(ends), rest.size()));
    rest.remove_prefix(taken.size());
    return taken;
}

void SkipBlanks(std::string_view &rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(Blanks), rest.size()));
}

// False at the line's end.
bool TakeWord(std::string_view &rest, Word &word) {
    SkipBlanks(rest);
    if (rest.empty()) return false;
    word.key = TakeUntil(rest, "= \t\r\n\v\f");
    word.value = {};
    std::string_view ahead = rest;
    SkipBlanks(ahead);
    if (ahead.empty() || ahead.front() != '=') return true;
    ahead.remove_prefix(1);
    rest = ahead;
    SkipBlanks(ahead);
    const bool isApart = ahead.size() < rest.size();
    const std::string_view value = TakeUntil(ahead, Blanks);
    if (isApart && value.find('=') != std::string_view::npos) return true; // the next word: this one is empty
    word.value = value;
    rest = ahead;
    return true;
}

// Where a word comes from, for the log.
struct Place {
    const std::string &file;
    int line;
};

double ReadNumber(const Word &word, const Place &place, double least, double most) {
    double number = 0;
    const bool isNumber = ParseDouble(word.value, number);
    if (!isNumber) number = LeadingNumber(word.value);
    const double fitting = std::clamp(number, least, most);
    if (isNumber && fitting == number) return number;
    Report({.file = place.file,
            .line = place.line,
            .reason = std::string(word.key) + " cannot be \"" + std::string(word.value) + "\""});
    return fitting;
}

void ReadField(const Word &word, const Place &place, std::uint16_t &field) {
    field = static_cast<std::uint16_t>(ReadNumber(word, place, 0, LargestUnsigned));
}

void ReadField(const Word &word, const Place &place, float &field) {
    field = static_cast<float>(ReadNumber(word, place, -FarthestOffset, FarthestOffset));
}

void ReadCommon(std::string_view rest, const Place &place, Charset &charset) {
    for (Word word; TakeWord(rest, word);) {
        if (word.key == "lineHeight") ReadField(word, place, charset.lineHeight);
        if (word.key == "base") ReadField(word, place, charset.base);
        if (word.key == "scaleW") ReadField(word, place, charset.scaleW);
        if (word.key == "scaleH") ReadField(word, place, charset.scaleH);
        if (word.key == "pages") ReadField(word, place, charset.pages);
    }
}

// The id comes first; a code that the font has no place for ends the line.
void ReadChar(std::string_view rest, const Place &place, Charset &charset) {
    CharDescriptor *glyph = nullptr;
    for (Word word; TakeWord(rest, word);) {
        if (word.key == "id") {
            int id = -1;
            if (!ParseInt(word.value, id) || id < 0 || id >= static_cast<int>(std::size(charset.chars)))
                return;
            glyph = &charset.chars[id];
        }
        if (glyph == nullptr) continue;
        if (word.key == "x") ReadField(word, place, glyph->x);
        if (word.key == "y") ReadField(word, place, glyph->y);
        if (word.key == "width") ReadField(word, place, glyph->width);
        if (word.key == "height") ReadField(word, place, glyph->height);
        if (word.key == "xoffset") ReadField(word, place, glyph->xoffset);
        if (word.key == "yoffset") ReadField(word, place, glyph->yoffset);
        if (word.key == "xadvance") ReadField(word, place, glyph->xadvance);
        if (word.key == "page") ReadField(word, place, glyph->page);
    }
}

void ReadPage(std::string_view rest, std::string &file) {
    for (Word word; TakeWord(rest, word);) {
        if (word.key != "file") continue;
        file = word.value;
        std::erase(file, '"');
    }
}

} // namespace

void font_class::ParseFont(std::istream &stream, const std::string &file) {
    int pageLines = 0;
    std::string text;
    for (int line = 1; std::getline(stream, text); line++) {
        std::string_view rest = text;
        SkipBlanks(rest);
        const std::string_view tag = TakeUntil(rest, Blanks);
        const Place place = {file, line};
        if (tag == "common") ReadCommon(rest, place, charset);
        if (tag == "char") ReadChar(rest, place, charset);
        if (tag != "page") continue;
        ReadPage(rest, atlasFile);
        pageLines++;
    }
    if (pageLines > 1)
        string2debugString("Font " + name, " has several pages; all is drawn from the last one", 1);
}
