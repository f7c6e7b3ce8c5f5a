// A line is a keyword and its fields behind colons. A condition may hold colons itself, so it is all that is
// left of its line.
#include "systems/import/clist_file.h"

#include <algorithm>

#include "util/text.h"

namespace {

const char *const DefaultAnswer = "CHECK";

std::string_view Trimmed(std::string_view text) {
    const std::string_view blanks = " \t";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return "";
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// What stands before the first delimiter, which is taken from the text together with it; or the whole text.
std::string_view TakeField(std::string_view &text, char delimiter) {
    const size_t end = text.find(delimiter);
    const std::string_view field = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return Trimmed(field);
}

// Without the names of colours, "\name\", and the way back, "\\".
std::string WithoutColours(std::string_view text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\')
            plain += text[i];
        else
            i = std::min(text.find('\\', i + 1), text.size());
    }
    return plain;
}

class ClistReader {
public:
    explicit ClistReader(std::vector<ClistNote> &notes) : notes(notes) {}

    void Read(std::string_view text);
    std::vector<Clist> lists;

private:
    std::vector<ClistNote> &notes;
    int line = 0;
    bool isSpoken = true;

    void ReadLine(std::string_view text);
    bool ReadKeyword(std::string_view keyword, std::string_view rest);
    void ReadList(std::string_view rest);
    void ReadItem(ClistItem::Kind kind, std::string_view rest);
    void ReadText(ClistItem::Kind kind, std::string_view rest);
    void ReadContinuation(std::string_view rest);
};

void ClistReader::Read(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    while (!text.empty()) {
        const size_t end = text.find_first_of("\r\n");
        line++;
        ReadLine(text.substr(0, end));
        const size_t length = end != std::string_view::npos && text.substr(end).starts_with("\r\n") ? 2 : 1;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + length);
    }
}

void ClistReader::ReadLine(std::string_view text) {
    if (text.empty() || text[0] == '#') return;
    const std::string utf8 = isUtf8(text) ? std::string(text) : Latin1ToUtf8(text);
    std::string_view rest = Trimmed(utf8);
    if (rest.empty()) return;
    isSpoken = !rest.starts_with("@");
    if (!isSpoken) rest.remove_prefix(1);
    const std::string_view keyword = TakeField(rest, ':');
    if (!ReadKeyword(keyword, rest)) notes.push_back({line, "unknown line: " + std::string(Trimmed(utf8))});
}

bool ClistReader::ReadKeyword(std::string_view keyword, std::string_view rest) {
    if (keyword == "sw_checklist") {
        ReadList(rest);
        return true;
    }
    if (keyword == "sw_define_colour" || keyword == "sw_rcolsize") return true;
    if (lists.empty()) {
        if (!keyword.starts_with("sw_")) return false;
        notes.push_back({line, "this stands before the first checklist: " + std::string(keyword)});
        return true;
    }
    const bool hasColours = keyword.ends_with("_c");
    const std::string plain = hasColours ? WithoutColours(rest) : std::string(rest);
    if (hasColours) keyword.remove_suffix(2);
    if (keyword == "sw_item")
        ReadItem(ClistItem::Check, plain);
    else if (keyword == "sw_iteminfo")
        ReadItem(ClistItem::Information, plain);
    else if (keyword == "sw_itemvoid")
        ReadText(ClistItem::Heading, plain);
    else if (keyword == "sw_remark")
        ReadText(ClistItem::Remark, plain);
    else if (keyword == "sw_show")
        lists.back().showConditions.emplace_back(Trimmed(plain));
    else if (keyword == "sw_continue")
        ReadContinuation(plain);
    else
        return false;
    return true;
}

void ClistReader::ReadList(std::string_view rest) {
    Clist list;
    list.name = TakeField(rest, ':');
    list.isSpoken = isSpoken;
    list.line = line;
    lists.push_back(std::move(list));
}

// A double colon leaves one before the condition, which tells its newer form.
void ClistReader::ReadItem(ClistItem::Kind kind, std::string_view rest) {
    ClistItem item;
    std::string_view text = TakeField(rest, ':');
    item.label = TakeField(text, '|');
    item.answer = text.empty() ? DefaultAnswer : std::string(Trimmed(text));
    item.condition = Trimmed(rest);
    item.kind = item.condition.empty() ? ClistItem::Check : kind;
    item.isSpoken = isSpoken;
    item.line = line;
    lists.back().items.push_back(std::move(item));
}

void ClistReader::ReadText(ClistItem::Kind kind, std::string_view rest) {
    ClistItem item;
    item.kind = kind;
    item.label = ReplaceString(std::string(Trimmed(rest)), "|", ", ");
    item.isSpoken = isSpoken;
    item.line = line;
    lists.back().items.push_back(std::move(item));
}

void ClistReader::ReadContinuation(std::string_view rest) {
    ClistContinuation continuation;
    continuation.name = TakeField(rest, ':');
    continuation.condition = Trimmed(rest);
    continuation.line = line;
    lists.back().continuations.push_back(std::move(continuation));
}

} // namespace

std::vector<Clist> ReadClist(std::string_view text, std::vector<ClistNote> &notes) {
    ClistReader reader(notes);
    reader.Read(text);
    return std::move(reader.lists);
}
