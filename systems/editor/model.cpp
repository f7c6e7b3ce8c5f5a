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
#include "util/files.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/text.h"

out_parameter_struct OutParameterCopy;

namespace {

std::string copiedDeviceName; // "SYSTEM.DEVICE"

template <typename Record> Record &At(std::vector<Record> &records, int index) {
    return records[static_cast<size_t>(index)];
}

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
    const int count = static_cast<int>(records.size());
    return after < 0 || after >= count ? count : after + 1;
}

template <typename Record> void Insert(std::vector<Record> &records, int index, Record record) {
    records.insert(records.begin() + index, std::move(record));
}

template <typename Record> Record TakeOut(std::vector<Record> &records, int index) {
    Record record = std::move(At(records, index));
    records.erase(records.begin() + index);
    return record;
}

void Unpublish(out_parameter_struct &parameter) {
    for (dataref_class *dataref : {&parameter.inDataref, &parameter.outDataref})
        if (dataref->mode == BindingNew) dataref->Unregister();
}

void OnUndoRemoveOut(int sys, int dev, int out) {
    OnUndo(
        [=] {
            out_parameter_struct removed = TakeOut(DeviceAt(sys, dev).outs, out);
            Unpublish(removed);
        },
        0);
}

void OnUndoRemoveDevice(int sys, int dev) {
    OnUndo(
        [=] {
            device_struct removed = TakeOut(At(systems_vector, sys).devices, dev);
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
    return (link.kind == LinkLive || link.kind == LinkDeleted)
           && SysDevOut2name(link.sys, link.dev, link.out) != link.name;
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
    rename(copiedDeviceName);
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

bool FindCopiedDevice(int &sys, int &dev) {
    const size_t dot = copiedDeviceName.find('.');
    if (dot == std::string::npos) return false;
    const auto system = mapSystemName.find(copiedDeviceName.substr(0, dot));
    if (system == mapSystemName.end() || !isSystem(system->second)) return false;
    sys = system->second;
    const NameIndex &devices = At(systems_vector, sys).deviceIndex;
    const auto device = devices.find(copiedDeviceName.substr(dot + 1));
    if (device == devices.end() || !isDevice(sys, device->second)) return false;
    dev = device->second;
    return !At(systems_vector, sys).deleted && !DeviceAt(sys, dev).deleted;
}

// In a spoken text "&" has a value spelled, and "#" stands between alternatives.
std::string SpokenRefusal(const std::string &name, int sys, int dev, int out) {
    if (name.find_first_of("&#") == std::string::npos) return "";
    const std::string speaker = SpeakerOf(sys, dev, out);
    return speaker.empty() ? "" : "a name with & or # cannot be said, as " + speaker + " does";
}

const char *const NothingThere = "there is nothing to rename";

} // namespace

int NewSystem(int after) {
    EditStep step("NEW SYSTEM");
    const int sys = Behind(systems_vector, after);
    system_class system;
    system.name = FreeName(systems_vector, system.name);
    Insert(systems_vector, sys, std::move(system));
    OnUndo([=] { TakeOut(systems_vector, sys); }, 0);
    return sys;
}

int NewDevice(int sys, int after) {
    if (!isSystem(sys)) return -1;
    EditStep step("NEW DEVICE");
    std::vector<device_struct> &devices = At(systems_vector, sys).devices;
    const int dev = Behind(devices, after);
    device_struct device;
    device.name = FreeName(devices, device.name);
    Insert(devices, dev, std::move(device));
    OnUndoRemoveDevice(sys, dev);
    return dev;
}

int NewOut(int sys, int dev, int after) {
    if (!isDevice(sys, dev)) return -1;
    EditStep step("NEW PARAMETER");
    std::vector<out_parameter_struct> &outs = DeviceAt(sys, dev).outs;
    const int out = Behind(outs, after);
    out_parameter_struct parameter;
    parameter.name = FreeName(outs, parameter.name);
    Insert(outs, out, std::move(parameter));
    OnUndoRemoveOut(sys, dev, out);
    return out;
}

void DeleteSystem(int sys) {
    if (!isSystem(sys) || At(systems_vector, sys).deleted) return;
    EditStep step("DELETE SYSTEM");
    KeepSystemHead(sys);
    At(systems_vector, sys).deleted = true;
}

void DeleteDevice(int sys, int dev) {
    if (!isDevice(sys, dev) || DeviceAt(sys, dev).deleted) return;
    EditStep step("DELETE DEVICE");
    KeepDeviceHead(sys, dev);
    DeviceAt(sys, dev).deleted = true;
}

void DeleteOut(int sys, int dev, int out) {
    if (!isParameter(sys, dev, out) || ParameterAt(sys, dev, out).deleted) return;
    EditStep step("DELETE PARAMETER");
    KeepNamedParameter(sys, dev, out);
    ParameterAt(sys, dev, out).deleted = true;
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
    if (Contains(name, "CBLOCK")) return "a name must not contain CBLOCK";
    return "";
}

std::string RenameSystem(int sys, const std::string &name) {
    if (!isSystem(sys)) return NothingThere;
    std::string refusal = RenameRefusal(systems_vector, sys, name);
    if (refusal.empty() && (name == "_systems" || name == "_save" || !isSafeFileName(name)))
        refusal = "no systems file can have this name";
    if (refusal.empty()) refusal = SpokenRefusal(name, sys, -1, -1);
    if (!refusal.empty() || At(systems_vector, sys).name == name) return refusal;
    EditStep step("RENAME SYSTEM");
    KeepSystemHead(sys);
    FollowInCopies(At(systems_vector, sys).name + ".", name + ".");
    At(systems_vector, sys).name = name;
    FollowObjects();
    return "";
}

std::string RenameDevice(int sys, int dev, const std::string &name) {
    if (!isDevice(sys, dev)) return NothingThere;
    std::string refusal = RenameRefusal(At(systems_vector, sys).devices, dev, name);
    if (refusal.empty()) refusal = SpokenRefusal(name, sys, dev, -1);
    if (!refusal.empty() || DeviceAt(sys, dev).name == name) return refusal;
    EditStep step("RENAME DEVICE");
    KeepDeviceHead(sys, dev);
    const std::string system = At(systems_vector, sys).name + ".";
    FollowInCopies(system + DeviceAt(sys, dev).name + ".", system + name + ".");
    DeviceAt(sys, dev).name = name;
    FollowObjects();
    return "";
}

std::string RenameOut(int sys, int dev, int out, const std::string &name) {
    if (!isParameter(sys, dev, out)) return NothingThere;
    std::string refusal = RenameRefusal(DeviceAt(sys, dev).outs, out, name);
    if (refusal.empty()) refusal = SpokenRefusal(name, sys, dev, out);
    if (!refusal.empty() || ParameterAt(sys, dev, out).name == name) return refusal;
    EditStep step("RENAME PARAMETER");
    KeepNamedParameter(sys, dev, out);
    const std::string oldName = SysDevOut2name(sys, dev, out);
    ParameterAt(sys, dev, out).name = name;
    FollowInCopies(oldName + ".", SysDevOut2name(sys, dev, out) + ".");
    FollowObjects();
    return "";
}

void CopyOut(int sys, int dev, int out) {
    if (!isParameter(sys, dev, out)) return;
    OutParameterCopy = ParameterAt(sys, dev, out);
    OutParameterSysLinkCopy = String2sysLink(SysDevOut2name(sys, dev, out));
}

void CopyDevice(int sys, int dev) {
    if (!isDevice(sys, dev)) return;
    DeviceCopy = DeviceAt(sys, dev);
    copiedDeviceName = At(systems_vector, sys).name + "." + DeviceCopy.name;
    std::erase_if(DeviceCopy.outs, [](const out_parameter_struct &parameter) { return parameter.deleted; });
}

bool isOutCopied() {
    return !OutParameterSysLinkCopy.name.empty();
}

bool isDeviceCopied() {
    return !copiedDeviceName.empty();
}

std::string CopiedDeviceName() {
    return copiedDeviceName;
}

int PasteOut(int sys, int dev, int after) {
    if (!isDevice(sys, dev) || !isOutCopied()) return -1;
    EditStep step("PASTE PARAMETER");
    std::vector<out_parameter_struct> &outs = DeviceAt(sys, dev).outs;
    const int out = Behind(outs, after);
    out_parameter_struct pasted = OutParameterCopy;
    pasted.name = FreeName(outs, pasted.name);
    pasted.deleted = false;
    pasted.keptBehind.clear(); // they are the other device's
    BeginLife(pasted);
    Insert(outs, out, std::move(pasted));
    OnUndoRemoveOut(sys, dev, out);
    return out;
}

// The copy's links to its own inputs are turned to its new name; when it comes into another system, to that
// system too.
int PasteDevice(int sys, int after) {
    if (!isSystem(sys) || !isDeviceCopied()) return -1;
    EditStep step("PASTE DEVICE");
    std::vector<device_struct> &devices = At(systems_vector, sys).devices;
    const int dev = Behind(devices, after);
    const device_struct original = DeviceCopy;
    const std::string name = FreeName(devices, original.name);
    DeviceTemplatePreparation(name);
    device_struct pasted = std::move(DeviceCopy);
    DeviceCopy = original;
    const std::string system = copiedDeviceName.substr(0, copiedDeviceName.find('.'));
    for (out_parameter_struct &parameter : pasted.outs) {
        ForEachLinkOf(parameter, [&](sysLink_struct &link) {
            for (const out_parameter_struct &input : pasted.outs)
                if (input.name.starts_with("in_") && link.name == system + "." + name + "." + input.name)
                    link.name = At(systems_vector, sys).name + "." + name + "." + input.name;
        });
        BeginLife(parameter);
    }
    pasted.name = name;
    pasted.deleted = false;
    Insert(devices, dev, std::move(pasted));
    OnUndoRemoveDevice(sys, dev);
    return dev;
}

int MoveOut(int sys, int dev, int after) {
    const sysLink_struct from = String2sysLink(OutParameterSysLinkCopy.name);
    if (!isDevice(sys, dev) || from.kind != LinkLive) return -1;
    const bool isSameDevice = sys == from.sys && dev == from.dev;
    if (isSameDevice && (after == from.out)) return from.out;
    EditStep step("MOVE PARAMETER");
    KeepLinkTexts([&](const sysLink_struct &link) { return isLink(link) && link.name == from.name; });
    out_parameter_struct moved = TakeOut(DeviceAt(from.sys, from.dev).outs, from.out);
    const KeptLines left = std::exchange(moved.keptBehind, {}); // which stay where they are
    KeptLines &place = KeptBefore(DeviceAt(from.sys, from.dev), from.out);
    place.insert(place.end(), left.begin(), left.end());
    std::vector<out_parameter_struct> &outs = DeviceAt(sys, dev).outs;
    if (isSameDevice && after > from.out) after--;
    const int out = Behind(outs, after);
    const std::string oldName = moved.name;
    moved.name = FreeName(outs, moved.name);
    Insert(outs, out, std::move(moved));
    OnUndo(
        [=] {
            out_parameter_struct back = TakeOut(DeviceAt(sys, dev).outs, out);
            back.name = oldName;
            device_struct &device = DeviceAt(from.sys, from.dev);
            KeptLines &before = KeptBefore(device, from.out);
            before.resize(before.size() - left.size());
            back.keptBehind = left;
            Insert(device.outs, from.out, std::move(back));
        },
        sizeof(std::string) + left.size() * sizeof(kept_line_struct));
    OutParameterSysLinkPlace.sys = sys;
    OutParameterSysLinkPlace.dev = dev;
    OutParameterSysLinkPlace.out = out;
    SysLinkPlace();
    FollowInCopies(from.name + ".", SysDevOut2name(sys, dev, out) + ".");
    CopyOut(sys, dev, out);
    return out;
}

int MoveDevice(int sys, int after) {
    int fromSys = -1, fromDev = -1;
    if (!isSystem(sys) || !FindCopiedDevice(fromSys, fromDev)) return -1;
    const bool isSameSystem = sys == fromSys;
    if (isSameSystem && after == fromDev) return fromDev;
    EditStep step("MOVE DEVICE");
    const std::string oldName = DeviceAt(fromSys, fromDev).name;
    const std::string newName = isSameSystem ? oldName : FreeName(At(systems_vector, sys).devices, oldName);
    const std::string from = At(systems_vector, fromSys).name + "." + oldName + ".";
    const std::string to = At(systems_vector, sys).name + "." + newName + ".";
    const auto isMoved = [=](const sysLink_struct &link) {
        return (link.kind == LinkLive || link.kind == LinkDeleted) && link.sys == fromSys
               && link.dev == fromDev;
    };
    KeepLinkTexts(isMoved);
    ForEachLink([&](sysLink_struct &link) {
        if (!isMoved(link)) return;
        link.name = to + ParameterAt(fromSys, fromDev, link.out).name;
    });
    FollowInCopies(from, to);
    device_struct moved = TakeOut(At(systems_vector, fromSys).devices, fromDev);
    moved.name = newName;
    std::vector<device_struct> &devices = At(systems_vector, sys).devices;
    if (isSameSystem && after > fromDev) after--;
    const int dev = Behind(devices, after);
    Insert(devices, dev, std::move(moved));
    OnUndo(
        [=] {
            device_struct back = TakeOut(At(systems_vector, sys).devices, dev);
            back.name = oldName;
            Insert(At(systems_vector, fromSys).devices, fromDev, std::move(back));
        },
        sizeof(std::string));
    CopyDevice(sys, dev);
    return dev;
}

int CloneDevice(int sys, int dev) {
    if (!isDevice(sys, dev)) return -1;
    EditStep step("CLONE DEVICE");
    CopyDevice(sys, dev);
    return PasteDevice(sys, dev);
}

void ForgetCopies() {
    MakeFresh(OutParameterCopy, DeviceCopy, copiedDeviceName);
}
