// Links between parameters: from text to indices, reading through them, and keeping them valid when the
// editor changes the tree.
#pragma once

#include <string>
#include <string_view>

#include "systems/model.h"

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

// True when the indices name a parameter of the model.
bool isParameter(int sys, int dev, int out);

// Fills the name maps again; to be called after inserting, renaming or reordering.
void RemapAll();

// The link resolved again under the present names of what its indices point at.
sysLink_struct RefreshSysLinkName(const sysLink_struct &link);

// Resolves every link of the model again. Mode 1: the link follows the object, under its present name; any
// other mode: the link follows the name it holds.
void SysLinkRefresh(int mode);

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

// Calls visit for every link that a parameter holds: operands of comparisons and calculations.
template <typename Parameter, typename Visit> void ForEachLinkOf(Parameter &parameter, Visit visit) {
    for (auto &block : parameter.logic) {
        for (auto &comparison : block.compares) {
            visit(comparison.a);
            visit(comparison.b);
        }
        for (auto &calculation : block.calcs)
            for (auto &element : calculation.stack) visit(element.link);
    }
}
