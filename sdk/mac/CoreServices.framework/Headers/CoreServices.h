/* Of macOS's CoreServices, what sound devices take: names alone. */
#ifndef FENNIC_SDK_CORESERVICES_H
#define FENNIC_SDK_CORESERVICES_H

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

enum { gestaltSystemVersionMajor = 'sys1', gestaltSystemVersionMinor = 'sys2' };

#endif
