#include "speech/voice/lines.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace fennic_voice {

LineInput::LineInput() = default;

std::vector<std::string> LineInput::Take() {
    std::vector<std::string> lines;
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    while (!hasEnded && poll(&input, 1, 0) > 0) {
        char buffer[4096];
        const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count > 0)
            Cut(buffer, static_cast<size_t>(count), lines);
        else
            CutEnd(lines);
    }
    return lines;
}

} // namespace fennic_voice
