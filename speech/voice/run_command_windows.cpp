// The command gets its own job, so that all it starts can be ended. Its input is written and its output read
// by threads, since pipes here only wait.
#include "speech/voice/run_command.h"

#include <chrono>
#include <filesystem>
#include <future>

#include "sdk/windows/start_process.h"

namespace fennic_voice {

namespace {

const std::chrono::seconds LongestTime{10};
const DWORD EndMilliseconds = 1000; // for a command that has closed its output
const size_t LongestOutput = size_t{200} << 20;

// A pipe of which the command inherits one end.
bool MakePipe(OwnedHandle &reading, OwnedHandle &writing, bool inheritsReading) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreatePipe(reading.Place(), writing.Place(), &inherited, 0)
           && SetHandleInformation(inheritsReading ? writing : reading, HANDLE_FLAG_INHERIT, 0);
}

void WriteAll(OwnedHandle &pipe, const std::string &text) {
    DWORD count = 0;
    WriteFile(pipe, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    pipe.Close();
}

// True when it was read to its end.
bool ReadAll(const OwnedHandle &pipe, std::string &output) {
    char buffer[65536];
    DWORD count = 0;
    while (output.size() < LongestOutput) {
        if (!ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) || count == 0) return true;
        output.append(buffer, count);
    }
    return false;
}

} // namespace

bool RunCommand(const std::string &line, const std::string &input, std::string &output, std::string &error) {
    OwnedHandle theirInput, ourInput, ourOutput, theirOutput;
    const OwnedHandle job(CreateJobObjectW(nullptr, nullptr));
    output.clear();
    PROCESS_INFORMATION started = {};
    const bool hasPipes =
        job && MakePipe(theirInput, ourInput, true) && MakePipe(ourOutput, theirOutput, false);
    const std::wstring words = L"cmd.exe /d /s /c \"" + std::filesystem::path(line).wstring() + L"\"";
    const DWORD failed =
        hasPipes ? StartProcess(words, {theirInput, theirOutput, nullptr}, job, started) : GetLastError();
    if (failed != 0) {
        error = "cannot be run, error " + std::to_string(failed);
        return false;
    }
    const OwnedHandle process(started.hProcess), thread(started.hThread);
    theirInput.Close();
    theirOutput.Close();
    const std::future<void> writing = std::async(std::launch::async, [&] { WriteAll(ourInput, input); });
    // It ends with the last of those who write: the command and all that it started.
    std::future<bool> reading = std::async(std::launch::async, [&] { return ReadAll(ourOutput, output); });
    const bool isWhole = reading.wait_for(LongestTime) == std::future_status::ready && reading.get();
    if (!isWhole) TerminateJobObject(job, 1);
    WaitForSingleObject(process, EndMilliseconds);
    DWORD status = 0;
    GetExitCodeProcess(process, &status);
    if (!isWhole)
        error = "took too long";
    else if (status != 0)
        error = "ended with status " + std::to_string(status);
    return isWhole && status == 0;
}

} // namespace fennic_voice
