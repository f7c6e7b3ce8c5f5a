// Linux: the simulator's paths are POSIX paths already; clipboard and programs are reached through the
// programs that desktops offer.
#include "util/platform.h"

#include <sys/wait.h>
#include <unistd.h>

#include "util/pipes.h"

int ConvertNativePath(const char *, char *, size_t) {
    return -1;
}

std::string ReadClipboard() {
    return ReadFromCommand("xclip -selection clipboard -o 2>/dev/null || wl-paste --no-newline 2>/dev/null");
}

void WrightClipboard(const std::string &text) {
    WriteToCommand("xclip -selection clipboard 2>/dev/null || wl-copy 2>/dev/null", text);
}

// The program is started by a child of a child, so that it is nobody's child to wait for when it ends.
void openURL(const std::string &path) {
    const pid_t child = fork();
    if (child == 0) {
        if (fork() == 0) execlp("xdg-open", "xdg-open", path.c_str(), static_cast<char *>(nullptr));
        _exit(0);
    }
    if (child > 0) waitpid(child, nullptr, 0);
}
