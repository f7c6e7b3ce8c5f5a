#include "simhost/sound/run_program.h"

#include <cstddef>
#include <filesystem>
#include <iterator>

#include "sdk/windows/start_process.h"

namespace simhost {

namespace {

namespace fs = std::filesystem;

HANDLE OpenInherited(const wchar_t *path, DWORD access) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0,
                       nullptr);
}

// As the C library of the other program takes a command line apart: a backslash means another character only
// in front of a quote.
std::wstring Quoted(const std::wstring &word) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

// Takes the voice's host out of our environment, which the program gets, for its lifetime.
class WithoutHost {
public:
    WithoutHost() {
        GetEnvironmentVariableW(Name, host, std::size(host));
        SetEnvironmentVariableW(Name, nullptr);
    }
    ~WithoutHost() { SetEnvironmentVariableW(Name, *host ? host : nullptr); }
    WithoutHost(const WithoutHost &) = delete;
    WithoutHost &operator=(const WithoutHost &) = delete;

private:
    static constexpr const wchar_t *Name = L"FENNIC_VOICE_HOST";
    wchar_t host[MAX_PATH] = L"";
};

} // namespace

bool RunProgram(const std::vector<std::string> &words, const std::string &input) {
    std::wstring line;
    for (const std::string &word : words)
        line += (line.empty() ? L"" : L" ") + Quoted(fs::path(word).native());
    const OwnedHandle in(OpenInherited(fs::path(input).c_str(), GENERIC_READ));
    const OwnedHandle out(OpenInherited(L"NUL", GENERIC_WRITE));
    const WithoutHost environment;
    PROCESS_INFORMATION started = {};
    if (!in || !out || StartProcess(line, {in, out, out}, nullptr, started) != 0) return false;
    const OwnedHandle process(started.hProcess), thread(started.hThread);
    WaitForSingleObject(process, INFINITE);
    DWORD status = 1;
    return GetExitCodeProcess(process, &status) && status == 0;
}

} // namespace simhost
