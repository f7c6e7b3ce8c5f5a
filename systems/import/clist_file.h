// Checklists in the form "clist.txt", which many aircraft bring with them: the lines as they stand there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// One line below the name of a checklist.
struct ClistItem {
    enum Kind {
        Check,       // to be answered by the pilot
        Information, // ticked by its condition alone
        Heading,
        Remark,
    };
    Kind kind = Check;
    std::string label;
    std::string answer;    // of Check and Information; "CHECK" where the file has none
    std::string condition; // as written; empty: none
    bool isSpoken = true;
    int line = 0;
};

// What follows when a checklist is done.
struct ClistContinuation {
    std::string name; // empty: the next checklist of the file
    std::string condition;
    int line = 0;
};

struct Clist {
    std::string name; // as it is announced
    std::vector<ClistItem> items;
    std::vector<ClistContinuation> continuations;
    std::vector<std::string> showConditions; // all of them must hold for it to come up by itself
    bool isSpoken = true;
    int line = 0;
};

// A line that says nothing, and why.
struct ClistNote {
    int line = 0;
    std::string text;
};

// The checklists of the text of a file, UTF-8 or Latin-1, with any line ends. Lines that are none of the
// format's, or that stand before the first checklist, are told in notes.
std::vector<Clist> ReadClist(std::string_view text, std::vector<ClistNote> &notes);
