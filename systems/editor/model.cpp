// The tree's operations. Names of siblings stay unique, so that a link has one meaning. Moving takes the
// record out of its vector and puts it into another; only deleting leaves it where it is.
#include "systems/editor/model.h"

#include <algorithm>
#include <utility>

#include "systems/editor/blocks.h"
#include "systems/editor/undo.h"
#include "systems/editor/usage.h"
#include "systems/kept_lines.h"
#include "systems/links.h"
#include "systems/notation.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

// Systems are files, which some disks tell apart by more than capital letters.
std::string FileKey(const system_class &, const std::string &name) {
    return FoldCase(name);
}
template <typename Record> std::string FileKey(const Record &, const std::string &name) {
    return name;
}

// The record that has the name, or one that cannot be told from it; null when the name is free.
template <typename Record>
const Record *OwnerOf(const std::vector<Record> &records, const std::string &name, int exceptIndex = -1) {
    for (size_t i = 0; i < records.size(); i++) {
        const Record &record = records[i];
        if (record.deleted || static_cast<int>(i) == exceptIndex) continue;
        if (FileKey(record, record.name) == FileKey(record, name)) return &record;
    }
    return nullptr;
}

template <typename Record> std::string FreeName(const std::vector<Record> &records, const std::string &name) {
    if (!OwnerOf(records, name)) return name;
    for (int number = 2;; number++)
        if (std::string numbered = name + int2string(number); !OwnerOf(records, numbered)) return numbered;
}

// The index behind after, where a record can be inserted.
template <typename Record> int Behind(const std::vector<Record> &records, int after) {
    return RecordAt(records, after) ? after + 1 : static_cast<int>(records.size());
}

template <typename Record> void Insert(std::vector<Record> &records, int index, Record record) {
    records.insert(records.begin() + index, std::move(record));
}

template <typename Record> Record TakeOut(std::vector<Record> &records, int index) {
    Record record = std::move(*RecordAt(records, index));
    records.erase(records.begin() + index);
    return record;
}

void Unpublish(out_parameter_struct &parameter) {
    for (dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref})
        if (dataref->mode == BindingNew) dataref->Unregister();
}

void OnUndoRemoveOut(const ParameterAddress &place) {
    OnUndo(
        [=] {
            out_parameter_struct removed = TakeOut(DeviceAt(place)->outs, place.out);
            Unpublish(removed);
        },
        0);
}

void OnUndoRemoveDevice(const ParameterAddress &place) {
    OnUndo(
        [=] {
            device_struct removed = TakeOut(SystemAt(place)->devices, place.dev);
            for (out_parameter_struct &parameter : removed.outs) Unpublish(parameter);
        },
        0);
}

// A copy starts over from its initial value, with datarefs of its own.
void BeginLife(out_parameter_struct &parameter) {
    parameter.value = parameter.initValue;
    parameter.intValue = parameter.type == TypeInteger ? TruncateToInt(parameter.initValue) : 0;
    parameter.activeBlock = -1;
    for (logicblock_struct &block : parameter.logic) block.active = false;
    for (dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref}) {
        const dataref_class copied = *dataref;
        *dataref = {}; // the handle is the original's
        BindDataref(*dataref, copied.fullName, copied.mode, BindingType(parameter), parameter.initValue);
    }
}

bool isRenamed(const sysLink_struct &link) {
    return (link.kind == LinkLive || link.kind == LinkDeleted) && SysDevOut2name(link) != link.name;
}

// The common end of renaming, when the record has its new name: links follow the object.
void FollowObjects() {
    KeepLinkTexts(isRenamed);
    SysLinkRefresh(1);
}

// What was copied links to names, which change behind it. from and to are "SYSTEM.", "SYSTEM.DEVICE." or
// "SYSTEM.DEVICE.PARAMETER.".
void RenameInCopies(const std::string &from, const std::string &to) {
    const auto rename = [&](std::string &name) {
        const std::string whole = name + ".";
        if (!whole.starts_with(from)) return;
        name = to + whole.substr(from.size());
        name.pop_back();
    };
    const auto renameLink = [&](sysLink_struct &link) {
        if (isLink(link)) rename(link.name);
    };
    ForEachLinkOf(OutParameterCopy, renameLink);
    for (out_parameter_struct &parameter : DeviceCopy.outs) ForEachLinkOf(parameter, renameLink);
    ForEachSpokenLink(ExecCopy, renameLink);
    rename(OutParameterSysLinkCopy.name);
    rename(copies.deviceName);
}

