/* Of macOS's CoreFoundation, what the plug-in calls. On a Mac the system's own header is taken. */
#ifndef FENNIC_SDK_COREFOUNDATION_H
#define FENNIC_SDK_COREFOUNDATION_H

#ifdef __cplusplus
extern "C" {
#endif

typedef signed int OSStatus;
typedef unsigned char Boolean;
typedef signed long CFIndex;
typedef unsigned int CFStringEncoding;
typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct __CFString *CFStringRef;
typedef const struct __CFURL *CFURLRef;

extern const CFAllocatorRef kCFAllocatorDefault;
enum { kCFStringEncodingUTF8 = 0x08000100 };
typedef enum { kCFURLPOSIXPathStyle = 0, kCFURLHFSPathStyle, kCFURLWindowsPathStyle } CFURLPathStyle;

/* What a function with "Create" or "Copy" in its name returns belongs to the caller, who releases it. NULL
   when it cannot be made. */
void CFRelease(CFTypeRef cf);
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char *cStr, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef theString, char *buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef allocator, CFStringRef filePath,
                                       CFURLPathStyle pathStyle, Boolean isDirectory);
CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle);

#ifdef __cplusplus
}
#endif

#endif
