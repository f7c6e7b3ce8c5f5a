/* Plug-ins: who is loaded, messages between them, features of the interface. */
#ifndef FENNIC_SDK_XPLMPLUGIN_H
#define FENNIC_SDK_XPLMPLUGIN_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*XPLMFeatureEnumerator_f)(const char *inFeature, void *inRef);

/* Messages from the simulator, whose sender is XPLM_PLUGIN_XPLANE. */
#define XPLM_MSG_PLANE_CRASHED 101
#define XPLM_MSG_PLANE_LOADED 102
#define XPLM_MSG_AIRPORT_LOADED 103
#define XPLM_MSG_SCENERY_LOADED 104
#define XPLM_MSG_AIRPLANE_COUNT_CHANGED 105
#define XPLM_MSG_PLANE_UNLOADED 106
#define XPLM_MSG_WILL_WRITE_PREFS 107
#define XPLM_MSG_LIVERY_LOADED 108
#define XPLM_MSG_ENTERED_VR 109
#define XPLM_MSG_EXITING_VR 110

XPLM_API XPLMPluginID XPLMGetMyID(void);
XPLM_API int XPLMCountPlugins(void);
XPLM_API XPLMPluginID XPLMGetNthPlugin(int inIndex);
XPLM_API XPLMPluginID XPLMFindPluginByPath(const char *inPath);
XPLM_API XPLMPluginID XPLMFindPluginBySignature(const char *inSignature);
XPLM_API void XPLMGetPluginInfo(XPLMPluginID inPlugin, char *outName, char *outFilePath, char *outSignature,
                                char *outDescription);
XPLM_API int XPLMIsPluginEnabled(XPLMPluginID inPluginID);
XPLM_API int XPLMEnablePlugin(XPLMPluginID inPluginID);
XPLM_API void XPLMDisablePlugin(XPLMPluginID inPluginID);
XPLM_API void XPLMReloadPlugins(void);
XPLM_API void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void *inParam);
XPLM_API int XPLMHasFeature(const char *inFeature);
XPLM_API int XPLMIsFeatureEnabled(const char *inFeature);
XPLM_API void XPLMEnableFeature(const char *inFeature, int inEnable);
XPLM_API void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void *inRef);

#ifdef __cplusplus
}
#endif

#endif
