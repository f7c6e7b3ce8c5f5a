// The tables of docs/systems-files.md say what the tables of the notation do. With FENNIC_WRITE_TABLES set
// they are written instead.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "systems/notation.h"
#include "systems/operators.h"
#include "systems/spoken_links.h"
#include "util/files.h"

namespace {

using Rows = std::vector<std::string>;

std::string Code(const std::string &text) {
    return "`" + text + "`";
}

std::string Row(const Rows &cells) {
    std::string row = "|";
    for (const std::string &cell : cells) row += (cell.empty() ? "" : " " + cell) + " |";
    return row;
}

Rows Actions() {
    Rows rows;
    for (const size_t place : PlacesByCode) {
        const ActionKind *kind = &ActionKinds[place];
        std::string when = kind->when == ActionTime::Queued   ? "queued"
                           : kind->when == ActionTime::AtOnce ? "at once"
                                                              : "";
        if (*kind->note) when += std::string("; ") + kind->note;
        rows.push_back(Row({std::to_string(kind->code), kind->does, kind->textIs, kind->valueIs, when}));
    }
    return rows;
}

Rows OperatorRows() {
    Rows rows;
    for (const OperatorWords &words : Operators)
        rows.push_back(Row({*words.text ? Code(words.text) : "none", words.result}));
    return rows;
}

Rows Lines() {
    Rows rows;
    for (int key = KeyPoint; key <= KeySpeech; key++)
        rows.push_back(Row({Code(std::string(LineKeys[key].text) + LineKeys[key].form), LineKeys[key].item}));
    return rows;
}

Rows Words() {
    Rows rows;
    for (const Placeholder &word : Placeholders) rows.push_back(Row({Code(word.word), word.spoken}));
    return rows;
}

// Of the table below the header all rows but those that begin with kept, which stay in front.
void Replace(Rows &page, const std::string &header, const Rows &rows, const Rows &kept) {
    const auto head = std::find(page.begin(), page.end(), header);
    ASSERT_NE(head, page.end()) << header;
    const auto begin = head + 2;
    const auto end = std::find_if(begin, page.end(), [](const std::string &line) { return line.empty(); });
    const auto rest = std::stable_partition(begin, end, [&](const std::string &line) {
        return std::any_of(kept.begin(), kept.end(),
                           [&](const std::string &start) { return line.starts_with(start); });
    });
    page.insert(page.erase(rest, end), rows.begin(), rows.end());
}

TEST(Notation, TablesOfThePage) {
    const std::string path = std::string(DOCUMENTATION) + "/systems-files.md";
    const std::string content = ReadFileToString(path);
    Rows page;
    size_t begin = 0;
    for (size_t end; (end = content.find('\n', begin)) != std::string::npos; begin = end + 1)
        page.push_back(content.substr(begin, end - begin));
    Replace(page, "| type | action | text | value | |", Actions(), {});
    Replace(page, "| operator | result |", OperatorRows(), {});
    Replace(page, "| line | item |", Lines(), {"| `logic:`", "| `[left]", "| `&&`"});
    Replace(page, "| written | spoken |", Words(), {"| `<"});
    std::string expected;
    for (const std::string &line : page) expected += line + "\n";
    if (std::getenv("FENNIC_WRITE_TABLES")) std::ofstream(path) << expected;
    EXPECT_EQ(ReadFileToString(path), expected);
    for (const Comparator &comparator : Comparators)
        EXPECT_NE(content.find(Code(comparator.text)), std::string::npos) << comparator.text;
}

} // namespace
