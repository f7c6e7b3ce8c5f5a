// Sound from and to a host in lockstep, through a named pipe: the headless simulator gives the blocks of a
// frame when the frame is over. Whoever closes our input in the middle of one waits for our end and can give
// none, so that is noticed, too.
#include <filesystem>
#include <system_error>

#include <windows.h>

#include "speech/voice/sound.h"

namespace fennic_voice {

namespace {

const uint32_t LongestBlock = SampleRate * 10;
const DWORD LookMilliseconds = 20;      // at the input
const DWORD ComingMilliseconds = 60000; // while the host sees off who came before us

// Nobody writes to the standard input any more, though something may lie in it. Of a pipe with somebody at
// its other end this call says that it is connected.
bool isInputClosed() {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    return GetFileType(input) == FILE_TYPE_PIPE && !ConnectNamedPipe(input, nullptr)
           && GetLastError() == ERROR_NO_DATA;
}

class HostSound : public Sound {
public:
    HostSound(HANDLE pipe, HANDLE event) : pipe(pipe) { passing.hEvent = event; }
    ~HostSound() override {
        DWORD moved = 0;
        if (CancelIoEx(pipe, &passing)) GetOverlappedResult(pipe, &passing, &moved, TRUE);
        CloseHandle(pipe);
        CloseHandle(passing.hEvent);
    }
    HostSound(const HostSound &) = delete;
    HostSound &operator=(const HostSound &) = delete;

    bool Read(Samples &block) override {
        block.clear();
        if (!isCountAwaited && !BeginReading(&count, sizeof count)) return false;
        isCountAwaited = true;
        if (!WaitForBlock()) return true;
        isCountAwaited = false;
        if (Moved() != sizeof count || count > LongestBlock) return false;
        block.resize(count);
        char *next = reinterpret_cast<char *>(block.data());
        for (size_t left = block.size() * sizeof(int16_t); left > 0;) {
            const size_t moved = BeginReading(next, left) ? Moved() : 0;
            if (moved == 0) return false;
            next += moved;
            left -= moved;
        }
        return true;
    }

    void Write(const Samples &block) override {
        const char *next = reinterpret_cast<const char *>(block.data());
        for (size_t left = block.size() * sizeof(int16_t); left > 0;) {
            const size_t moved = BeginWriting(next, left) ? Moved() : 0;
            if (moved == 0) return; // the next Read will tell
            next += moved;
            left -= moved;
        }
    }

    bool isWaiting() const override { return true; }

private:
    const HANDLE pipe;
    OVERLAPPED passing = {};
    uint32_t count = 0; // of the samples that follow
    bool isCountAwaited = false;
    bool isInputOpen = true; // as far as it was noticed

    bool BeginReading(void *bytes, size_t size) {
        return ReadFile(pipe, bytes, static_cast<DWORD>(size), nullptr, &passing)
               || GetLastError() == ERROR_IO_PENDING;
    }

    bool BeginWriting(const void *bytes, size_t size) {
        return WriteFile(pipe, bytes, static_cast<DWORD>(size), nullptr, &passing)
               || GetLastError() == ERROR_IO_PENDING;
    }

    // The bytes of what was begun last, when it is over; 0 when it failed.
    size_t Moved() {
        DWORD moved = 0;
        return GetOverlappedResult(pipe, &passing, &moved, TRUE) ? moved : 0;
    }

    // False, once, when the input has ended instead: also before a block that has come meanwhile, so that a
    // host sees one end alone.
    bool WaitForBlock() {
        while (isInputOpen) {
            const bool hasCome = WaitForSingleObject(passing.hEvent, LookMilliseconds) == WAIT_OBJECT_0;
            isInputOpen = !isInputClosed();
            if (!isInputOpen) return false;
            if (hasCome) return true;
        }
        return true;
    }
};

} // namespace

std::unique_ptr<Sound> ConnectToHost(const std::string &pipeName, std::string &error) {
    const std::wstring name = std::filesystem::path(pipeName).wstring();
    HANDLE pipe = INVALID_HANDLE_VALUE;
    do {
        pipe = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                           FILE_FLAG_OVERLAPPED, nullptr);
    } while (pipe == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY
             && WaitNamedPipeW(name.c_str(), ComingMilliseconds));
    const HANDLE event = pipe == INVALID_HANDLE_VALUE ? nullptr : CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (event) return std::make_unique<HostSound>(pipe, event);
    error = std::error_code(static_cast<int>(GetLastError()), std::system_category()).message();
    if (pipe != INVALID_HANDLE_VALUE) CloseHandle(pipe);
    return nullptr;
}

} // namespace fennic_voice
