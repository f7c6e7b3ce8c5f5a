#include "speech/voice/lines.h"

#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace fennic_voice {

namespace {

const size_t LongestLine = 100000;

} // namespace

std::vector<std::string> LineInput::Take() {
    std::vector<std::string> lines;
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    while (!hasEnded && poll(&input, 1, 0) > 0) {
        char buffer[4096];
        const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            hasEnded = true;
            if (!rest.empty()) lines.push_back(std::exchange(rest, {}));
            break;
        }
        for (ssize_t i = 0; i < count; i++) {
            if (buffer[i] == '\n')
                lines.push_back(std::exchange(rest, {}));
            else if (buffer[i] != '\r' && rest.size() < LongestLine)
                rest += buffer[i];
        }
    }
    return lines;
}

bool WriteLine(const std::string &line) {
    return std::printf("%s\n", line.c_str()) >= 0 && std::fflush(stdout) == 0;
}

void TellLog(const std::string &line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace fennic_voice
