// The file is one line per parameter, address=value, rewritten whole.
#include "systems/saved_values.h"

#include <vector>

#include "systems/links.h"
#include "systems/model.h"
#include "systems/program.h"
#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

namespace {

const char *const SaveFile = "systems/_save.txt";

std::vector<FileLine> savedLines;

} // namespace

void ReadSavedValues() {
    const std::string path = WhatPluginPath() + SaveFile;
    if (isFileExistString(path)) savedLines = ReadFileLines(path);
}

void ForgetSavedValues() {
    savedLines = {};
}

void RestoreSavedValue(const std::string &address, std::string &initial) {
    for (const FileLine &line : savedLines) {
        if (!Contains(line.text, address)) continue;
        const std::vector<std::string> parts = StringToWordsArray(line.text, '=');
        double value = 0.0;
        if (parts.size() > 1 && isNumber(parts[1]) && ParseDouble(parts[1], value))
            initial = parts[1];
        else
            LogDroppedLine(SaveFile, line.number, NoNumber("value", parts.size() > 1 ? parts[1] : ""),
                           line.text);
    }
}

void SaveParametersValue() {
    if (systems_vector.empty()) return; // the model did not load: what was saved before stays
    RefreshRecords();
    std::string content;
    for (const system_class &system : systems_vector) {
        for (const device_struct &device : system.devices) {
            for (const out_parameter_struct &parameter : device.outs) {
                const bool isSaved =
                    parameter.saveOnExit && !parameter.deleted && !device.deleted && !system.deleted;
                if (!isSaved) continue;
                content += system.name + "." + device.name + "." + parameter.name + "=";
                content += float2string(static_cast<float>(parameter.value)) + "\r\n";
            }
        }
    }
    const std::string path = WhatPluginPath() + SaveFile;
    if (!content.empty() || isFileExistString(path)) WriteWholeFile(path, content);
}
