/* Paths, versions, the log, and commands. */
#ifndef FENNIC_SDK_XPLMUTILITIES_H
#define FENNIC_SDK_XPLMUTILITIES_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*XPLMError_f)(const char *inMessage);
typedef int XPLMCommandPhase;
typedef void *XPLMCommandRef;
typedef int (*XPLMCommandCallback_f)(XPLMCommandRef inCommand, XPLMCommandPhase inPhase, void *inRefcon);

/* Command phases. */
enum {
    xplm_CommandBegin = 0,
    xplm_CommandContinue = 1,
    xplm_CommandEnd = 2,
};

XPLM_API void XPLMGetSystemPath(char *outSystemPath);
XPLM_API void XPLMGetPrefsPath(char *outPrefsPath);
XPLM_API const char *XPLMGetDirectorySeparator(void);
XPLM_API char *XPLMExtractFileAndPath(char *inFullPath);
XPLM_API void XPLMGetVersions(int *outXPlaneVersion, int *outXPLMVersion, int *outHostID);
XPLM_API int XPLMGetLanguage(void);
XPLM_API void *XPLMFindSymbol(const char *inString);
XPLM_API void XPLMSetErrorCallback(XPLMError_f inCallback);
XPLM_API void XPLMDebugString(const char *inString);
XPLM_API void XPLMSpeakString(const char *inString);
XPLM_API XPLMCommandRef XPLMFindCommand(const char *inName);
XPLM_API void XPLMCommandBegin(XPLMCommandRef inCommand);
XPLM_API void XPLMCommandEnd(XPLMCommandRef inCommand);
XPLM_API void XPLMCommandOnce(XPLMCommandRef inCommand);
XPLM_API XPLMCommandRef XPLMCreateCommand(const char *inName, const char *inDescription);
XPLM_API void XPLMRegisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler,
                                         int inBefore, void *inRefcon);
XPLM_API void XPLMUnregisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler,
                                           int inBefore, void *inRefcon);

enum {
    xplm_DataFile_Situation = 1,
    xplm_DataFile_ReplayMovie = 2,
};
typedef int XPLMDataFileType;

XPLM_API int XPLMGetDirectoryContents(const char *inDirectoryPath, int inFirstReturn, char *outFileNames,
                                      int inFileNameBufSize, char **outIndices, int inIndexCount,
                                      int *outTotalFiles, int *outReturnedFiles);
XPLM_API int XPLMLoadDataFile(XPLMDataFileType inFileType, const char *inFilePath);
XPLM_API int XPLMSaveDataFile(XPLMDataFileType inFileType, const char *inFilePath);
XPLM_API const char *XPLMGetVirtualKeyDescription(char inVirtualKey);
XPLM_API void XPLMReloadScenery(void);

#ifdef __cplusplus
}
#endif

#endif
