// How a process is started on Windows.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <windows.h>

// One that may be empty; closed with its owner.
class OwnedHandle {
public:
    OwnedHandle() = default;
    explicit OwnedHandle(HANDLE handle) : handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    ~OwnedHandle() { Close(); }
    OwnedHandle(const OwnedHandle &) = delete;
    OwnedHandle &operator=(const OwnedHandle &) = delete;

    operator HANDLE() const { return handle; }
    HANDLE *Place() { return &handle; } // for a call that makes one

    void Close() {
        if (handle) CloseHandle(handle);
        handle = nullptr;
    }

private:
    HANDLE handle = nullptr;
};

// Starts a program, without a window and with our environment, in a job where one is given. It inherits its
// standard input, output and error output and nothing else of ours; each may be missing, two may be the same,
// and all must be handles that can be inherited. Returns 0, with two handles in started that the caller
// closes, or the system's error.
inline DWORD StartProcess(std::wstring line, const HANDLE (&streams)[3], HANDLE job,
                          PROCESS_INFORMATION &started) {
    std::vector<HANDLE> inherited; // each once, or the system refuses them
    for (const HANDLE stream : streams)
        if (stream && std::find(inherited.begin(), inherited.end(), stream) == inherited.end())
            inherited.push_back(stream);
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 2, 0, &size);
    std::vector<char> memory(size);
    const auto attributes = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    if (!InitializeProcThreadAttributeList(attributes, 2, 0, &size)) return GetLastError();
    UpdateProcThreadAttribute(attributes, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited.data(),
                              inherited.size() * sizeof(HANDLE), nullptr, nullptr);
    if (job)
        UpdateProcThreadAttribute(attributes, 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &job, sizeof job, nullptr,
                                  nullptr);
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = streams[0];
    startup.StartupInfo.hStdOutput = streams[1];
    startup.StartupInfo.hStdError = streams[2];
    startup.lpAttributeList = attributes;
    const DWORD flags = EXTENDED_STARTUPINFO_PRESENT | CREATE_NO_WINDOW;
    const bool isStarted = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, flags, nullptr,
                                          nullptr, &startup.StartupInfo, &started);
    const DWORD error = isStarted ? 0 : GetLastError();
    DeleteProcThreadAttributeList(attributes);
    return error;
}
