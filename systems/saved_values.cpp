// The file is one line per parameter, address=value, rewritten whole. An address is looked for anywhere in
// every line; all places where one may begin are kept in order, so that this costs no pass over the file.
#include "systems/saved_values.h"

#include <algorithm>
#include <string_view>
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

struct SavedLine {
    FileLine line;
    std::string value;     // what stands between the first "=" and the next
    bool isNumber = false; // the value is one
    bool isReported = false;
};

// Where an address may begin in a line: what follows, with the line's index.
struct Beginning {
    std::string_view rest;
    size_t line;
};

const size_t LongestInOrder = 200; // bytes of a line; longer ones, if there are any, are searched one by one

std::vector<SavedLine> savedLines;
std::vector<size_t> longLines;
std::vector<Beginning> beginnings; // in the order of rest, so that those that begin alike stand together

// An address is at least three names with dots between them, so it cannot begin behind the last dot but one.
void AddBeginnings(size_t index) {
    const std::string_view text = savedLines[index].line.text;
    if (text.size() > LongestInOrder) {
        longLines.push_back(index);
        return;
    }
    const size_t lastDot = text.rfind('.');
    const size_t dotBefore = lastDot == 0 ? std::string_view::npos : text.rfind('.', lastDot - 1);
    if (lastDot == std::string_view::npos || dotBefore == std::string_view::npos) return;
    for (size_t start = 0; start <= dotBefore; start++) beginnings.push_back({text.substr(start), index});
}

void ReportNoNumber(SavedLine &saved) {
    if (saved.isReported) return;
    saved.isReported = true;
    LogDroppedLine(SaveFile, saved.line.number, NoNumber("value", saved.value), saved.line.text);
}

} // namespace

void ReadSavedValues() {
    ForgetSavedValues();
    const std::string path = WhatPluginPath() + SaveFile;
    if (!isFileExistString(path)) return;
    for (FileLine &line : ReadFileLines(path)) {
        SavedLine &saved = savedLines.emplace_back();
        const std::vector<std::string> parts = StringToWordsArray(line.text, '=');
        double value = 0.0;
        if (parts.size() > 1) saved.value = parts[1];
        saved.isNumber = isNumber(saved.value) && ParseDouble(saved.value, value);
        saved.line = std::move(line);
    }
    for (size_t i = 0; i < savedLines.size(); i++) AddBeginnings(i);
    std::sort(beginnings.begin(), beginnings.end(),
              [](const Beginning &a, const Beginning &b) { return a.rest < b.rest; });
}

void ForgetSavedValues() {
    beginnings = {};
    longLines = {};
    savedLines = {};
}

void RestoreSavedValue(const std::string &address, std::string &initial) {
    const auto isBefore = [](const Beginning &beginning, const std::string &text) {
        return beginning.rest.compare(0, text.size(), text) < 0;
    };
    std::vector<size_t> found = longLines;
    std::erase_if(found, [&](size_t line) { return !Contains(savedLines[line].line.text, address); });
    auto beginning = std::lower_bound(beginnings.begin(), beginnings.end(), address, isBefore);
    for (; beginning != beginnings.end() && beginning->rest.starts_with(address); ++beginning)
        found.push_back(beginning->line);
    std::sort(found.begin(), found.end());
    for (size_t line : found) {
        if (savedLines[line].isNumber)
            initial = savedLines[line].value;
        else
            ReportNoNumber(savedLines[line]);
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
