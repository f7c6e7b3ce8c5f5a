// The simulator knows the types of the datarefs that are there now; an aircraft's own may come later and are
// compared as fractions.
#include "frame/checklist_import.h"

#include <string>

#include "XPLMDataAccess.h"
#include "systems/import/clist_folder.h"
#include "systems/model.h"
#include "util/find_dataref.h"
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

bool isWholeDataref(const std::string &name) {
    const XPLMDataRef dataref = FindDataref(name.substr(0, name.find('[')).c_str());
    const int fractions = xplmType_Float | xplmType_Double | xplmType_FloatArray;
    return dataref && (XPLMGetDataRefTypes(dataref) & fractions) == 0;
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
    ClistImportOptions options;
    options.isWhole = isWholeDataref;
    ClistImport import;
    std::string reason;
    if (!ImportClistFile(path, WhatPluginPath(), options, import, reason)) {
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
