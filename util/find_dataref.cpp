// A handle that the simulator finds may be an orphan's, so it is asked whether it is good.
#include "util/find_dataref.h"

XPLMDataRef FindDataref(const char *name) {
    const XPLMDataRef handle = XPLMFindDataRef(name);
    return XPLMIsDataRefGood(handle) ? handle : nullptr;
}
