// macOS: colon-separated paths and opened files through CoreFoundation and Launch Services, the clipboard
// through the system's command-line tools.
#include "util/platform.h"

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>

#include "util/pipes.h"

int ConvertNativePath(const char *in, char *out, size_t size) {
    int result = -1;
    const CFStringRef native = CFStringCreateWithCString(kCFAllocatorDefault, in, kCFStringEncodingUTF8);
    if (!native) return result;
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations" // like the paths themselves
    const CFURLPathStyle colons = kCFURLHFSPathStyle;
#pragma clang diagnostic pop
    const CFURLRef url = CFURLCreateWithFileSystemPath(kCFAllocatorDefault, native, colons, false);
    if (url) {
        const CFStringRef posix = CFURLCopyFileSystemPath(url, kCFURLPOSIXPathStyle);
        if (posix && CFStringGetCString(posix, out, static_cast<CFIndex>(size), kCFStringEncodingUTF8))
            result = 0;
        if (posix) CFRelease(posix);
        CFRelease(url);
    }
    CFRelease(native);
    return result;
}

std::string ReadClipboard() {
    return ReadFromCommand("/usr/bin/pbpaste");
}

void WrightClipboard(const std::string &text) {
    WriteToCommand("/usr/bin/pbcopy", text);
}

void openURL(const std::string &path) {
    const CFStringRef posix =
        CFStringCreateWithCString(kCFAllocatorDefault, path.c_str(), kCFStringEncodingUTF8);
    if (!posix) return;
    const CFURLRef url =
        CFURLCreateWithFileSystemPath(kCFAllocatorDefault, posix, kCFURLPOSIXPathStyle, false);
    CFRelease(posix);
    if (!url) return;
    LSOpenCFURLRef(url, nullptr);
    CFRelease(url);
}
