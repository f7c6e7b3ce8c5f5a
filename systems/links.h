// Links between parameters: from text to indices, reading through them, and keeping them valid when the
// editor changes the tree.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "systems/model.h"
#include "systems/spoken_links.h"

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

// Reads an action's spokenLinks from its text anew; none when the text is not spoken. The owner as for
// String2sysLinkSDO: with one, what does not resolve is logged and marked there.
void ReadSpokenLinks(structExecute &action, const ParameterAddress &owner = {});

// Writes the names of an action's spokenLinks into its text, where they differ.
void WriteSpokenLinks(structExecute &action);

// Calls visit for the links that an action says. When it changes their names the text changes, too.
template <typename Action, typename Visit> void ForEachSpokenLink(Action &action, Visit visit) {
    for (auto &link : action.spokenLinks) visit(link);
    if constexpr (!std::is_const_v<Action>) WriteSpokenLinks(action);
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
