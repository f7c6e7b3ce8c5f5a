#include "simhost/system.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#include <io.h>
#include <windows.h>

#include "simhost/modules.h"

namespace fs = std::filesystem;

namespace simhost {

namespace {

std::string ModulePath(HMODULE module) {
    wchar_t path[4096] = L"";
    GetModuleFileNameW(module, path, std::size(path));
    return fs::path(path).generic_string();
}

// The one that holds this function, too.
HMODULE ModuleOf(const void *function) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t *>(function), &module);
    return module;
}

} // namespace

const char *const LibraryName = "win.xpl", *const LibraryFolder = "win_x64";
const char *const ProgramEnding = ".exe";
const char NativeSeparator = '\\';

void *OpenLibrary(const std::string &path, std::string &error) {
    void *library = LoadLibraryW(fs::path(path).make_preferred().c_str());
    if (!library)
        error = path + " cannot be opened: "
                + std::error_code(static_cast<int>(GetLastError()), std::system_category()).message();
    return library;
}

void ReleaseLibrary(void *library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

bool isInMemory(const std::string &libraryPath) {
    return GetModuleHandleW(fs::path(libraryPath).make_preferred().c_str()) != nullptr;
}

void *FindInLibrary(void *library, const char *name) {
    return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void *FindOwnCall(const char *name) {
    return FindInLibrary(ModuleOf(reinterpret_cast<const void *>(&FindOwnCall)), name);
}

std::string DescribeFunction(const void *function) {
    const HMODULE module = ModuleOf(function);
    if (!module) return "of unknown origin";
    const std::string path = ModulePath(module);
    char offset[32];
    std::snprintf(offset, sizeof offset, "+0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(function)
                                                  - reinterpret_cast<std::uintptr_t>(module)));
    return path.substr(path.rfind('/') + 1) + offset;
}

bool FeedProgram(const std::string &command, const std::string &text) {
    std::fflush(stdout);
    FILE *program = _popen(command.c_str(), "wb");
    const bool isWritten = program && std::fwrite(text.data(), 1, text.size(), program) == text.size();
    return program && _pclose(program) == 0 && isWritten;
}

std::string ProgramFolder() {
    const std::string path = ModulePath(nullptr);
    return path.substr(0, path.rfind('/') + 1);
}

std::string MakeTemporaryFolder(const std::string &prefix, std::string &error) {
    std::error_code failed;
    const fs::path folder = fs::temp_directory_path(failed);
    for (DWORD number = GetCurrentProcessId(); !failed; number += 0x10000) {
        const fs::path made = folder / (prefix + std::to_string(number));
        if (fs::create_directory(made, failed)) return made.generic_string() + "/";
    }
    error = failed.message();
    return "";
}

bool isTerminalOutput() {
    return _isatty(_fileno(stdout)) != 0;
}

// "German_Germany.1252": with its own character set, since there is none of UTF-8.
std::string LocaleName(const std::string &name) {
    std::wstring tag(name.begin(), std::find(name.begin(), name.end(), '.'));
    std::replace(tag.begin(), tag.end(), L'_', L'-');
    std::wstring parts[3];
    const LCTYPE kinds[] = {LOCALE_SENGLISHLANGUAGENAME, LOCALE_SENGLISHCOUNTRYNAME,
                            LOCALE_IDEFAULTANSICODEPAGE};
    for (size_t i = 0; i < std::size(parts); ++i) {
        wchar_t text[80] = L"";
        if (GetLocaleInfoEx(tag.c_str(), kinds[i], text, std::size(text)) == 0) return name;
        parts[i] = text;
    }
    return fs::path(parts[0] + L"_" + parts[1] + L"." + parts[2]).string();
}

} // namespace simhost
