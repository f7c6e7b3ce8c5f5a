// Windows processes. Each is in a job of its own that the system ends with its last handle, ours: so the
// process never outlives the simulator, however that one ends.
// The pipe to its input is written beside the simulator's thread; of the others there is read what lies in
// them.
#include "speech/companion/helper_process.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "sdk/windows/start_process.h"

namespace fennic_speech {

struct HelperProcess::PendingWrite {
    OVERLAPPED state = {};
    std::string bytes;
};

namespace {

const DWORD PipeSize = 64 * 1024;
const DWORD KilledStatus = 0xDEAD0009; // of a process that we ended
const DWORD GoingMilliseconds = 50;    // for one that has closed its output, as all do at their end

HANDLE Of(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t Kept(HANDLE handle) {
    return handle ? reinterpret_cast<std::intptr_t>(handle) : -1;
}

void Close(std::intptr_t &handle) {
    if (handle != -1) CloseHandle(Of(handle));
    handle = -1;
}

std::wstring Wide(const std::string &text) {
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(std::max(size, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), size);
    return wide;
}

std::string Describe(DWORD error) {
    wchar_t wide[300] = L"";
    char text[900] = "";
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, wide, 300,
                   nullptr);
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, sizeof text, nullptr, nullptr);
    std::string told = text;
    while (!told.empty() && (told.back() == '\n' || told.back() == '\r' || told.back() == '.'))
        told.pop_back();
    return told.empty() ? "error " + std::to_string(error) : told;
}

std::string DescribeEnd(DWORD status) {
    if (status == KilledStatus) return "killed";
    if (status < 0xC0000000) return "with status " + std::to_string(status);
    char text[40];
    std::snprintf(text, sizeof text, "by exception 0x%08lX", static_cast<unsigned long>(status));
    return text;
}

// The ends of a pipe: the process's, which it inherits, and ours.
struct Pipe {
    std::intptr_t theirs = -1, ours = -1;
};

bool MakeInput(Pipe &pipe) {
    static unsigned long number = 0; // in this process
    const std::wstring name = L"\\\\.\\pipe\\fennic_speech." + std::to_wstring(GetCurrentProcessId()) + L"."
                              + std::to_wstring(++number);
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE theirs = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                           PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
                                           PipeSize, PipeSize, 0, &inherited);
    if (theirs == INVALID_HANDLE_VALUE) return false;
    pipe.theirs = Kept(theirs);
    pipe.ours = Kept(
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    return pipe.ours != -1;
}

bool MakeOutput(Pipe &pipe) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE ours = nullptr, theirs = nullptr;
    if (!CreatePipe(&ours, &theirs, &inherited, PipeSize)) return false;
    SetHandleInformation(ours, HANDLE_FLAG_INHERIT, 0);
    pipe = {Kept(theirs), Kept(ours)};
    return true;
}

std::intptr_t MakeJob() {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (job) SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return Kept(job);
}

} // namespace

bool HelperProcess::StartProgram(const std::string &program, std::string &error) {
    Pipe input, result, errorPipe;
    job = MakeJob();
    const bool hasPipes = MakeInput(input) && MakeOutput(result) && MakeOutput(errorPipe);
    DWORD reason = GetLastError();
    inputHandle = input.ours;
    outputHandle = result.ours;
    errorHandle = errorPipe.ours;
    if (hasPipes && job != -1) {
        PROCESS_INFORMATION started = {};
        reason = StartProcess(L"\"" + Wide(program) + L"\" --child",
                              {Of(input.theirs), Of(result.theirs), Of(errorPipe.theirs)}, Of(job), started);
        if (reason == 0) {
            CloseHandle(started.hThread);
            process = Kept(started.hProcess);
            id = static_cast<int>(started.dwProcessId);
        }
    }
    for (Pipe *pipe : {&input, &result, &errorPipe}) Close(pipe->theirs);
    if (id == 0) error = Describe(reason);
    return id != 0;
}

// What the system has not handed over yet is called back first: it reads our memory.
void HelperProcess::CloseInput() {
    if (pending) {
        DWORD count = 0;
        CancelIoEx(Of(inputHandle), &pending->state);
        GetOverlappedResult(Of(inputHandle), &pending->state, &count, TRUE);
        pending.reset();
    }
    Close(inputHandle);
}

void HelperProcess::CloseHandles() {
    CloseInput();
    Close(outputHandle);
    Close(errorHandle);
    Close(process);
    Close(job); // ends whatever the process has started and left behind
}

void HelperProcess::Write() {
    while (inputHandle != -1) {
        DWORD count = 0;
        if (pending) {
            if (!GetOverlappedResult(Of(inputHandle), &pending->state, &count, FALSE)
                && GetLastError() == ERROR_IO_INCOMPLETE)
                return; // full
            pending.reset();
        }
        if (waiting.empty()) return;
        pending = std::make_shared<PendingWrite>();
        pending->bytes = waiting.substr(0, PipeSize);
        waiting.erase(0, pending->bytes.size());
        if (!WriteFile(Of(inputHandle), pending->bytes.data(), static_cast<DWORD>(pending->bytes.size()),
                       nullptr, &pending->state)
            && GetLastError() != ERROR_IO_PENDING) {
            pending.reset(); // gone, which its output will tell
            return;
        }
    }
}

bool HelperProcess::ReadSome(Handle handle, LineBuffer &lines) {
    char buffer[4096];
    for (size_t round = 0; round < MostInAFrame / sizeof buffer; round++) {
        DWORD there = 0, count = 0;
        if (!PeekNamedPipe(Of(handle), nullptr, 0, nullptr, &there, nullptr)) return false;
        if (there == 0) return true;
        if (!ReadFile(Of(handle), buffer, std::min<DWORD>(there, sizeof buffer), &count, nullptr))
            return false;
        lines.Add(buffer, count);
    }
    return true;
}

void HelperProcess::Read() {
    if (errorHandle != -1 && !ReadSome(errorHandle, errors)) Close(errorHandle);
    if (outputHandle != -1 && !ReadSome(outputHandle, output)) Close(outputHandle);
}

void HelperProcess::Reap(bool waits) {
    DWORD status = 0;
    const DWORD patience = waits ? EndMilliseconds : outputHandle == -1 ? GoingMilliseconds : 0;
    if (WaitForSingleObject(Of(process), patience) != WAIT_OBJECT_0) {
        TerminateJobObject(Of(job), KilledStatus);
        WaitForSingleObject(Of(process), EndMilliseconds);
    }
    ending = GetExitCodeProcess(Of(process), &status) ? DescribeEnd(status) : "nobody knows how";
    id = 0;
    CloseHandles();
}

} // namespace fennic_speech