void FollowInCopies(const std::string &from, const std::string &to) {
    RenameInCopies(from, to);
    OnUndo([=] { RenameInCopies(to, from); }, from.size() + to.size());
}

template <typename Record>
std::string RenameRefusal(const std::vector<Record> &records, int index, const std::string &name) {
    std::string refusal = NameRefusal(name);
    if (!refusal.empty()) return refusal;
    const Record *owner = OwnerOf(records, name, index);
    if (!owner) return "";
    if (owner->name == name) return "this name is taken";
    return "only capitals tell this from " + owner->name + ", and on most disks both are one file";
}

// Nowhere when it is not there any more.
ParameterAddress FindCopiedDevice() {
    const size_t dot = copies.deviceName.find('.');
    if (dot == std::string::npos) return {};
    const auto system = mapSystemName.find(copies.deviceName.substr(0, dot));
    if (system == mapSystemName.end()) return {};
    ParameterAddress place{.sys = system->second};
    if (!SystemAt(place) || SystemAt(place)->deleted) return {};
    const NameIndex &devices = SystemAt(place)->deviceIndex;
    const auto device = devices.find(copies.deviceName.substr(dot + 1));
    if (device == devices.end()) return {};
    place.dev = device->second;
    return DeviceAt(place) && !DeviceAt(place)->deleted ? place : ParameterAddress();
}

// In a spoken text "&" has a value spelled, and "#" stands between alternatives.
std::string SpokenRefusal(const std::string &name, const ParameterAddress &place) {
    if (name.find_first_of("&#") == std::string::npos) return "";
    const std::string speaker = SpeakerOf(place);
    return speaker.empty() ? "" : "a name with & or # cannot be said, as " + speaker + " does";
}

const char *const NothingToRename = "there is nothing to rename";

} // namespace

int NewSystem(const ParameterAddress &after) {
    EditStep step("NEW SYSTEM");
    const int sys = Behind(systems_vector, after.sys);
    system_class system;
    system.name = FreeName(systems_vector, system.name);
    Insert(systems_vector, sys, std::move(system));
    OnUndo([=] { TakeOut(systems_vector, sys); }, 0);
    return sys;
}

int NewDevice(const ParameterAddress &after) {
    system_class *system = SystemAt(after);
    if (!system) return -1;
    EditStep step("NEW DEVICE");
    const int dev = Behind(system->devices, after.dev);
    device_struct device;
    device.name = FreeName(system->devices, device.name);
    Insert(system->devices, dev, std::move(device));
    OnUndoRemoveDevice({after.sys, dev});
    return dev;
}

int NewOut(const ParameterAddress &after) {
    device_struct *device = DeviceAt(after);
    if (!device) return -1;
    EditStep step("NEW PARAMETER");
    const int out = Behind(device->outs, after.out);
    out_parameter_struct parameter;
    parameter.name = FreeName(device->outs, parameter.name);
    Insert(device->outs, out, std::move(parameter));
    OnUndoRemoveOut({after.sys, after.dev, out});
    return out;
}

void DeleteSystem(const ParameterAddress &place) {
    system_class *system = SystemAt(place);
    if (!system || system->deleted) return;
    EditStep step("DELETE SYSTEM");
    KeepSystemHead(place);
    system->deleted = true;
}

void DeleteDevice(const ParameterAddress &place) {
    device_struct *device = DeviceAt(place);
    if (!device || device->deleted) return;
    EditStep step("DELETE DEVICE");
    KeepDeviceHead(place);
    device->deleted = true;
}

void DeleteOut(const ParameterAddress &place) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter || parameter->deleted) return;
    EditStep step("DELETE PARAMETER");
    KeepNamedParameter(place);
    parameter->deleted = true;
}

std::string NameRefusal(std::string_view name) {
    if (name.empty()) return "a name must not be empty";
    if (name.front() == ' ' || name.back() == ' ') return "a name must not begin or end with a blank";
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < ' ') return "a name must not contain control characters";
        if (std::string_view(".,=;()[]<>{}/\\:").find(c) != std::string_view::npos)
            return std::string("a name must not contain ") + c;
    }
    if (isNumber(name)) return "a name must not read as a number";
    if (Contains(name, CalculationWord)) return std::string("a name must not contain ") + CalculationWord;
    return "";
}

