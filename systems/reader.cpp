// One pass over the lines builds systems, devices and parameters; the bodies are parsed afterwards, when
// every parameter that a link may name exists. What is not understood is kept at its place for the writer.
#include "systems/reader.h"

#include <algorithm>

#include "systems/body_parser.h"
#include "systems/kept_lines.h"
#include "systems/model.h"
#include "systems/notation.h"
#include "systems/program.h"
#include "systems/saved_values.h"
#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

bool isModelComplete = true;

namespace {

class ModelReader {
public:
    bool isComplete = true; // no file failed to be read

    Reading ReadFile(const std::string &file, bool &hasLines);

private:
    std::string fileName;
    // Indices of what is being read; -1: nothing yet, and for the parameter also: its lines do nothing.
    int sys = -1, dev = -1, out = -1;
    bool isAfterDropped = false; // a device or parameter that was not understood, with what follows it

    void ReadLine(FileLine &line);
    void StartSystem(const FileLine &line);
    void StartDevice(const FileLine &line);
    void StartParameter(const FileLine &line);
    void Drop(const FileLine &line, const std::string &reason, bool isMisplaced = false);
    void Ignore(const FileLine &line);
    void Keep(const FileLine &line, const std::string &reason);
    KeptLines &Place();
    device_struct *CurrentDevice();
};

// A file that is not there has no lines.
Reading ModelReader::ReadFile(const std::string &file, bool &hasLines) {
    fileName = file;
    std::vector<FileLine> lines;
    const Reading reading = ReadLines(WhatPluginPath() + file, lines, SystemsFile);
    if (reading == Reading::Failed) isComplete = false;
    hasLines = !lines.empty();
    // Of UTF-16, say, no line means anything; all would be taken for lines of the parameter before.
    const auto isBinary = [](const FileLine &line) { return Contains(line.text, std::string_view("\0", 1)); };
    const auto binary = std::find_if(lines.begin(), lines.end(), isBinary);
    if (binary != lines.end()) {
        LogDroppedLine(file, binary->number, "this is no plain text, so the file is not read", binary->text);
        isComplete = false;
        return Reading::Failed;
    }
    for (FileLine &line : lines) {
        const bool isMark = &line == &lines.front() && line.text == EditorMark;
        if (!isMark) ReadLine(line);
    }
    return reading;
}

void ModelReader::ReadLine(FileLine &line) {
    const LineKind kind = KindOfLine(line.text);
    LineRemarks remarks;
    RemarkOnKey(kind, line.text, remarks);
    ReportRemarks(remarks, fileName, line.number);
    switch (kind) {
    case LineKind::System: StartSystem(line); return;
    case LineKind::Device:
    case LineKind::SerialDevice: StartDevice(line); return;
    case LineKind::Parameter: StartParameter(line); return;
    case LineKind::Body: break;
    }
    if (out < 0) {
        if (isAfterDropped)
            Keep(line, "stands below a line that was not understood");
        else
            Ignore(line);
        return;
    }
    out_parameter_struct &parameter = CurrentDevice()->outs.back();
    parameter.lineNumbers.push_back(line.number);
    parameter.lines.push_back(std::move(line.text));
}

void ModelReader::StartSystem(const FileLine &line) {
    sys = static_cast<int>(systems_vector.size());
    out = -1;
    isAfterDropped = false;
    system_class &system = systems_vector.emplace_back(ReadSystemLine(line.text));
    mapSystemName.emplace(system.name, sys);
    system.fileName = fileName;
    system.line = line.number;
}

void ModelReader::StartDevice(const FileLine &line) {
    out = -1;
    if (sys < 0) {
        Drop(line, "a device needs a system before it", true);
        return;
    }
    isAfterDropped = false;
    system_class &system = systems_vector[static_cast<size_t>(sys)];
    dev = static_cast<int>(system.devices.size());
    device_struct &device = system.devices.emplace_back(ReadDeviceLine(line.text));
    system.deviceIndex.emplace(device.name, dev);
    device.line = line.number;
}

device_struct *ModelReader::CurrentDevice() {
    if (sys < 0 || dev < 0) return nullptr;
    std::vector<device_struct> &devices = systems_vector[static_cast<size_t>(sys)].devices;
    return static_cast<size_t>(dev) < devices.size() ? &devices[static_cast<size_t>(dev)] : nullptr;
}

void ModelReader::Drop(const FileLine &line, const std::string &reason, bool isMisplaced) {
    Report({.file = fileName,
            .line = line.number,
            .reason = reason,
            .text = line.text,
            .isMisplaced = isMisplaced});
    Keep(line, reason);
    isAfterDropped = true;
}

// The log does not say so: it is what the format has for such lines.
void ModelReader::Ignore(const FileLine &line) {
    const std::string reason = std::string("stands before the first parameter of its ")
                               + (CurrentDevice() ? "device"
                                  : sys >= 0      ? "system"
                                                  : "file");
    Report({.severity = Severity::Warning,
            .file = fileName,
            .line = line.number,
            .reason = "ignored: it " + reason + ": " + line.text,
            .isMisplaced = true,
            .isLogged = false});
    Keep(line, reason);
}

void ModelReader::Keep(const FileLine &line, const std::string &reason) {
    Place().push_back({.text = line.text, .reason = reason, .line = line.number});
}

// Where lines stand that are no part of a parameter.
KeptLines &ModelReader::Place() {
    if (sys < 0) return keptBeforeSystems.lines;
    device_struct *device = CurrentDevice();
    if (!device) return systems_vector[static_cast<size_t>(sys)].kept;
    return KeptBefore(*device, static_cast<int>(device->outs.size()));
}

// What was saved takes the initial value's place before that is read.
void ModelReader::StartParameter(const FileLine &line) {
    out = -1;
    device_struct *device = CurrentDevice();
    if (!device) {
        Drop(line, "a parameter needs a system and a device before it", true);
        return;
    }
    const std::string rest = NameInLine(LineKind::Parameter, line.text);
    std::vector<std::string_view> fields;
    SplitFields(rest, ',', fields);
    std::string initial(fields.size() > 3 ? fields[3] : "");
    if (fields.size() > 3 && fields[0] == "VERSION") // even of a parameter that is not understood
        string2debugString("Fennic Systems Version: ", initial, 1);
    if (fields.size() > 11 && fields[11] == "1") {
        const std::string &system = systems_vector[static_cast<size_t>(sys)].name;
        RestoreSavedValue(system + "." + device->name + "." + std::string(fields[0]), initial);
        fields[3] = initial;
    }
    out_parameter_struct parameter;
    std::string reason;
    LineRemarks remarks;
    const bool isRead = ReadParameterFields(fields, parameter, reason, remarks);
    ReportRemarks(remarks, fileName, line.number);
    if (!isRead) {
        Drop(line, reason);
        return;
    }
    isAfterDropped = false;
    KeepAsWritten(line.text, remarks.isWhole, parameter);
    parameter.fileName = fileName;
    parameter.line = line.number;
    parameter.value = parameter.initValue;
    if (parameter.type == TypeInteger) parameter.intValue = TruncateToInt(parameter.initValue);
    const int bindingType = parameter.type == TypeDouble ? xplmType_Float : xplmType_Int;
    for (dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref})
        if (const dataref_class named = *dataref; !named.fullName.empty())
            dataref->Init(named.fullName, ModeWord(named.mode), bindingType, LeadingNumber(initial));
    out = static_cast<int>(device->outs.size());
    device->outIndex.emplace(parameter.name, out);
    device->outs.push_back(std::move(parameter));
}

