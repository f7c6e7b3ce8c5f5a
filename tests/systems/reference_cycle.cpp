// Loops over systems, devices and parameters in order; a serial device is let through its gate first.
#include "tests/systems/reference_cycle.h"

#include <algorithm>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "figure/channels.h"
#include "frame/simulator_datarefs.h"
#include "systems/graph.h"
#include "systems/model.h"
#include "util/clock.h"
#include "util/log.h"
#include "util/numbers.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/recognition.h"

namespace {

void Store(out_parameter_struct &parameter, double value) {
    parameter.value = value;
    parameter.intValue = TruncateToInt(value);
}

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

double Calculated(logicblock_struct &block, double value) {
    if (block.calcs.empty()) return value;
    std::vector<double> results;
    for (calcBlock_struct &calculation : block.calcs) {
        if (calculation.stack.empty()) {
            calculation.result = block.constant;
            continue;
        }
        double accumulator = value;
        for (calcStack_class &element : calculation.stack) accumulator = element.Calc(accumulator, results);
        calculation.result = accumulator;
        results.push_back(accumulator);
    }
    const double result = block.calcs.back().result;
    return block.graph.size() >= 2 ? CalcGraf(block.graph, result) : result;
}

void Evaluate(const system_class &system, const device_struct &device, out_parameter_struct &parameter,
              size_t step, bool &isBroken) {
    parameter.inDataref.GetValue();
    if (parameter.inDataref.handle) Store(parameter, parameter.inDataref.lastValue);
    double value = parameter.value;
    bool hasFired = false;
    for (size_t k = 0; k < parameter.logic.size(); k++) {
        logicblock_struct &block = parameter.logic[k];
        bool chain = true, hasSpeech = false;
        for (compare_block_class &comparison : block.compares) {
            if (comparison.a.kind != LinkSpeech) {
                chain = comparison.Logic(chain);
                continue;
            }
            hasSpeech = true;
            const bool isListed =
                std::find(answers.begin(), answers.end(), comparison.phrase) != answers.end();
            if (comparison.phrase == "any")
                isAnyInputGood = true;
            else if (device.serialStack && step > 0 && !isListed)
                answers.push_back(comparison.phrase);
            chain = comparison.Logic(chain, LastRecognition);
        }
        if (chain && hasSpeech) {
            LastRecognitionOld.clear();
            LastRecognition.clear();
            if (device.serialStack) isNewRecognitionMayCome = false;
        }
        block.active = chain && !hasFired;
        if (!block.active) continue;
        hasFired = true;
        parameter.activeBlock = static_cast<int>(k);
        if (!block.executes.empty() && block.executes[0].type != ScriptInput)
            string2debugString(
                "EXECUTE FROM:",
                system.name + "." + device.name + "." + parameter.name + " B " + std::to_string(k), 1);
        for (const structExecute &action : block.executes) Run(action, device, isBroken);
        if (isBroken && device.serialStack)
            value = 2.0;
        else if (!block.executes.empty() && device.serialStack)
            value = 1.0;
        else
            value = Calculated(block, value);
    }
    if (parameter.hasMin && value < parameter.minLimit) value = parameter.minLimit;
    if (parameter.hasMax && value > parameter.maxLimit) value = parameter.maxLimit;
    Store(parameter, value);
    parameter.outDataref.SetValue(value);
}

// True when the step of a serial device may be evaluated; index moves to the last step on an abort.
bool PassesGate(device_struct &device, size_t &index) {
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
    for (system_class &system : systems_vector) {
        for (device_struct &device : system.devices) {
            bool isBroken = false;
            for (size_t i = 0; i < device.outs.size(); i++)
                if (!device.serialStack || PassesGate(device, i))
                    Evaluate(system, device, device.outs[i], i, isBroken);
        }
    }
    if (LastRecognition == "abort") LastRecognition.clear();
}
