// All waits have an end, so the pipe's calls are of the kind that goes on beside us. One instance of the pipe
// always waits for somebody.
#include "simhost/sound/voice_connection.h"

#include <cstdint>
#include <system_error>

#include <windows.h>

namespace simhost {

namespace {

constexpr const wchar_t *HostVariable = L"FENNIC_VOICE_HOST";
constexpr DWORD PipeSize = 64 * 1024;
constexpr DWORD LookMilliseconds = 20; // for somebody who comes

HANDLE listener = INVALID_HANDLE_VALUE, connection = INVALID_HANDLE_VALUE;
OVERLAPPED coming = {}, passing = {}; // of each
std::wstring pipeName;
DWORD limitMilliseconds = 0;

void Close(HANDLE &handle, OVERLAPPED &under) {
    if (handle == INVALID_HANDLE_VALUE) return;
    DWORD count = 0;
    if (CancelIoEx(handle, &under)) GetOverlappedResult(handle, &under, &count, TRUE);
    CloseHandle(handle);
    handle = INVALID_HANDLE_VALUE;
}

bool MakeEvent(OVERLAPPED &state) {
    if (!state.hEvent) state.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return state.hEvent != nullptr;
}

// A new instance, for whoever comes next.
bool Listen() {
    listener = CreateNamedPipeW(pipeName.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS,
                                PIPE_UNLIMITED_INSTANCES, PipeSize, PipeSize, 0, nullptr);
    if (listener == INVALID_HANDLE_VALUE) return false;
    ResetEvent(coming.hEvent);
    if (ConnectNamedPipe(listener, &coming) || GetLastError() == ERROR_IO_PENDING) return true;
    return GetLastError() == ERROR_PIPE_CONNECTED && SetEvent(coming.hEvent);
}

using PipeCall = BOOL (*)(char *bytes, DWORD size);

BOOL Write(char *bytes, DWORD size) {
    return WriteFile(connection, bytes, size, nullptr, &passing);
}

BOOL Read(char *bytes, DWORD size) {
    return ReadFile(connection, bytes, size, nullptr, &passing);
}

Passed Pass(PipeCall call, char *bytes, std::size_t size) {
    while (size > 0) {
        DWORD count = 0;
        if (!call(bytes, static_cast<DWORD>(size)) && GetLastError() != ERROR_IO_PENDING) return Passed::Gone;
        if (WaitForSingleObject(passing.hEvent, limitMilliseconds) != WAIT_OBJECT_0) return Passed::Late;
        if (!GetOverlappedResult(connection, &passing, &count, FALSE) || count == 0) return Passed::Gone;
        bytes += count;
        size -= count;
    }
    return Passed::Whole;
}

} // namespace

bool ListenForVoice(double limitSeconds, std::string &error) {
    static unsigned opened = 0; // in this process
    pipeName = L"\\\\.\\pipe\\fennic_voice." + std::to_wstring(GetCurrentProcessId()) + L"."
               + std::to_wstring(++opened);
    limitMilliseconds = static_cast<DWORD>(limitSeconds * 1000) + 1000;
    if (MakeEvent(coming) && MakeEvent(passing) && Listen()
        && SetEnvironmentVariableW(HostVariable, pipeName.c_str()))
        return true;
    error = std::error_code(static_cast<int>(GetLastError()), std::system_category()).message();
    return false;
}

bool isListeningForVoice() {
    return listener != INVALID_HANDLE_VALUE;
}

void StopListening() {
    HangUp();
    Close(listener, coming);
    SetEnvironmentVariableW(HostVariable, nullptr);
}

bool AcceptVoice(int process) {
    while (!isVoiceConnected() && WaitForSingleObject(coming.hEvent, LookMilliseconds) == WAIT_OBJECT_0) {
        connection = listener;
        ULONG peer = 0;
        const bool isFromProcess =
            GetNamedPipeClientProcessId(connection, &peer) && peer == static_cast<ULONG>(process);
        if (!isFromProcess) HangUp();
        if (!Listen()) return false;
    }
    return isVoiceConnected();
}

bool isVoiceConnected() {
    return connection != INVALID_HANDLE_VALUE;
}

void HangUp() {
    Close(connection, passing);
}

Passed SendToVoice(const void *bytes, std::size_t size) {
    return Pass(Write, const_cast<char *>(static_cast<const char *>(bytes)), size);
}

Passed ReceiveFromVoice(void *bytes, std::size_t size) {
    return Pass(Read, static_cast<char *>(bytes), size);
}

bool hasEnded(int process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
    if (!handle) return true;
    const bool isOver = WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
    CloseHandle(handle);
    return isOver;
}

} // namespace simhost