const char *const ListFile = "systems/_systems.txt";
const char *const SingleFile = "sys.txt";

// The name of a file that no system came from stays in the list.
void KeepInList(const FileLine &line, const std::string &reason) {
    KeptLines &place = systems_vector.empty() ? keptBeforeSystems.inList : systems_vector.back().keptInList;
    place.push_back({.text = line.text, .reason = reason, .line = line.number});
}

void ReadListedFiles(ModelReader &reader, const std::vector<FileLine> &list) {
    for (const FileLine &line : list) {
        if (!isSafeFileName(line.text)) {
            LogDroppedLine(ListFile, line.number, "no name of a file in this folder", line.text);
            KeepInList(line, "no name of a file in this folder");
            continue;
        }
        bool hasLines = false;
        const Reading reading = reader.ReadFile("systems/" + line.text + ".txt", hasLines);
        if (reading == Reading::Absent)
            KeepInList(line, "there is no such file");
        else if (reading == Reading::Failed)
            KeepInList(line, "the file could not be read");
        else if (!hasLines)
            KeepInList(line, "the file is empty");
    }
}

// The list where there is one, readable or not; else the single file. False when one could not be read.
bool ReadSystemsFiles(const std::string &folder) {
    ModelReader reader;
    std::vector<FileLine> list;
    const Reading listReading = ReadLines(folder + ListFile, list);
    isSeparateSysSaving = -1;
    if (listReading == Reading::Read) {
        isSeparateSysSaving = 1;
        ReadListedFiles(reader, list);
    } else if (listReading == Reading::Absent && isFileExistString(folder + SingleFile)) {
        isSeparateSysSaving = 0;
        bool hasLines = false;
        reader.ReadFile(SingleFile, hasLines);
    }
    if (isSeparateSysSaving == -1) LogFileProblem("System files not found at ", folder);
    return reader.isComplete && listReading != Reading::Failed;
}

} // namespace

void CreateSystemsFromFile() {
    const std::string folder = WhatPluginPath();
    isModelComplete = false; // also when something is thrown on the way
    ModelChanges();
    keptBeforeSystems = {};
    ReadSavedValues();
    const bool isComplete = ReadSystemsFiles(folder);
    ForgetSavedValues();
    LogicAndCalcForOutputParce();
    isModelComplete = isComplete;
}

void ResetReader() {
    isModelComplete = true;
}
