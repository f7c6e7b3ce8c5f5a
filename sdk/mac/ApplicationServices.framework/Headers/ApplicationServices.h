/* Of macOS's Launch Services, which are a part of this framework, what the plug-in calls. */
#ifndef FENNIC_SDK_APPLICATIONSERVICES_H
#define FENNIC_SDK_APPLICATIONSERVICES_H

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

OSStatus LSOpenCFURLRef(CFURLRef inURL, CFURLRef *outLaunchedURL);

#ifdef __cplusplus
}
#endif

#endif
