// What a pipe, a file and a console give is read by a thread of its own, which waits for it; it ends with the
// program.
#include "speech/voice/lines.h"

#include <mutex>
#include <thread>

#include <windows.h>

namespace fennic_voice {

namespace {

struct Arrived {
    std::mutex mutex;
    std::string bytes;
    bool hasEnded = false;
};

// There is one standard input, and its reader may outlive all else.
Arrived &arrived = *new Arrived;

void ReadAll() {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    char buffer[4096];
    for (;;) {
        DWORD count = 0;
        const bool isRead = ReadFile(input, buffer, sizeof buffer, &count, nullptr) != 0 && count > 0;
        const std::lock_guard lock(arrived.mutex);
        arrived.bytes.append(buffer, count);
        arrived.hasEnded = !isRead;
        if (!isRead) return;
    }
}

} // namespace

LineInput::LineInput() {
    static const bool isRead = (std::thread(ReadAll).detach(), true);
    static_cast<void>(isRead);
}

std::vector<std::string> LineInput::Take() {
    std::vector<std::string> lines;
    const std::lock_guard lock(arrived.mutex);
    Cut(arrived.bytes.data(), arrived.bytes.size(), lines);
    arrived.bytes.clear();
    if (arrived.hasEnded && !hasEnded) CutEnd(lines);
    return lines;
}

} // namespace fennic_voice
