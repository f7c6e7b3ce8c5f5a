// The file is one line per parameter, address=value, rewritten whole. An address is looked for anywhere in
// every line; what follows the dots of the lines is kept in order, so that this costs no pass over the file.
//
// Lines of parameters that are not loaded, because their systems file is missing for a flight or not in the
// list, are carried over. They stand first: the last line with an address counts, so none of them may stand
// behind a living one.
#include "systems/saved_values.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
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

// What follows a dot of a line. An address holds two dots or more, so one that stands in the line, beginning
// before this dot, has a second one behind it.
struct Continuation {
    std::string_view before, behind;
    size_t line;
};

const size_t MostDotsInOrder = 50; // of a line; those with more, if there are any, are searched one by one

std::vector<SavedLine> savedLines;
std::vector<size_t> dottedLines;
std::vector<Continuation>
    continuations; // in the order of behind, so that those that begin alike stand together

void AddContinuations(size_t index) {
    const std::string_view text = savedLines[index].line.text;
    if (std::count(text.begin(), text.end(), '.') > static_cast<std::ptrdiff_t>(MostDotsInOrder)) {
        dottedLines.push_back(index);
        return;
    }
    const size_t lastDot = text.rfind('.');
    for (size_t dot = text.find('.'); dot != lastDot; dot = text.find('.', dot + 1))
        continuations.push_back({text.substr(0, dot), text.substr(dot + 1), index});
}

void ReportNoNumber(SavedLine &saved) {
    if (saved.isReported) return;
    saved.isReported = true;
    LogDroppedLine(SaveFile, saved.line.number, NoNumber("value", saved.value), saved.line.text);
}

std::string AddressOf(const system_class &system, const device_struct &device,
                      const out_parameter_struct &parameter) {
    return system.name + "." + device.name + "." + parameter.name;
}

using Addresses = std::unordered_set<std::string>;

// Of all parameters that are loaded, deleted ones too.
Addresses LoadedAddresses() {
    Addresses addresses;
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            for (const out_parameter_struct &parameter : device.outs)
                addresses.insert(AddressOf(system, device, parameter));
    return addresses;
}

// Names may hold "=", so the address may end at the first or at the last of them.
bool isOfNoneLoaded(const std::string &line, const Addresses &loaded) {
    const size_t first = line.find('='), last = line.rfind('=');
    if (first == std::string::npos) return false;
    return !loaded.contains(line.substr(0, first)) && !loaded.contains(line.substr(0, last));
}

// The lines of the file that are to stay as they are; false when it cannot be read.
bool ReadLinesToKeep(const std::string &path, std::string &content) {
    std::vector<FileLine> lines;
    if (ReadLines(path, lines, SavedValuesFile) == Reading::Failed) return false;
    const Addresses loaded = LoadedAddresses();
    for (const FileLine &line : lines)
        if (isOfNoneLoaded(line.text, loaded)) content += line.text + "\r\n";
    return true;
}

} // namespace

void ReadSavedValues() {
    ForgetSavedValues();
    std::vector<FileLine> lines;
    ReadLines(WhatPluginPath() + SaveFile, lines, SavedValuesFile);
    for (FileLine &line : lines) {
        SavedLine &saved = savedLines.emplace_back();
        const std::vector<std::string> parts = StringToWordsArray(line.text, '=');
        double value = 0.0;
        if (parts.size() > 1) saved.value = parts[1];
        saved.isNumber = isNumber(saved.value) && ParseDouble(saved.value, value);
        saved.line = std::move(line);
    }
    for (size_t i = 0; i < savedLines.size(); i++) AddContinuations(i);
    std::sort(continuations.begin(), continuations.end(),
              [](const Continuation &a, const Continuation &b) { return a.behind < b.behind; });
}

void ForgetSavedValues() {
    continuations = {};
    dottedLines = {};
    savedLines = {};
}

void RestoreSavedValue(const std::string &address, std::string &initial) {
    const auto isBefore = [](const Continuation &continuation, std::string_view text) {
        return continuation.behind.compare(0, text.size(), text) < 0;
    };
    const size_t dot = address.find('.');
    const std::string_view before = std::string_view(address).substr(0, dot);
    const std::string_view behind = std::string_view(address).substr(dot + 1);
    std::vector<size_t> found = dottedLines;
    std::erase_if(found, [&](size_t line) { return !Contains(savedLines[line].line.text, address); });
    auto next = std::lower_bound(continuations.begin(), continuations.end(), behind, isBefore);
    for (; next != continuations.end() && next->behind.starts_with(behind); ++next)
        if (next->before.ends_with(before)) found.push_back(next->line);
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
    const std::string path = WhatPluginPath() + SaveFile;
    std::string content;
    if (!ReadLinesToKeep(path, content)) {
        LogFileProblem("FileIO:Cant write file ", path, "it could not be read");
        return;
    }
    for (const system_class &system : systems_vector) {
        for (const device_struct &device : system.devices) {
            for (const out_parameter_struct &parameter : device.outs) {
                const bool isSaved =
                    parameter.saveOnExit && !parameter.deleted && !device.deleted && !system.deleted;
                if (!isSaved) continue;
                content += AddressOf(system, device, parameter) + "=";
                content += float2string(static_cast<float>(parameter.value)) + "\r\n";
            }
        }
    }
    if (!content.empty() || isFileExistString(path)) WriteWholeFile(path, content);
}
