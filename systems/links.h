// Links between parameters: from text to indices, reading through them, and keeping them valid when the
// editor changes the tree.
#pragma once

#include <string>
#include <string_view>

#include "systems/model.h"
#include "systems/spoken_links.h"

// Resolves "SYSTEM.DEVICE.PARAMETER". When a name is missing: with an owner (three valid indices) the link
// is LinkUnresolved and keeps its text, one line goes to the log, and the owner's records get hasError;
// without an owner the result is no link.
sysLink_struct String2sysLinkSDO(int sys, int dev, int out, std::string_view text);
sysLink_struct String2sysLink(std::string_view text);

// The live value of the parameter that a link names. GetLinkValue does not check the link;
// GetValueFromSysLink gives 0 for a link that does not resolve.
double GetLinkValue(const sysLink_struct &link);
double GetValueFromSysLink(const sysLink_struct &link);

// The link text of an index triple; empty when there is no such parameter.
std::string SysDevOut2name(int sys, int dev, int out);

// True when the indices name a system, device or parameter of the model.
bool isSystem(int sys);
bool isDevice(int sys, int dev);
bool isParameter(int sys, int dev, int out);

// The records at valid indices.
inline device_struct &DeviceAt(int sys, int dev) {
    return systems_vector[static_cast<size_t>(sys)].devices[static_cast<size_t>(dev)];
}
inline out_parameter_struct &ParameterAt(int sys, int dev, int out) {
    return DeviceAt(sys, dev).outs[static_cast<size_t>(out)];
}

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

// True for what is written as the name of a parameter, whether or not there is one.
inline bool isLink(const sysLink_struct &link) {
    return link.kind == LinkLive || link.kind == LinkDeleted || link.kind == LinkUnresolved;
}

// Fills the name maps again; to be called after inserting, renaming or reordering. What is deleted gives its
// name to a live one of the same name, which is the one that the files will know.
void RemapAll();

// The link resolved again under the present names of what its indices point at.
sysLink_struct RefreshSysLinkName(const sysLink_struct &link);

// Resolves every link of the model again and marks what holds an unresolved one. Mode 1: the link follows the
// object, under its present name; any other mode: the link follows the name it holds.
void SysLinkRefresh(int mode);

// The same for the links of one parameter, by the names they hold; and the marks alone.
void ResolveLinksOf(out_parameter_struct &parameter);
void MarkLinkErrors();

// The parameter that links know as oldName stands at another place now: these links follow it there.
void SysLinkExchange(const std::string &oldName, int sys, int dev, int out);

// The addresses of a copied parameter and of the place it was moved to, and SysLinkExchange from the one
// to the other.
extern sysLink_struct OutParameterSysLinkCopy;
extern sysLink_struct OutParameterSysLinkPlace;
void SysLinkPlace();

// A copied device about to be pasted under a new name: links to parameters whose names begin with "in_" are
// the device's own inputs and are turned to the new device.
extern device_struct DeviceCopy;
void DeviceTemplatePreparation(const std::string &newDeviceName);

// Everything as when the program starts.
void ResetLinks();
