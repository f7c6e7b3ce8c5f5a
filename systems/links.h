// Links between parameters: from text to indices, reading through them, and keeping them valid when the
// editor changes the tree.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "systems/model.h"
#include "systems/spoken_links.h"

// The record at an index; null when there is none.
template <typename Records> auto *RecordAt(Records &records, int index) {
    const bool isThere = index >= 0 && static_cast<size_t>(index) < records.size();
    return isThere ? &records[static_cast<size_t>(index)] : nullptr;
}

// What stands at an address, as deep as the function goes; null when the address names none.
inline system_class *SystemAt(const ParameterAddress &place) {
    return RecordAt(systems_vector, place.sys);
}
inline device_struct *DeviceAt(const ParameterAddress &place) {
    system_class *system = SystemAt(place);
    return system ? RecordAt(system->devices, place.dev) : nullptr;
}
inline out_parameter_struct *ParameterAt(const ParameterAddress &place) {
    device_struct *device = DeviceAt(place);
    return device ? RecordAt(device->outs, place.out) : nullptr;
}

// Calls visit with the address of every parameter of the model, in its order.
template <typename Visit> void ForEachAddress(Visit visit) {
    for (ParameterAddress place{0, 0, 0}; SystemAt(place); place = {place.sys + 1, 0, 0})
        for (; DeviceAt(place); place = {place.sys, place.dev + 1, 0})
            for (; ParameterAt(place); place.out++) visit(std::as_const(place));
}

// The name of a parameter as links write it, "SYSTEM.DEVICE.PARAMETER"; empty when there is none there.
std::string SysDevOut2name(const ParameterAddress &place);

// Resolves "SYSTEM.DEVICE.PARAMETER". When a name is missing: with an owner, the parameter that holds the
// link, the link is LinkUnresolved and keeps its text, one line goes to the log, and the owner's records get
// hasError; without an owner the result is no link.
sysLink_struct String2sysLinkSDO(const ParameterAddress &owner, std::string_view text);
sysLink_struct String2sysLink(std::string_view text);

// The live value of the parameter that a link names. GetLinkValue does not look at the link's kind;
// GetValueFromSysLink gives 0 for a link that does not resolve.
double GetLinkValue(const sysLink_struct &link);
double GetValueFromSysLink(const sysLink_struct &link);

// Calls visit for every link that a parameter's value may depend on: operands of comparisons and
// calculations.
template <typename Parameter, typename Visit> void ForEachOperandOf(Parameter &parameter, Visit visit) {
    for (auto &block : parameter.logic) {
        for (auto &comparison : block.compares) {
            visit(comparison.a);
            visit(comparison.b);
        }
        for (auto &calculation : block.calcs)
            for (auto &element : calculation.stack) visit(element.link);
    }
}

// The same for every link that a parameter holds: operands, and those in spoken texts.
template <typename Parameter, typename Visit> void ForEachLinkOf(Parameter &parameter, Visit visit) {
    ForEachOperandOf(parameter, visit);
    for (auto &block : parameter.logic)
        for (auto &action : block.executes) ForEachSpokenLink(action, visit);
}

// The same for every link of the model, in its order.
template <typename Visit> void ForEachLink(Visit visit) {
    for (system_class &system : systems_vector)
        for (device_struct &device : system.devices)
            for (out_parameter_struct &parameter : device.outs) ForEachLinkOf(parameter, visit);
}

// The editor's buffers: what was copied, and from where.
struct CopiesState {
    out_parameter_struct parameter;
    sysLink_struct parameterLink; // where it was copied from
    sysLink_struct place;         // where it was moved to
    device_struct device;         // about to be pasted
    std::string deviceName;       // "SYSTEM.DEVICE", where it was copied from
    structExecute action;
    bool isActionCopied = false;
};
extern CopiesState copies;
inline out_parameter_struct &OutParameterCopy = copies.parameter;
inline sysLink_struct &OutParameterSysLinkCopy = copies.parameterLink;
inline sysLink_struct &OutParameterSysLinkPlace = copies.place;
inline device_struct &DeviceCopy = copies.device;
inline structExecute &ExecCopy = copies.action;

// True for what is written as the name of a parameter, whether or not there is one.
inline bool isLink(const sysLink_struct &link) {
    return link.kind == LinkLive || link.kind == LinkDeleted || link.kind == LinkUnresolved;
}

// Fills the name maps again; to be called after inserting, renaming or reordering. What is deleted gives its
// name to a live one of the same name, which is the one that the files will know.
void RemapAll();

// The link resolved again under the present names of what it points at.
sysLink_struct RefreshSysLinkName(const sysLink_struct &link);

// Resolves every link of the model again and marks what holds an unresolved one. Mode 1: the link follows the
// object, under its present name; any other mode: the link follows the name it holds.
void SysLinkRefresh(int mode);

// The same for the links of one parameter, by the names they hold; and the marks alone.
void ResolveLinksOf(out_parameter_struct &parameter);
void MarkLinkErrors();

// The parameter that links know as oldName stands at another place now: these links follow it there.
void SysLinkExchange(const std::string &oldName, const ParameterAddress &place);

// The addresses of a copied parameter and of the place it was moved to, and SysLinkExchange from the one
// to the other.
void SysLinkPlace();

// A copied device about to be pasted under a new name: links to parameters whose names begin with "in_" are
// the device's own inputs and are turned to the new device.
void DeviceTemplatePreparation(const std::string &newDeviceName);

// Nothing is copied any more.
void ForgetCopies();
