/* A plug-in in C that does what a test asks of it through the dataref "test/mode", and publishes what it saw:
   "guest/id_at_load", "guest/starts", "guest/loops" and the last message it got. */
#include <stddef.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

enum {
    REFUSE_START = 1,
    REFUSE_ENABLE = 2,
    LEAVE_BEHIND = 4,
};

static int idAtLoad = -7;
static XPLMDataRef modeAtLoad;

/* Runs inside dlopen, like the constructors of C++ globals. */
__attribute__((constructor)) static void AtLoad(void) {
    idAtLoad = XPLMGetMyID();
    modeAtLoad = XPLMFindDataRef("test/mode");
}

static int starts, message, loops;
static XPLMDataRef published[4];

static int ReadInt(void *refcon) {
    return *(int *)refcon;
}

static XPLMDataRef Publish(const char *name, int *value) {
    return XPLMRegisterDataAccessor(name, xplmType_Int, 0, ReadInt, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                                    NULL, NULL, NULL, NULL, value, NULL);
}

static float Loop(float sinceLast, float sinceLoop, int counter, void *refcon) {
    (void)sinceLast;
    (void)sinceLoop;
    (void)counter;
    (void)refcon;
    loops++;
    return -1.0f;
}

static int Draw(XPLMDrawingPhase phase, int before, void *refcon) {
    (void)phase;
    (void)before;
    (void)refcon;
    return 1;
}

static int Command(XPLMCommandRef command, XPLMCommandPhase phase, void *refcon) {
    (void)command;
    (void)phase;
    (void)refcon;
    return 1;
}

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc) {
    const int mode = XPLMGetDatai(modeAtLoad);
    strcpy(outName, "Guest");
    strcpy(outSig, "test.guest");
    strcpy(outDesc, "Does what a test asks of it");
    starts++;
    published[0] = Publish("guest/id_at_load", &idAtLoad);
    published[1] = Publish("guest/starts", &starts);
    published[2] = Publish("guest/message", &message);
    published[3] = Publish("guest/loops", &loops);
    XPLMRegisterFlightLoopCallback(Loop, -1.0f, NULL);
    XPLMRegisterDrawCallback(Draw, xplm_Phase_Window, 0, NULL);
    XPLMRegisterCommandHandler(XPLMCreateCommand("guest/command", "Does nothing"), Command, 1, NULL);
    XPLMCreateMenu("Guest", NULL, 0, NULL, NULL);
    return (mode & REFUSE_START) ? 0 : 1;
}

PLUGIN_API void XPluginStop(void) {
    int i;
    XPLMDebugString("guest stops");
    if (XPLMGetDatai(modeAtLoad) & LEAVE_BEHIND) return;
    for (i = 0; i < 4; i++) XPLMUnregisterDataAccessor(published[i]);
    XPLMUnregisterFlightLoopCallback(Loop, NULL);
    XPLMUnregisterDrawCallback(Draw, xplm_Phase_Window, 0, NULL);
}

PLUGIN_API int XPluginEnable(void) {
    return (XPLMGetDatai(modeAtLoad) & REFUSE_ENABLE) ? 0 : 1;
}

PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void *inParam) {
    (void)inFrom;
    (void)inParam;
    message = inMessage;
}
