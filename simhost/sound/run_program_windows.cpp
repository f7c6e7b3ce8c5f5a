// The program inherits its three handles and nothing else.
#include "simhost/sound/run_program.h"

#include <cstddef>
#include <filesystem>
#include <string_view>

#include <windows.h>

namespace simhost {

namespace {

namespace fs = std::filesystem;

struct Handle {
    HANDLE handle;
    explicit Handle(HANDLE handle) : handle(handle) {}
    ~Handle() {
        if (isOpen()) CloseHandle(handle);
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    bool isOpen() const { return handle && handle != INVALID_HANDLE_VALUE; }
};

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

// Ours, without the voice's host: texts with a zero behind each and one more at the end.
std::wstring Environment() {
    std::wstring kept;
    wchar_t *const variables = GetEnvironmentStringsW();
    for (const wchar_t *next = variables; next && *next != L'\0';) {
        const std::wstring_view variable = next;
        if (!variable.starts_with(L"FENNIC_VOICE_HOST=")) kept.append(variable).push_back(L'\0');
        next += variable.size() + 1;
    }
    if (variables) FreeEnvironmentStringsW(variables);
    kept.push_back(L'\0');
    return kept;
}

bool Start(std::wstring line, HANDLE (&handles)[2], PROCESS_INFORMATION &started) {
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
    startup.StartupInfo.hStdInput = handles[0];
    startup.StartupInfo.hStdOutput = startup.StartupInfo.hStdError = handles[1];
    startup.lpAttributeList = attributes;
    std::wstring environment = Environment();
    const bool isStarted =
        CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                       EXTENDED_STARTUPINFO_PRESENT | CREATE_NO_WINDOW | CREATE_UNICODE_ENVIRONMENT,
                       environment.data(), nullptr, &startup.StartupInfo, &started);
    DeleteProcThreadAttributeList(attributes);
    return isStarted;
}

} // namespace

bool RunProgram(const std::vector<std::string> &words, const std::string &input) {
    std::wstring line;
    for (const std::string &word : words)
        line += (line.empty() ? L"" : L" ") + Quoted(fs::path(word).native());
    const Handle in(OpenInherited(fs::path(input).c_str(), GENERIC_READ));
    const Handle out(OpenInherited(L"NUL", GENERIC_WRITE));
    if (!in.isOpen() || !out.isOpen()) return false;
    HANDLE handles[] = {in.handle, out.handle};
    PROCESS_INFORMATION started = {};
    if (!Start(line, handles, started)) return false;
    const Handle process(started.hProcess), thread(started.hThread);
    WaitForSingleObject(process.handle, INFINITE);
    DWORD status = 1;
    return GetExitCodeProcess(process.handle, &status) && status == 0;
}

} // namespace simhost
