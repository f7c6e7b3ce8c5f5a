// What is a Mac's alone, on any system: CoreFoundation and Launch Services are stand-ins here, which do what
// their documentation says and count what has not been released.
#include "util/platform.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>

#include <gtest/gtest.h>

#include "simhost/simulator.h"
#include "util/paths.h"
#include "util/pipes.h"

namespace {

std::set<const std::string *> objects; // strings, and URLs as POSIX paths
std::string opened, piped;

const void *Keep(const std::string &text) {
    return *objects.insert(new std::string(text)).first;
}

// A call with an object that is not there, or not any more, would end the process.
const std::string &TextOf(const void *object) {
    const auto *text = static_cast<const std::string *>(object);
    if (!objects.contains(text)) std::abort();
    return *text;
}

bool isAscii(const std::string &text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
}

// The volume comes first, "Macintosh HD" is the one that the system started from. What is a slash in a name
// there is a colon in POSIX's, which has no slashes in names.
std::string FromColons(std::string path) {
    for (char &c : path) c = c == ':' ? '/' : c == '/' ? ':' : c;
    if (path.ends_with('/')) path.pop_back();
    const std::string start = "Macintosh HD";
    return path.starts_with(start + "/") ? path.substr(start.size()) : "/Volumes/" + path;
}

class PlatformMac : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_TRUE(objects.empty()) << "not released: " << **objects.begin(); }
};

TEST_F(PlatformMac, PathsOfBothStylesBecomePosixOnes) {
    char path[64] = "";
    const std::pair<const char *, const char *> known[] = {
        {"Macintosh HD:X-Plane 12:Aircraft:", "/X-Plane 12/Aircraft"},
        {"Data:X-Plane 12:a/b.acf", "/Volumes/Data/X-Plane 12/a:b.acf"},
        {"/Users/me/X-Plane 12/c.acf", "/Users/me/X-Plane 12/c.acf"},
    };
    for (const auto &[native, posix] : known) {
        EXPECT_EQ(ConvertPath(native, path, sizeof path), 0) << native;
        EXPECT_STREQ(path, posix);
    }
    const std::string longer = "Macintosh HD:" + std::string(63, 'x'); // with "/" and its zero byte
    EXPECT_EQ(ConvertNativePath(longer.c_str(), path, sizeof path), -1);
    EXPECT_EQ(ConvertNativePath("no UTF-8: \xff", path, sizeof path), -1);
    EXPECT_EQ(ConvertNativePath(":no volume", path, sizeof path), -1);
}

TEST_F(PlatformMac, ASimulatorWithColonPathsIsUnderstood) {
    simhost::ResetSimulator();
    simhost::SetFolders("/tmp/X-Plane 12", "/tmp/X-Plane 12/Aircraft/A", "a.acf");
    simhost::ActAsPlugin("/tmp/X-Plane 12/Aircraft/A/plugins/fennic/64/mac.xpl");
    simhost::UseColonPaths(true);
    EXPECT_EQ(WhatXplanePath(), "/tmp/X-Plane 12/");
    EXPECT_EQ(WhatPluginPath(), "/tmp/X-Plane 12/Aircraft/A/plugins/fennic/64/");
    EXPECT_EQ(WhatThisAircraftAcfPath(), "/tmp/X-Plane 12/Aircraft/A/a.acf");
}

TEST_F(PlatformMac, FilesAreOpenedAndTextsCopied) {
    openURL("/X-Plane 12/a.txt");
    EXPECT_EQ(opened, "/X-Plane 12/a.txt");
    openURL("/no UTF-8: \xff");
    EXPECT_EQ(opened, "/X-Plane 12/a.txt");
    WrightClipboard("text");
    EXPECT_EQ(piped, "/usr/bin/pbcopy text");
    EXPECT_EQ(ReadClipboard(), "from /usr/bin/pbpaste");
}

} // namespace

// ---- The stand-ins ----

const CFAllocatorRef kCFAllocatorDefault = nullptr;

void CFRelease(CFTypeRef cf) {
    const std::string *text = &TextOf(cf);
    objects.erase(text);
    delete text;
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char *text, CFStringEncoding encoding) {
    if (encoding != kCFStringEncodingUTF8 || !isAscii(text)) return nullptr;
    return static_cast<CFStringRef>(Keep(text));
}

Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex size, CFStringEncoding encoding) {
    const std::string &text = TextOf(string);
    if (encoding != kCFStringEncodingUTF8 || static_cast<CFIndex>(text.size()) >= size) return false;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean) {
    const std::string &text = TextOf(path);
    if (style == kCFURLPOSIXPathStyle) return static_cast<CFURLRef>(Keep(text));
    if (style != kCFURLHFSPathStyle || text.starts_with(':')) return nullptr;
    return static_cast<CFURLRef>(Keep(FromColons(text)));
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style) {
    return style == kCFURLPOSIXPathStyle ? static_cast<CFStringRef>(Keep(TextOf(url))) : nullptr;
}

OSStatus LSOpenCFURLRef(CFURLRef url, CFURLRef *) {
    opened = TextOf(url);
    return 0;
}

std::string ReadFromCommand(const char *command) {
    return std::string("from ") + command;
}

void WriteToCommand(const char *command, const std::string &text) {
    piped = command + (" " + text);
}
