// Editing the tree of systems, devices and parameters: new, delete, rename, copy, paste, move, clone. Each is
// one step that can be undone, and leaves maps that equal the vectors and links that resolve or are marked.
// Addresses that name nothing change nothing.
#pragma once

#include <string>
#include <string_view>

#include "systems/model.h"

// New records stand behind the one at an address, or where that names none at the end of what it stands in.
// They are named "NewSystem", "NewDevice", "NewOut", with a number when that is taken. The index of the new
// one; -1 when there is no place for it.
int NewSystem(const ParameterAddress &after);
int NewDevice(const ParameterAddress &after);
int NewOut(const ParameterAddress &after);

// Set the flag. What is flagged stays readable until the next load.
void DeleteSystem(const ParameterAddress &place);
void DeleteDevice(const ParameterAddress &place);
void DeleteOut(const ParameterAddress &place);

// Links follow the renamed item. The reason when the name is refused, else empty.
std::string RenameSystem(const ParameterAddress &place, const std::string &name);
std::string RenameDevice(const ParameterAddress &place, const std::string &name);
std::string RenameOut(const ParameterAddress &place, const std::string &name);

// Why a text can be no name of a system, device or parameter; empty when it can.
std::string NameRefusal(std::string_view name);

// Into the buffers of systems/links.h.
void CopyOut(const ParameterAddress &place);
void CopyDevice(const ParameterAddress &place);
bool isOutCopied();
bool isDeviceCopied();
std::string CopiedDeviceName(); // "SYSTEM.DEVICE"

// Paste a copy where a new record would stand; under its name, with a number when that is taken. A pasted
// device reads its own inputs (DeviceTemplatePreparation). The new index, or -1.
int PasteOut(const ParameterAddress &after);
int PasteDevice(const ParameterAddress &after);

// Put what was copied there itself, and links follow it; the buffer then names its new place.
int MoveOut(const ParameterAddress &after);
int MoveDevice(const ParameterAddress &after);

// Copies a device and pastes it behind itself.
int CloneDevice(const ParameterAddress &place);
