// Plain lines without the log's prefix, so that they can be copied into a table: commas within a phrase
// become semicolons.
#include "voice/phrase_log.h"

#include "XPLMUtilities.h"
#include "systems/model.h"
#include "util/text.h"

namespace {

void LogParameter(const out_parameter_struct &parameter, const std::string &place) {
    for (const logicblock_struct &block : parameter.logic) {
        for (const structExecute &action : block.executes) {
            const ActionKind *kind = ActionKindOf(action.type);
            if (!kind || !kind->listedAs) continue;
            const std::string phrase = ReplaceStringAll(action.text, ",", ";");
            XPLMDebugString((kind->listedAs + phrase + " (" + place + parameter.name + ")\n").c_str());
        }
    }
}

} // namespace

void LogAllPhrases() {
    if (systems_vector.empty()) return;
    XPLMDebugString("\n************* Fennic Phrases List: *************\n");
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            for (const out_parameter_struct &parameter : device.outs)
                if (!device.deleted) LogParameter(parameter, system.name + "." + device.name + ".");
    XPLMDebugString("*************Fennic Phrases List End*************\n");
}
