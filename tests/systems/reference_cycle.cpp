// Loops over systems, devices and parameters in order; a serial device is let through its gate first.
#include "tests/systems/reference_cycle.h"

#include <algorithm>
#include <cmath>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "systems/model.h"
#include "util/clock.h"
#include "util/log.h"
#include "util/numbers.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/recognition.h"

std::vector<std::vector<double>> referenceFindings;

namespace {

using Findings = std::vector<double>;

// ---- Values ----

double Read(const sysLink_struct &link, double constant) {
    if (link.kind == 2) return constant;
    if (link.kind > 1) return 0;
    return systems_vector.at(static_cast<size_t>(link.sys))
        .devices.at(static_cast<size_t>(link.dev))
        .outs.at(static_cast<size_t>(link.out))
        .value;
}

void Store(out_parameter_struct &parameter, double value) {
    parameter.value = value;
    parameter.intValue = TruncateToInt(value);
}

// A dataref of others may come at any time, and is kept when it goes: from then on it reads 0.
XPLMDataRef HandleOf(dataref_class &dataref) {
    if (dataref.handle || dataref.mode != 2) return dataref.handle;
    const XPLMDataRef handle = XPLMFindDataRef(dataref.name.c_str());
    if (!XPLMIsDataRefGood(handle)) return nullptr;
    dataref.dataType = XPLMGetDataRefTypes(handle);
    return dataref.handle = handle;
}

bool isIndex(const dataref_class &dataref) {
    return dataref.index >= 0 && dataref.index < 16;
}

// All three scalar types at once are a double.
double ReadDataref(dataref_class &dataref) {
    const XPLMDataRef handle = HandleOf(dataref);
    float element = 0;
    int whole = 0;
    switch (dataref.dataType) {
    case 1: return XPLMGetDatai(handle);
    case 2: return XPLMGetDataf(handle);
    case 8: return isIndex(dataref) && XPLMGetDatavf(handle, &element, dataref.index, 1) ? element : 0;
    case 16: return isIndex(dataref) && XPLMGetDatavi(handle, &whole, dataref.index, 1) ? whole : 0;
    default: return XPLMGetDatad(handle);
    }
}

void WriteDataref(dataref_class &dataref, double value) {
    const XPLMDataRef handle = HandleOf(dataref);
    if (!handle) return;
    float element = static_cast<float>(value);
    int whole = TruncateToInt(value);
    switch (dataref.dataType) {
    case 1: XPLMSetDatai(handle, whole); break;
    case 2: XPLMSetDataf(handle, element); break;
    case 8:
        if (isIndex(dataref)) XPLMSetDatavf(handle, &element, dataref.index, 1);
        break;
    case 16:
        if (isIndex(dataref)) XPLMSetDatavi(handle, &whole, dataref.index, 1);
        break;
    default: XPLMSetDatad(handle, value);
    }
}

// ---- Blocks ----

bool Compare(const compare_block_class &comparison, double a, double b) {
    const auto &list = comparison.bList;
    const bool isEqual = list.empty() ? a == b : std::count(list.begin(), list.end(), a) > 0;
    switch (comparison.cmpOp) {
    case 0: return isEqual;
    case 1: return !isEqual;
    case 2: return a > b;
    case 3: return a < b;
    case 4: return a >= b;
    default: return a <= b;
    }
}

// What was heard counts for a comparison of speech; of a sequence its later steps tell what they wait for.
bool CompareSpeech(const compare_block_class &comparison, bool isLaterStep) {
    if (comparison.phrase == "any")
        isAnyInputGood = true;
    else if (isLaterStep && std::count(answers.begin(), answers.end(), comparison.phrase) == 0)
        answers.push_back(comparison.phrase);
    if (LastRecognition.empty()) return false;
    return comparison.phrase == "any" || (LastRecognition == comparison.phrase) == (comparison.cmpOp == 0);
}

bool Chain(const logicblock_struct &block, bool isLaterStep, Findings &findings) {
    bool chain = true;
    for (const compare_block_class &comparison : block.compares) {
        double a = 0, b = 0;
        bool isTrue;
        if (comparison.a.kind == 5) {
            isTrue = CompareSpeech(comparison, isLaterStep);
        } else {
            const bool isList = comparison.cmpOp < 2 && !comparison.bList.empty();
            a = Read(comparison.a, comparison.aValue);
            if (!isList) b = Read(comparison.b, comparison.bValue);
            isTrue = Compare(comparison, a, b);
        }
        chain = comparison.joinOp == 1 ? chain || isTrue : chain && isTrue;
        findings.insert(findings.end(), {a, b, isTrue ? 1.0 : 0.0});
    }
    return chain;
}

double BinaryDigits(double value) {
    const long whole = TruncateToInt(value);
    const std::string digits = std::to_string(std::abs(whole));
    double number = 0;
    for (size_t i = 0; i < digits.size() && digits[i] < '2'; i++) number = 2 * number + (digits[i] - '0');
    return whole < 0 ? -number : number;
}

double Element(const calcStack_class &element, double before, double operand) {
    const std::string &oper = element.oper;
    if (oper == "+") return before + operand;
    if (oper == "-") return before - operand;
    if (oper == "*") return before * operand;
    if (oper == "/") return operand == 0 ? 0 : before / operand;
    if (oper == "b2i") return BinaryDigits(before);
    if (oper == "flr") return std::floor(before);
    return operand;
}

// The value that the block's last calculation gives, each of them starting from the parameter's.
double Calculated(const logicblock_struct &block, double value, Findings &findings) {
    Findings results;
    double last = value;
    for (const calcBlock_struct &calculation : block.calcs) {
        last = calculation.stack.empty() ? block.constant : value;
        for (const calcStack_class &element : calculation.stack) {
            const auto index = static_cast<size_t>(element.blockIndex);
            const double operand = element.blockIndex == -1 ? Read(element.link, element.constant)
                                   : index < results.size() ? results[index]
                                                            : 0;
            last = Element(element, last, operand);
            findings.insert(findings.end(), {operand, last});
        }
        if (!calculation.stack.empty()) results.push_back(last);
    }
    return last;
}

double Graph(const std::vector<graf_struct> &points, double x) {
    if (!(x > points.front().x)) return points.front().y;
    if (!(x < points.back().x)) return points.back().y;
    for (size_t i = 1; i < points.size(); i++) {
        const graf_struct &from = points[i - 1], &to = points[i];
        if (from.x <= x && x < to.x) return from.y + (x - from.x) * (to.y - from.y) / (to.x - from.x);
    }
    return 0;
}

// ---- Actions ----

void Run(const structExecute &action, const device_struct &device, bool &isBroken) {
    const auto queue = [](int type, const std::string &text) { executeFlow.push_back({type, text}); };
    switch (action.type) {
    case 0: queue(0, action.text); break;
    case 1: queue(1, action.text); break;
    case 2: queue(action.value != 0 ? 2 : 3, action.text); break;
    case 3:
        queue(5, action.text);
        isBroken = true;
        break;
    case 4: queue(6, action.text); break;
    case 5: queue(7, action.text); break;
    case 6: queue(8, action.text); break;
    case 7: queue(4, double2string(action.value)); break;
    case 8: queue(9, action.text + "=" + double2string(action.value)); break;
    case 9:
        if (inputs.empty() || inputs.back().name != device.name) inputs.push_back({device.name, {}});
        inputs.back().texts.push_back(action.text);
        break;
    case 11: ExecuteCommand(action.text, "End"); break;
    case 12:
        std::erase_if(answerstimer, [&](const auto &timer) { return timer.name == action.text; });
        if (action.value > 0) answerstimer.push_back({action.text, FlightTimeSEC + action.value});
        break;
    default: break;
    }
}

double Fire(const logicblock_struct &block, const std::string &name, const device_struct &device,
            double value, double calculated, bool &isBroken) {
    if (!block.executes.empty() && block.executes[0].type != 9) string2debugString("EXECUTE FROM:", name, 1);
    for (const structExecute &action : block.executes) Run(action, device, isBroken);
    if (isBroken && device.serialStack) return 2;
    if (!block.executes.empty() && device.serialStack) return 1;
    if (block.calcs.empty()) return value;
    return block.graph.size() >= 2 ? Graph(block.graph, calculated) : calculated;
}

Findings Evaluate(const std::string &name, const device_struct &device, out_parameter_struct &parameter,
                  bool isLaterStep, bool &isBroken) {
    if (HandleOf(parameter.inDataref)) Store(parameter, ReadDataref(parameter.inDataref));
    double value = parameter.value;
    bool hasFired = false;
    Findings all;
    for (size_t k = 0; k < parameter.logic.size(); k++) {
        logicblock_struct &block = parameter.logic[k];
        Findings findings;
        const bool isTrue = Chain(block, isLaterStep && device.serialStack, findings);
        const bool hasSpeech = std::any_of(block.compares.begin(), block.compares.end(),
                                           [](const auto &comparison) { return comparison.a.kind == 5; });
        if (isTrue && hasSpeech) {
            LastRecognition = LastRecognitionOld = "";
            if (device.serialStack) isNewRecognitionMayCome = false;
        }
        const double calculated = Calculated(block, parameter.value, findings);
        block.active = isTrue && !hasFired;
        if (block.active) {
            hasFired = true;
            parameter.activeBlock = static_cast<int>(k);
            value = Fire(block, name + " B " + std::to_string(k), device, value, calculated, isBroken);
        }
        all.insert(all.end(), {isTrue ? 1.0 : 0.0, block.active ? 1.0 : 0.0});
        all.insert(all.end(), findings.begin(), findings.end());
    }
    if (parameter.hasMin && value < parameter.minLimit) value = parameter.minLimit;
    if (parameter.hasMax && value > parameter.maxLimit) value = parameter.maxLimit;
    Store(parameter, value);
    WriteDataref(parameter.outDataref, value);
    return all;
}

// ---- Sequences ----

// True when the step of a serial device may be evaluated; index moves to the last step on an abort.
bool PassesGate(device_struct &device, size_t &index, bool &isRewound) {
    out_parameter_struct &step = device.outs[index];
    if (step.value > 0) {
        onChecklistOrProcedure = true;
        isLiveAnimationBlocked = true;
        if (LastRecognition == "abort") {
            index = device.outs.size() - 1;
            XPLMSetDatai(DRFi_ShowPlanshet, 0);
            onChecklistOrProcedure = false;
        }
        if (index == device.outs.size() - 1) {
            for (out_parameter_struct &each : device.outs) Store(each, 0);
            onChecklistOrProcedure = false;
            isRewound = true;
        }
        return false;
    }
    if (step.value == 0 && index > 0 && device.outs[index - 1].value == 0) return false;
    if (!executeFlow.empty()) return false;
    if (index > 0 && device.outs[index - 1].value == 2.0) {
        Store(step, 2.0);
        XPLMSetDatai(DRFi_ShowPlanshet, 0);
        return false;
    }
    return true;
}

void Run(const system_class &system, device_struct &device) {
    const size_t first = referenceFindings.size();
    referenceFindings.resize(first + device.outs.size());
    bool isBroken = false, isRewound = false;
    for (size_t i = 0; i < device.outs.size(); i++) {
        if (device.serialStack && !PassesGate(device, i, isRewound)) continue;
        const std::string name = system.name + "." + device.name + "." + device.outs[i].name;
        referenceFindings[first + i] = Evaluate(name, device, device.outs[i], i > 0, isBroken);
        referenceFindings[first + i].push_back(0); // also without blocks it was evaluated
    }
    if (isRewound)
        for (size_t i = first; i < referenceFindings.size(); i++) referenceFindings[i].clear();
}

} // namespace

void ReferenceCycle() {
    isLiveAnimationBlocked = false;
    onChecklistOrProcedure = false;
    answers.clear();
    for (size_t i = 0; i < answerstimer.size(); i++) {
        answers.push_back(answerstimer[i].name);
        if (answerstimer[i].time < FlightTimeSEC)
            answerstimer.erase(answerstimer.begin() + static_cast<std::ptrdiff_t>(i));
    }
    inputs.clear();
    if (XPLMGetDatai(DRF_paused) == 1) return;
    isAnyInputGood = false;
    referenceFindings.clear();
    for (system_class &system : systems_vector)
        for (device_struct &device : system.devices) Run(system, device);
    if (LastRecognition == "abort") LastRecognition.clear();
}
