/* A plug-in that calls what no simulator offers. */
#include "XPLMDefs.h"

extern int XPLMCallOfAnotherAge(void);

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc) {
    outName[0] = outSig[0] = outDesc[0] = '\0';
    return XPLMCallOfAnotherAge();
}
PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) {
    return 1;
}
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(int inFrom, int inMessage, void *inParam) {
    (void)inFrom;
    (void)inMessage;
    (void)inParam;
}
