// One pass over the lines builds systems, devices and parameters; the bodies are parsed afterwards, when
// every parameter that a link may name exists. Keys are found anywhere in a line.
#include "systems/reader.h"

#include <algorithm>

#include "frame/aircraft.h"
#include "systems/body_parser.h"
#include "systems/editor_window.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/program.h"
#include "systems/saved_values.h"
#include "util/files.h"
#include "util/log.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

bool isModelComplete = true;

namespace {

const size_t FewestFields = 10; // of an "out=" line; text and save flag may be missing

class ModelReader {
public:
    bool isComplete = true; // no file failed to be read

    void ReadFile(const std::string &file);

private:
    std::string fileName;
    std::vector<std::string_view> fields;
    // Indices of what is being read; -1: nothing yet, and for the parameter also: its lines are dropped.
    int sys = -1, dev = -1, out = -1;

    void ReadLine(FileLine &line);
    void StartSystem(std::string name, const FileLine &line);
    void StartDevice(std::string name, bool isSerial, const FileLine &line);
    void StartParameter(const FileLine &line);
    bool ReadParameter(std::string_view rest, const FileLine &line, out_parameter_struct &parameter);
    bool ReadNumber(std::string_view text, const char *field, const FileLine &line, double &value);
    device_struct *CurrentDevice();
};

// A file that is not there has no lines.
void ModelReader::ReadFile(const std::string &file) {
    fileName = file;
    std::vector<FileLine> lines;
    if (ReadLines(WhatPluginPath() + file, lines, SystemsFile) == Reading::Failed) isComplete = false;
    // Of UTF-16, say, no line means anything; all would be taken for lines of the parameter before.
    const auto isBinary = [](const FileLine &line) { return Contains(line.text, std::string_view("\0", 1)); };
    const auto binary = std::find_if(lines.begin(), lines.end(), isBinary);
    if (binary != lines.end()) {
        LogDroppedLine(file, binary->number, "this is no plain text, so the file is not read", binary->text);
        isComplete = false;
        return;
    }
    for (FileLine &line : lines) ReadLine(line);
}

void ModelReader::ReadLine(FileLine &line) {
    if (Contains(line.text, "sys=")) {
        StartSystem(ReplaceString(line.text, "sys=", ""), line);
    } else if (Contains(line.text, "dev=")) {
        StartDevice(ReplaceString(line.text, "dev=", ""), false, line);
    } else if (Contains(line.text, "devstack=")) {
        StartDevice(ReplaceString(line.text, "devstack=", ""), true, line);
    } else if (Contains(line.text, "out=")) {
        StartParameter(line);
    } else if (out >= 0) {
        out_parameter_struct &parameter = CurrentDevice()->outs.back();
        parameter.lineNumbers.push_back(line.number);
        parameter.lines.push_back(std::move(line.text));
    }
}

void ModelReader::StartSystem(std::string name, const FileLine &line) {
    sys = static_cast<int>(systems_vector.size());
    out = -1;
    mapSystemName.emplace(name, sys);
    system_class &system = systems_vector.emplace_back();
    system.name = std::move(name);
    system.fileName = fileName;
    system.line = line.number;
}

void ModelReader::StartDevice(std::string name, bool isSerial, const FileLine &line) {
    out = -1;
    if (sys < 0) {
        LogDroppedLine(fileName, line.number, "a device needs a system before it", line.text);
        return;
    }
    system_class &system = systems_vector[static_cast<size_t>(sys)];
    dev = static_cast<int>(system.devices.size());
    system.deviceIndex.emplace(name, dev);
    device_struct &device = system.devices.emplace_back();
    device.name = std::move(name);
    device.serialStack = isSerial;
    device.line = line.number;
}

device_struct *ModelReader::CurrentDevice() {
    if (sys < 0 || dev < 0) return nullptr;
    std::vector<device_struct> &devices = systems_vector[static_cast<size_t>(sys)].devices;
    return static_cast<size_t>(dev) < devices.size() ? &devices[static_cast<size_t>(dev)] : nullptr;
}

void ModelReader::StartParameter(const FileLine &line) {
    out = -1;
    device_struct *device = CurrentDevice();
    if (!device) {
        LogDroppedLine(fileName, line.number, "a parameter needs a system and a device before it", line.text);
        return;
    }
    const std::string rest = ReplaceString(line.text, "out=", "");
    out_parameter_struct parameter;
    if (!ReadParameter(rest, line, parameter)) return;
    out = static_cast<int>(device->outs.size());
    device->outIndex.emplace(parameter.name, out);
    device->outs.push_back(std::move(parameter));
}

bool ModelReader::ReadNumber(std::string_view text, const char *field, const FileLine &line, double &value) {
    if (ParseDouble(text, value)) return true;
    LogDroppedLine(fileName, line.number, NoNumber(field, text), line.text);
    return false;
}

// Field by field, in the order of the line. False when the line is dropped.
bool ModelReader::ReadParameter(std::string_view rest, const FileLine &line,
                                out_parameter_struct &parameter) {
    SplitFields(rest, ',', fields);
    if (fields.size() < FewestFields) {
        LogDroppedLine(fileName, line.number, "a parameter has ten to twelve fields", line.text);
        return false;
    }
    parameter.fileName = fileName;
    parameter.line = line.number;
    parameter.name = fields[0];
    const std::string_view type = fields[1];
    parameter.unit = fields[2];
    std::string initial(fields[3]);
    if (fields.size() > 10) parameter.text = fields[10];
    if (fields.size() > 11) parameter.saveOnExit = fields[11] == "1";
    if (parameter.name == "VERSION") string2debugString("Fennic Systems Version: ", initial, 1);
    if (parameter.saveOnExit) {
        const system_class &system = systems_vector[static_cast<size_t>(sys)];
        RestoreSavedValue(system.name + "." + CurrentDevice()->name + "." + parameter.name, initial);
    }

    const bool isDouble = type == "double";
    const bool isInteger = type == "int" || type == "integer" || type == "execute";
    parameter.type = isDouble ? TypeDouble : TypeInteger;
    if (isDouble || isInteger) {
        if (!ReadNumber(initial, "initial value", line, parameter.initValue)) return false;
        parameter.value = parameter.initValue;
        if (isInteger) parameter.intValue = TruncateToInt(parameter.initValue);
    }
    parameter.hasMin = !fields[4].empty();
    parameter.hasMax = !fields[5].empty();
    if (parameter.hasMin && !ReadNumber(fields[4], "minimum", line, parameter.minLimit)) return false;
    if (parameter.hasMax && !ReadNumber(fields[5], "maximum", line, parameter.maxLimit)) return false;

    const int bindingType = isDouble ? xplmType_Float : xplmType_Int;
    const auto bind = [&](dataref_class &dataref, std::string_view name, std::string_view mode) {
        if (!name.empty())
            dataref.Init(std::string(name), std::string(mode), bindingType, LeadingNumber(initial));
    };
    bind(parameter.inDataref, fields[6], fields[7]);
    bind(parameter.outDataref, fields[8], fields[9]);
    return true;
}

const char *const ListFile = "systems/_systems.txt";
const char *const SingleFile = "sys.txt";

void ReadListedFiles(ModelReader &reader, const std::vector<FileLine> &list) {
    for (const FileLine &line : list) {
        if (isSafeFileName(line.text))
            reader.ReadFile("systems/" + line.text + ".txt");
        else
            LogDroppedLine(ListFile, line.number, "no name of a file in this folder", line.text);
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
        reader.ReadFile(SingleFile);
    }
    if (isSeparateSysSaving == -1) string2debugString("System files not found at ", folder, 1);
    return reader.isComplete && listReading != Reading::Failed;
}

} // namespace

void CreateSystemsFromFile() {
    const std::string folder = WhatPluginPath();
    isModelComplete = false; // also when something is thrown on the way
    ModelChanges();
    ReadSavedValues();
    const bool isComplete = ReadSystemsFiles(folder);
    ForgetSavedValues();
    LogicAndCalcForOutputParce();
    isModelComplete = isComplete;
    if (isVAdraw == 1) SysWindowCreate();
}

void ResetReader() {
    isModelComplete = true;
}