std::string RenameSystem(const ParameterAddress &place, const std::string &name) {
    system_class *system = SystemAt(place);
    if (!system) return NothingToRename;
    std::string refusal = RenameRefusal(systems_vector, place.sys, name);
    if (refusal.empty() && (name == "_systems" || name == "_save" || !isSafeFileName(name)))
        refusal = "no systems file can have this name";
    if (refusal.empty()) refusal = SpokenRefusal(name, {place.sys});
    if (!refusal.empty() || system->name == name) return refusal;
    EditStep step("RENAME SYSTEM");
    KeepSystemHead(place);
    FollowInCopies(system->name + ".", name + ".");
    system->name = name;
    FollowObjects();
    return "";
}

std::string RenameDevice(const ParameterAddress &place, const std::string &name) {
    device_struct *device = DeviceAt(place);
    if (!device) return NothingToRename;
    std::string refusal = RenameRefusal(SystemAt(place)->devices, place.dev, name);
    if (refusal.empty()) refusal = SpokenRefusal(name, {place.sys, place.dev});
    if (!refusal.empty() || device->name == name) return refusal;
    EditStep step("RENAME DEVICE");
    KeepDeviceHead(place);
    const std::string system = SystemAt(place)->name + ".";
    FollowInCopies(system + device->name + ".", system + name + ".");
    device->name = name;
    FollowObjects();
    return "";
}

std::string RenameOut(const ParameterAddress &place, const std::string &name) {
    out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return NothingToRename;
    std::string refusal = RenameRefusal(DeviceAt(place)->outs, place.out, name);
    if (refusal.empty()) refusal = SpokenRefusal(name, place);
    if (!refusal.empty() || parameter->name == name) return refusal;
    EditStep step("RENAME PARAMETER");
    KeepNamedParameter(place);
    const std::string oldName = SysDevOut2name(place);
    parameter->name = name;
    FollowInCopies(oldName + ".", SysDevOut2name(place) + ".");
    FollowObjects();
    return "";
}

void CopyOut(const ParameterAddress &place) {
    const out_parameter_struct *parameter = ParameterAt(place);
    if (!parameter) return;
    OutParameterCopy = *parameter;
    OutParameterSysLinkCopy = String2sysLink(SysDevOut2name(place));
}

void CopyDevice(const ParameterAddress &place) {
    const device_struct *device = DeviceAt(place);
    if (!device) return;
    DeviceCopy = *device;
    copies.deviceName = SystemAt(place)->name + "." + DeviceCopy.name;
    std::erase_if(DeviceCopy.outs, [](const out_parameter_struct &parameter) { return parameter.deleted; });
}

bool isOutCopied() {
    return !OutParameterSysLinkCopy.name.empty();
}

bool isDeviceCopied() {
    return !copies.deviceName.empty();
}

std::string CopiedDeviceName() {
    return copies.deviceName;
}

int PasteOut(const ParameterAddress &after) {
    device_struct *device = DeviceAt(after);
    if (!device || !isOutCopied()) return -1;
    EditStep step("PASTE PARAMETER");
    const int out = Behind(device->outs, after.out);
    out_parameter_struct pasted = OutParameterCopy;
    pasted.name = FreeName(device->outs, pasted.name);
    pasted.deleted = false;
    pasted.keptBehind.clear(); // they are the other device's
    BeginLife(pasted);
    Insert(device->outs, out, std::move(pasted));
    OnUndoRemoveOut({after.sys, after.dev, out});
    return out;
}

// The copy's links to its own inputs are turned to its new name; when it comes into another system, to that
// system too.
int PasteDevice(const ParameterAddress &after) {
    system_class *system = SystemAt(after);
    if (!system || !isDeviceCopied()) return -1;
    EditStep step("PASTE DEVICE");
    const int dev = Behind(system->devices, after.dev);
    const device_struct original = DeviceCopy;
    const std::string name = FreeName(system->devices, original.name);
    DeviceTemplatePreparation(name);
    device_struct pasted = std::move(DeviceCopy);
    DeviceCopy = original;
    const std::string copiedSystem = copies.deviceName.substr(0, copies.deviceName.find('.'));
    for (out_parameter_struct &parameter : pasted.outs) {
        ForEachLinkOf(parameter, [&](sysLink_struct &link) {
            for (const out_parameter_struct &input : pasted.outs)
                if (input.name.starts_with("in_")
                    && link.name == copiedSystem + "." + name + "." + input.name)
                    link.name = system->name + "." + name + "." + input.name;
        });
        BeginLife(parameter);
    }
    pasted.name = name;
    pasted.deleted = false;
    Insert(system->devices, dev, std::move(pasted));
    OnUndoRemoveDevice({after.sys, dev});
    return dev;
}

