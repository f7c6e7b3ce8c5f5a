// Checklists of other authors ("clist.txt") made into systems files: each list becomes a sequence that she
// reads and the pilot answers, each condition a parameter that says whether it is met.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "systems/import/clist_file.h"

struct ClistImportOptions {
    // Whether the dataref holds whole numbers alone, as far as that is known; equality is exact then.
    std::function<bool(const std::string &dataref)> isWhole = [](const std::string &) { return false; };
    bool publishesButton = true; // the dataref of the select button, unless other systems files do
    bool bringsWords = true;     // "say again" and the other words of any crew, unless other systems files do
};

struct ImportedSystem {
    std::string name; // of the system, and of its file
    std::string content;
};

struct ClistImport {
    std::vector<ImportedSystem>
        systems;                  // in the order in which they are to be read; empty: nothing to import
    std::vector<ClistNote> notes; // what could not be taken over as it stands, and what was done instead
    size_t lists = 0, items = 0;
    size_t conditions = 0, conditionsTaken = 0;
};

// Makes systems files of the text of a clist.txt. Nothing is written, and the model is not looked at.
ClistImport ImportClist(std::string_view text, const ClistImportOptions &options);

// The names of the systems that an import writes, in their order; and of the one that holds the checklists.
inline constexpr const char *ImportedListsName = "CHECKLIST";
inline constexpr const char *ImportedSystemNames[] = {"CHECKLIST DATA", ImportedListsName, "CHECKLIST MENU"};
