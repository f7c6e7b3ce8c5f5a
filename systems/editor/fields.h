// The fields that an author types into: their text as it is edited, and storing what was typed, with checks.
#pragma once

#include <string>

#include "systems/editor/blocks.h"

enum EditorField {
    FieldNone,
    FieldSystemName, // of the system in place
    FieldDeviceName, // of the device
    FieldName,       // from here on of the parameter
    FieldUnit,
    FieldFreeText,
    FieldInit,
    FieldMin,
    FieldMax,
    FieldInDataref,
    FieldOutDataref,
    FieldLeft,        // of comparison item; of one that compares speech, the phrase
    FieldRight,       // a number, a link, or a list of integers
    FieldCalculation, // calculation item as a line
    FieldOperand,     // of element of calculation item
    FieldActionText,  // of action item
    FieldActionValue,
    FieldPointX, // of point item
    FieldPointY,
};

struct FieldPlace {
    int field = FieldNone;
    BlockPlace place;
    int item = -1;
    int element = -1;
};

// The text that editing begins with; empty for a field that is not there.
std::string FieldText(const FieldPlace &field);

// Stores what was typed as one step. The reason when it is refused, and nothing has changed then; else empty.
// Links, datarefs, commands and positions may name what does not exist: they are marked, not refused.
std::string SetField(const FieldPlace &field, const std::string &typed);

// True when a dataref is bound by name and there is none of that name, or it could not be published.
bool isDatarefMissing(const dataref_class &dataref);
