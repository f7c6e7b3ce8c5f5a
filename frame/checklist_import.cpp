// What could not be taken over goes to the log, line by line; how it went is said.
#include "frame/checklist_import.h"

#include <string>

#include "systems/import/clist_folder.h"
#include "systems/model.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "voice/link_words.h"
#include "voice/speech_link.h"

namespace {

std::string ClistOfThisAircraft() {
    const std::string acf = WhatThisAircraftAcfPath();
    return FindClist(WhatThisAircraftPath(), acf.substr(acf.rfind('/') + 1));
}

void Tell(const std::string &text) {
    SendMSG(link_words::Say + text);
}

} // namespace

bool isChecklistImportOffered() {
    return !mapSystemName.contains(ImportedListsName) && !ClistOfThisAircraft().empty();
}

void ImportChecklist() {
    const std::string path = ClistOfThisAircraft();
    ClistImport import;
    std::string reason;
    if (!ImportClistFile(path, WhatPluginPath(), import, reason)) {
        string2debugString("Error - checklists not imported: ", reason, 1);
        Tell("I could not import the checklists.");
        return;
    }
    for (const ClistNote &note : import.notes)
        LogListed("Checklist import: ", path + " line " + int2string(note.line) + ": " + note.text);
    string2debugString("Checklists imported: ", int2string(static_cast<int>(import.lists)) + " from " + path,
                       1);
    Tell("I have the checklists. Please reload the aircraft.");
}
