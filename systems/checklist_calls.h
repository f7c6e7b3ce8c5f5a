// Which sequences are checklists: those of a system CHECKLIST that are called, and those that are called by a
// phrase with the word "checklist".
#pragma once

#include <string>

#include "systems/model.h"

bool isChecklist(const device_struct &sequence);

// The phrase that calls a checklist.
const std::string &ChecklistName(const device_struct &checklist);
