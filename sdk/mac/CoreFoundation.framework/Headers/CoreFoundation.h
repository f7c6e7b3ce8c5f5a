/* Of macOS's CoreFoundation, what the plug-in and its voice call. On a Mac the system's own header is taken.
 */
#ifndef FENNIC_SDK_COREFOUNDATION_H
#define FENNIC_SDK_COREFOUNDATION_H

/* The system's header brings those of C. */
#include <assert.h>
#include <ctype.h>
#include <errno.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef signed int OSStatus;
typedef unsigned char Boolean;
typedef signed long CFIndex;
typedef unsigned int CFStringEncoding;
typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct __CFDictionary *CFDictionaryRef;
typedef struct __CFRunLoop *CFRunLoopRef;
typedef const struct __CFString *CFStringRef;
typedef const struct __CFURL *CFURLRef;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

extern const CFAllocatorRef kCFAllocatorDefault;
enum { kCFStringEncodingUTF8 = 0x08000100 };
typedef enum { kCFURLPOSIXPathStyle = 0, kCFURLHFSPathStyle, kCFURLWindowsPathStyle } CFURLPathStyle;

/* A constant string; the compiler lays it out. */
#define CFSTR(cStr) ((CFStringRef)__builtin___CFStringMakeConstantString("" cStr ""))
#define CFSwapInt32HostToBig __builtin_bswap32 /* both families have the low byte first */

/* What a function with "Create" or "Copy" in its name returns belongs to the caller, who releases it. NULL
   when it cannot be made. */
void CFRelease(CFTypeRef cf);
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char *cStr, CFStringEncoding encoding);
CFStringRef CFStringCreateWithFormat(CFAllocatorRef alloc, CFDictionaryRef formatOptions, CFStringRef format,
                                     ...);
Boolean CFStringGetCString(CFStringRef theString, char *buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);
CFIndex CFStringGetLength(CFStringRef theString);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef filePath,
                                       CFURLPathStyle pathStyle, Boolean isDirectory);
CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle);

#ifdef __cplusplus
}
#endif

#endif
