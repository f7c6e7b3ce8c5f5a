// Windows: the simulator's paths have backslashes, or slashes, or both; the clipboard, and what
// opens a file, are the system's own calls.
#include "util/platform.h"

#include <algorithm>
#include <cstring>

#include <windows.h>

#include <shellapi.h>

#include "util/wide_text_windows.h"

namespace {

bool isAbsolute(const std::string &path) {
    return path.starts_with("//") || (path.size() > 2 && path[1] == ':' && path[2] == '/');
}

// The clipboard belongs to one program at a time.
class Clipboard {
public:
    Clipboard() : isOpen(OpenClipboard(nullptr)) {}
    ~Clipboard() {
        if (isOpen) CloseClipboard();
    }
    Clipboard(const Clipboard &) = delete;
    Clipboard &operator=(const Clipboard &) = delete;

    const bool isOpen;
};

} // namespace

int ConvertNativePath(const char *in, char *out, size_t size) {
    std::string path = in;
    std::replace(path.begin(), path.end(), '\\', '/');
    if (!isAbsolute(path) || path.size() >= size) return -1;
    std::memcpy(out, path.c_str(), path.size() + 1);
    return 0;
}

std::string ReadClipboard() {
    const Clipboard clipboard;
    const HANDLE data = clipboard.isOpen ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    if (!data) return "";
    const auto *wide = static_cast<const wchar_t *>(GlobalLock(data));
    if (!wide) return "";
    const std::wstring_view all(wide, GlobalSize(data) / sizeof(wchar_t)); // a zero at its end is not certain
    std::string text = NarrowText(all.substr(0, all.find(L'\0')));
    GlobalUnlock(data);
    return text;
}

// What is set belongs to the system from then on.
void WrightClipboard(const std::string &text) {
    const std::wstring wide = WideText(text);
    const size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
    const Clipboard clipboard;
    if (!clipboard.isOpen || !EmptyClipboard()) return;
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    if (!memory) return;
    void *const target = GlobalLock(memory);
    if (target) std::memcpy(target, wide.c_str(), bytes);
    GlobalUnlock(memory);
    if (!target || !SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
}

void openURL(const std::string &path) {
    std::wstring name = WideText(path);
    std::replace(name.begin(), name.end(), L'/', L'\\');
    ShellExecuteW(nullptr, L"open", name.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}
