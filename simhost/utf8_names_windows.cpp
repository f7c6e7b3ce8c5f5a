// Names of files are UTF-8 here, as on other systems. The C library, which Lua, LodePNG and C++'s streams ask
// for files, and C++'s paths would take them for text in the locale's character set: the linker leads those
// calls of the C library to what stands here (cmake/windows_libraries.cmake), and the conversion of C++'s
// paths is this one instead of its library's.
#include <cerrno>
#include <codecvt>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <locale>
#include <string>
#include <system_error>

#include <windows.h>

namespace {

namespace fs = std::filesystem;

using Utf8 = std::codecvt_utf8_utf16<wchar_t>;

// Empty for what is no UTF-8, which names no file.
std::wstring Wide(const char *name) {
    try {
        return fs::path(name).native();
    } catch (const std::exception &) {
        return L"";
    }
}

} // namespace

extern "C" {

FILE *__wrap_fopen(const char *name, const char *mode) {
    std::wstring wideMode(mode, mode + std::strlen(mode));
    std::erase(wideMode, L'e'); // that no child process has the file goes without saying here
    return _wfopen(Wide(name).c_str(), wideMode.c_str());
}

// An empty folder, too, as on other systems.
int __wrap_remove(const char *name) {
    const std::wstring wide = Wide(name);
    const DWORD attributes = GetFileAttributesW(wide.c_str());
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return isFolder ? _wrmdir(wide.c_str()) : _wremove(wide.c_str());
}

// In place of another file, too.
int __wrap_rename(const char *name, const char *newName) {
    if (MoveFileExW(Wide(name).c_str(), Wide(newName).c_str(), MOVEFILE_REPLACE_EXISTING)) return 0;
    errno = GetLastError() == ERROR_FILE_NOT_FOUND ? ENOENT : EACCES;
    return -1;
}
}

namespace std {

using WideConversion = codecvt<wchar_t, char, mbstate_t>;

codecvt_base::result WideConversion::do_in(mbstate_t &, const char *from, const char *fromEnd,
                                           const char *&fromNext, wchar_t *to, wchar_t *toEnd,
                                           wchar_t *&toNext) const {
    mbstate_t state = {};
    return Utf8().in(state, from, fromEnd, fromNext, to, toEnd, toNext);
}

codecvt_base::result WideConversion::do_out(mbstate_t &, const wchar_t *from, const wchar_t *fromEnd,
                                            const wchar_t *&fromNext, char *to, char *toEnd,
                                            char *&toNext) const {
    mbstate_t state = {};
    return Utf8().out(state, from, fromEnd, fromNext, to, toEnd, toNext);
}

int WideConversion::do_length(mbstate_t &, const char *from, const char *fromEnd, size_t most) const {
    mbstate_t state = {};
    return Utf8().length(state, from, fromEnd, most);
}

int WideConversion::do_encoding() const noexcept {
    return Utf8().encoding();
}

int WideConversion::do_max_length() const noexcept {
    return Utf8().max_length();
}

} // namespace std
