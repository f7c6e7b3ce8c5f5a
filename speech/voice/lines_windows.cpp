// A pipe tells what lies in it. What a file or a console gives is read by a thread of its own, which waits
// for it; it ends with the program.
#include "speech/voice/lines.h"

#include <algorithm>
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

HANDLE Input() {
    return GetStdHandle(STD_INPUT_HANDLE);
}

bool isBroken(BOOL isDone) {
    return !isDone && GetLastError() == ERROR_BROKEN_PIPE;
}

// One that tells what lies in it, or that it has ended.
bool isPipe() {
    static const bool tells = [] {
        if (GetFileType(Input()) != FILE_TYPE_PIPE) return false;
        const BOOL isDone = PeekNamedPipe(Input(), nullptr, 0, nullptr, nullptr, nullptr);
        return isDone || isBroken(isDone);
    }();
    return tells;
}

void ReadAll() {
    char buffer[4096];
    for (;;) {
        DWORD count = 0;
        const bool isRead = ReadFile(Input(), buffer, sizeof buffer, &count, nullptr) != 0 && count > 0;
        const std::lock_guard lock(arrived.mutex);
        arrived.bytes.append(buffer, count);
        arrived.hasEnded = !isRead;
        if (!isRead) return;
    }
}

void ReadPipe() {
    char buffer[4096];
    while (!arrived.hasEnded) {
        DWORD there = 0, count = 0;
        arrived.hasEnded = isBroken(PeekNamedPipe(Input(), nullptr, 0, nullptr, &there, nullptr));
        if (there == 0) return;
        if (!ReadFile(Input(), buffer, std::min<DWORD>(there, sizeof buffer), &count, nullptr)) return;
        arrived.bytes.append(buffer, count);
    }
}

} // namespace

LineInput::LineInput() {
    static const bool isRead = isPipe() || (std::thread(ReadAll).detach(), true);
    static_cast<void>(isRead);
}

std::vector<std::string> LineInput::Take() {
    std::vector<std::string> lines;
    const std::lock_guard lock(arrived.mutex);
    if (isPipe()) ReadPipe();
    Cut(arrived.bytes.data(), arrived.bytes.size(), lines);
    arrived.bytes.clear();
    if (arrived.hasEnded && !hasEnded) CutEnd(lines);
    return lines;
}

} // namespace fennic_voice
