// The command gets its own job, so that all it starts can be ended. Its input is written and its output read
// by threads, since pipes here only wait.
#include "speech/voice/run_command.h"

#include <chrono>
#include <filesystem>
#include <future>

#include <windows.h>

namespace fennic_voice {

namespace {

const std::chrono::seconds LongestTime{10};
const DWORD EndMilliseconds = 1000; // for a command that has closed its output
const size_t LongestOutput = size_t{200} << 20;

struct Handle {
    HANDLE handle = nullptr;
    Handle() = default;
    ~Handle() { Close(); }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    void Close() {
        if (handle) CloseHandle(handle);
        handle = nullptr;
    }
};

// A pipe of which the command inherits one end.
bool MakePipe(Handle &reading, Handle &writing, bool inheritsReading) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreatePipe(&reading.handle, &writing.handle, &inherited, 0)
           && SetHandleInformation((inheritsReading ? writing : reading).handle, HANDLE_FLAG_INHERIT, 0);
}

// It inherits these handles and nothing else.
bool Start(const std::string &line, HANDLE input, HANDLE output, HANDLE job, Handle &process) {
    HANDLE handles[] = {input, output};
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    std::string memory(size, '\0');
    const auto attributes = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    if (!InitializeProcThreadAttributeList(attributes, 1, 0, &size)) return false;
    UpdateProcThreadAttribute(attributes, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles, sizeof handles,
                              nullptr, nullptr);
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = input;
    startup.StartupInfo.hStdOutput = output;
    startup.lpAttributeList = attributes;
    std::wstring command = L"cmd.exe /d /s /c \"" + std::filesystem::path(line).wstring() + L"\"";
    PROCESS_INFORMATION started = {};
    const bool isStarted = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE,
                                          EXTENDED_STARTUPINFO_PRESENT | CREATE_NO_WINDOW | CREATE_SUSPENDED,
                                          nullptr, nullptr, &startup.StartupInfo, &started);
    DWORD error = isStarted ? 0 : GetLastError();
    DeleteProcThreadAttributeList(attributes);
    if (isStarted) {
        process.handle = started.hProcess;
        if (!AssignProcessToJobObject(job, started.hProcess)) error = GetLastError();
        if (error == 0)
            ResumeThread(started.hThread);
        else
            TerminateProcess(started.hProcess, 1);
        CloseHandle(started.hThread);
    }
    SetLastError(error);
    return error == 0;
}

void WriteAll(Handle &pipe, const std::string &text) {
    DWORD count = 0;
    WriteFile(pipe.handle, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    pipe.Close();
}

// True when it was read to its end.
bool ReadAll(const Handle &pipe, std::string &output) {
    char buffer[65536];
    DWORD count = 0;
    while (output.size() < LongestOutput) {
        if (!ReadFile(pipe.handle, buffer, sizeof buffer, &count, nullptr) || count == 0) return true;
        output.append(buffer, count);
    }
    return false;
}

} // namespace

bool RunCommand(const std::string &line, const std::string &input, std::string &output, std::string &error) {
    Handle theirInput, ourInput, ourOutput, theirOutput, job, process;
    output.clear();
    job.handle = CreateJobObjectW(nullptr, nullptr);
    if (!MakePipe(theirInput, ourInput, true) || !MakePipe(ourOutput, theirOutput, false)
        || !Start(line, theirInput.handle, theirOutput.handle, job.handle, process)) {
        error = "cannot be run, error " + std::to_string(GetLastError());
        return false;
    }
    theirInput.Close();
    theirOutput.Close();
    const std::future<void> writing = std::async(std::launch::async, [&] { WriteAll(ourInput, input); });
    // It ends with the last of those who write: the command and all that it started.
    std::future<bool> reading = std::async(std::launch::async, [&] { return ReadAll(ourOutput, output); });
    const bool isWhole = reading.wait_for(LongestTime) == std::future_status::ready && reading.get();
    if (!isWhole) TerminateJobObject(job.handle, 1);
    WaitForSingleObject(process.handle, EndMilliseconds);
    DWORD status = 0;
    GetExitCodeProcess(process.handle, &status);
    if (!isWhole)
        error = "took too long";
    else if (status != 0)
        error = "ended with status " + std::to_string(status);
    return isWhole && status == 0;
}

} // namespace fennic_voice
