// The writer always produces the list form, whichever form was loaded. A model read back from it is equal
// but for its live values, which start over from the initial ones.
#include "systems/writer.h"

#include <map>
#include <vector>

#include "frame/aircraft.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/reader.h"
#include "util/file_set.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

std::string saveFailure;

namespace {

const char *const LineEnd = "\r\n";

bool areFilesWhole = true; // no save is left half done

const char *ModeWord(const dataref_class &dataref) {
    if (dataref.mode == BindingExist) return "exist";
    return dataref.mode == BindingNew ? "new" : "";
}

std::string Operand(const sysLink_struct &link, double number) {
    return isLink(link) ? link.name : float2string(number);
}

std::string RightOperand(const compare_block_class &comparison) {
    if (comparison.bList.empty()) return Operand(comparison.b, comparison.bValue);
    std::string list;
    for (int number : comparison.bList) list += (list.empty() ? "" : ";") + int2string(number);
    // A list of one must still be read as a list.
    return comparison.bList.size() == 1 ? list + ";" : list;
}

std::string ParameterLine(const out_parameter_struct &parameter) {
    const std::string fields[] = {
        parameter.name,
        parameter.type == TypeDouble ? "double" : "integer",
        parameter.unit,
        float2string(parameter.initValue),
        parameter.hasMin ? float2string(parameter.minLimit) : "",
        parameter.hasMax ? float2string(parameter.maxLimit) : "",
        parameter.inDataref.fullName,
        ModeWord(parameter.inDataref),
        parameter.outDataref.fullName,
        ModeWord(parameter.outDataref),
        parameter.text,
        parameter.saveOnExit ? "1" : "0",
    };
    std::string line = "out=";
    for (const std::string &field : fields) {
        if (&field != fields) line += ",";
        line += field;
    }
    return line + LineEnd;
}

// A first comparison is joined to nothing, so its "&&" goes without saying; its "||" would be lost.
void WriteComparisons(const logicblock_struct &block, std::string &text) {
    for (const compare_block_class &comparison : block.compares) {
        const bool isFirst = &comparison == &block.compares.front();
        if (!isFirst || comparison.joinOp == 1) text += comparison.joinText + LineEnd;
        if (comparison.a.kind == LinkSpeech)
            text += "instring=" + comparison.phrase + LineEnd;
        else
            text += "[" + Operand(comparison.a, comparison.aValue) + "]" + comparison.cmpText + "["
                    + RightOperand(comparison) + "]" + LineEnd;
    }
}

// A calculation without elements stands for the block's constant, which only the last one can give.
void WriteCalculations(const logicblock_struct &block, std::string &text) {
    for (const calcBlock_struct &calculation : block.calcs) {
        text += "calc=";
        if (calculation.stack.empty())
            text += float2string(&calculation == &block.calcs.back() ? block.constant : 0.0);
        for (const calcStack_class &element : calculation.stack) {
            text += element.oper + "[";
            if (element.blockIndex != -1)
                text += "CBLOCK" + int2string(element.blockIndex);
            else
                text += Operand(element.link, element.constant);
            text += "]";
        }
        text += LineEnd;
    }
}

void WriteBlock(const logicblock_struct &block, std::string &text) {
    text += std::string("logic:") + LineEnd;
    WriteComparisons(block, text);
    WriteCalculations(block, text);
    for (const structExecute &action : block.executes)
        text += "execute=" + int2string(action.type) + "," + ReplaceStringAll(action.text, ",", ";") + ","
                + float2string(action.value) + LineEnd;
    for (const graf_struct &point : block.graph)
        text += "graf=" + float2string(point.x) + "," + float2string(point.y) + LineEnd;
}

std::string SystemText(const system_class &system) {
    std::string text = "sys=" + system.name + LineEnd;
    for (const device_struct &device : system.devices) {
        if (device.deleted) continue;
        text += (device.serialStack ? "devstack=" : "dev=") + device.name + LineEnd;
        for (const out_parameter_struct &parameter : device.outs) {
            if (parameter.deleted) continue;
            text += ParameterLine(parameter);
            for (const logicblock_struct &block : parameter.logic) WriteBlock(block, text);
        }
    }
    return text;
}

// A system's file is named after it and must neither leave the folder nor replace the other files there.
bool hasFileName(const system_class &system) {
    if (isSafeFileName(system.name) && system.name != "_systems" && system.name != "_save") return true;
    saveFailure = "no file can have the name of the system " + system.name;
    string2debugString("Error - systems not saved: ", saveFailure, 1);
    return false;
}

// What is missing in the model would be missing in the files, too.
bool isComplete() {
    const bool isComplete = isModelComplete && areFilesWhole;
    if (!isComplete) {
        saveFailure = "a systems file could not be read at the start";
        string2debugString("Error - systems not saved: ", saveFailure, 1);
    }
    return isComplete;
}

} // namespace

void FinishInterruptedSave() {
    areFilesWhole = FinishFileSet(WhatPluginPath() + "systems/");
}

// The list stands behind the files that it names.
bool SaveSysToTxtFile() {
    SysLinkRefresh(0);
    saveFailure.clear();
    if (!isComplete()) return false;
    const std::string folder = WhatPluginPath() + "systems/";
    std::vector<FileOfSet> files; // in order; systems that share a name share its file
    std::map<std::string, size_t> fileOfName;
    std::string list;
    for (const system_class &system : systems_vector) {
        if (system.deleted) continue;
        if (!hasFileName(system)) return false;
        const auto [entry, isNew] = fileOfName.emplace(system.name, files.size());
        if (isNew) {
            const bool hasMark = files.empty() && isVAdraw == 1;
            files.push_back({folder + system.name + ".txt", hasMark ? std::string("draw=1") + LineEnd : ""});
            list += system.name + LineEnd;
        }
        files[entry->second].content += SystemText(system);
    }
    files.push_back({folder + "_systems.txt", list});
    std::string failed;
    if (WriteFileSet(files, failed)) return true;
    saveFailure = "cannot write " + failed.substr(folder.size());
    return false;
}

void ResetWriter() {
    areFilesWhole = true;
    MakeFresh(saveFailure);
    areFilesWhole = true;
}
