// Linux: the simulator's paths are POSIX paths already; the clipboard is reached through the programs that
// desktops offer.
#include "util/platform.h"

#include <cstring>

#include "util/pipes.h"

int ConvertPath(const char *in, char *out, size_t size) {
    if (!in || !out || size == 0) return -1;
    const size_t length = strnlen(in, size - 1);
    std::memcpy(out, in, length);
    out[length] = '\0';
    return in[length] == '\0' ? 0 : -1;
}

std::string ReadClipboard() {
    return ReadFromCommand("xclip -selection clipboard -o 2>/dev/null || wl-paste --no-newline 2>/dev/null");
}

void WrightClipboard(const std::string &text) {
    WriteToCommand("xclip -selection clipboard 2>/dev/null || wl-copy 2>/dev/null", text);
}
