// Editing the tree of systems, devices and parameters: new, delete, rename, copy, paste, move, clone. Each is
// one step that can be undone, and leaves maps that equal the vectors and links that resolve or are marked.
// Indices that name nothing change nothing.
#pragma once

#include <string>
#include <string_view>

#include "systems/model.h"

// New records stand behind the one at index after, -1 at the end, and are named "NewSystem", "NewDevice",
// "NewOut", with a number when that is taken. The index of the new one; -1 when there is no place for it.
int NewSystem(int after);
int NewDevice(int sys, int after);
int NewOut(int sys, int dev, int after);

// Set the flag. What is flagged stays readable until the next load.
void DeleteSystem(int sys);
void DeleteDevice(int sys, int dev);
void DeleteOut(int sys, int dev, int out);

// Links follow the renamed item. The reason when the name is refused, else empty.
std::string RenameSystem(int sys, const std::string &name);
std::string RenameDevice(int sys, int dev, const std::string &name);
std::string RenameOut(int sys, int dev, int out, const std::string &name);

// Why a text can be no name of a system, device or parameter; empty when it can.
std::string NameRefusal(std::string_view name);

// The buffers: a copy, and where it was copied from (OutParameterSysLinkCopy for the parameter).
extern out_parameter_struct OutParameterCopy;
void CopyOut(int sys, int dev, int out);
void CopyDevice(int sys, int dev);
bool isOutCopied();
bool isDeviceCopied();
std::string CopiedDeviceName(); // "SYSTEM.DEVICE"

// Paste a copy behind the record at index after, -1 at the end; under its name, with a number when that is
// taken. A pasted device reads its own inputs (DeviceTemplatePreparation). The new index, or -1.
int PasteOut(int sys, int dev, int after);
int PasteDevice(int sys, int after);

// Put what was copied there itself, and links follow it; the buffer then names its new place.
int MoveOut(int sys, int dev, int after);
int MoveDevice(int sys, int after);

// Copies a device and pastes it behind itself.
int CloneDevice(int sys, int dev);

// Nothing is copied any more.
void ForgetCopies();