int MoveOut(const ParameterAddress &after) {
    const sysLink_struct from = String2sysLink(OutParameterSysLinkCopy.name);
    device_struct *device = DeviceAt(after);
    if (!device || from.kind != LinkLive) return -1;
    device_struct &left = *DeviceAt(from);
    if (device == &left && after.out == from.out) return from.out;
    EditStep step("MOVE PARAMETER");
    KeepLinkTexts([&](const sysLink_struct &link) { return isLink(link) && link.name == from.name; });
    out_parameter_struct moved = TakeOut(left.outs, from.out);
    const KeptLines stays = std::exchange(moved.keptBehind, {});
    KeptLines &before = KeptBefore(left, from.out);
    before.insert(before.end(), stays.begin(), stays.end());
    const bool isBehindItself = device == &left && after.out > from.out;
    ParameterAddress place = after;
    place.out = Behind(device->outs, isBehindItself ? after.out - 1 : after.out);
    const std::string oldName = moved.name;
    moved.name = FreeName(device->outs, moved.name);
    Insert(device->outs, place.out, std::move(moved));
    OnUndo(
        [=] {
            out_parameter_struct back = TakeOut(DeviceAt(place)->outs, place.out);
            back.name = oldName;
            device_struct &home = *DeviceAt(from);
            KeptLines &kept = KeptBefore(home, from.out);
            kept.resize(kept.size() - stays.size());
            back.keptBehind = stays;
            Insert(home.outs, from.out, std::move(back));
        },
        sizeof(std::string) + stays.size() * sizeof(kept_line_struct));
    OutParameterSysLinkPlace = {place, "", LinkNone};
    SysLinkPlace();
    FollowInCopies(from.name + ".", SysDevOut2name(place) + ".");
    CopyOut(place);
    return place.out;
}

int MoveDevice(const ParameterAddress &after) {
    system_class *system = SystemAt(after);
    const ParameterAddress from = FindCopiedDevice();
    if (!system || !DeviceAt(from)) return -1;
    const bool isSameSystem = after.sys == from.sys;
    if (isSameSystem && after.dev == from.dev) return from.dev;
    EditStep step("MOVE DEVICE");
    system_class &left = *SystemAt(from);
    const std::string oldName = DeviceAt(from)->name;
    const std::string newName = isSameSystem ? oldName : FreeName(system->devices, oldName);
    const std::string oldPrefix = left.name + "." + oldName + ".";
    const std::string newPrefix = system->name + "." + newName + ".";
    const auto isMoved = [=](const sysLink_struct &link) {
        return (link.kind == LinkLive || link.kind == LinkDeleted) && link.sys == from.sys
               && link.dev == from.dev;
    };
    KeepLinkTexts(isMoved);
    ForEachLink([&](sysLink_struct &link) {
        if (isMoved(link)) link.name = newPrefix + ParameterAt(link)->name;
    });
    FollowInCopies(oldPrefix, newPrefix);
    device_struct moved = TakeOut(left.devices, from.dev);
    moved.name = newName;
    const bool isBehindItself = isSameSystem && after.dev > from.dev;
    const ParameterAddress place{after.sys,
                                 Behind(system->devices, isBehindItself ? after.dev - 1 : after.dev)};
    Insert(system->devices, place.dev, std::move(moved));
    OnUndo(
        [=] {
            device_struct back = TakeOut(SystemAt(place)->devices, place.dev);
            back.name = oldName;
            Insert(SystemAt(from)->devices, from.dev, std::move(back));
        },
        sizeof(std::string));
    CopyDevice(place);
    return place.dev;
}

int CloneDevice(const ParameterAddress &place) {
    if (!DeviceAt(place)) return -1;
    EditStep step("CLONE DEVICE");
    CopyDevice(place);
    return PasteDevice(place);
}
