/* A library that is no plug-in: four of the five entry points are missing. */
#include "XPLMDefs.h"

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc) {
    outName[0] = outSig[0] = outDesc[0] = '\0';
    return 1;
}
