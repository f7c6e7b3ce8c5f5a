/* Objects that the simulator draws in each frame by itself. */
#ifndef FENNIC_SDK_XPLMINSTANCE_H
#define FENNIC_SDK_XPLMINSTANCE_H

#include "XPLMDefs.h"
#include "XPLMScenery.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void *XPLMInstanceRef;

/* datarefs: names, a null behind the last. data of XPLMInstanceSetPosition: a value for each. */
XPLM_API XPLMInstanceRef XPLMCreateInstance(XPLMObjectRef obj, const char **datarefs);
XPLM_API void XPLMDestroyInstance(XPLMInstanceRef instance);
XPLM_API void XPLMInstanceSetPosition(XPLMInstanceRef instance, const XPLMDrawInfo_t *new_position,
                                      const float *data);

#ifdef __cplusplus
}
#endif

#endif
