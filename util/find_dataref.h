// Looking datarefs up by name; the one place that does.
#pragma once

#include "XPLMDataAccess.h"

// The handle of an existing dataref; null for a name that nobody publishes now. The simulator may still know
// the name of one whose owner has gone, as after a reload of the aircraft: such a handle is none.
XPLMDataRef FindDataref(const char *name);
