#include "simhost/system.h"

#include <dlfcn.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <unistd.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#endif

#include "simhost/modules.h"

namespace fs = std::filesystem;

namespace simhost {

#if defined(__APPLE__)
const char *const LibraryName = "mac.xpl", *const LibraryFolder = "mac_x64";
#else
const char *const LibraryName = "lin.xpl", *const LibraryFolder = "lin_x64";
#endif

const char *const ProgramEnding = "";
const char NativeSeparator = '/';

void *OpenLibrary(const std::string &path, std::string &error) {
    void *library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    const char *reason = library ? "" : dlerror();
    error = reason ? reason : path + " cannot be opened";
    return library;
}

void ReleaseLibrary(void *library) {
    dlclose(library);
}

bool isInMemory(const std::string &libraryPath) {
    void *library = dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}

void *FindInLibrary(void *library, const char *name) {
    return dlsym(library, name);
}

void *FindOwnCall(const char *name) {
    return dlsym(RTLD_DEFAULT, name);
}

std::string DescribeFunction(const void *function) {
    Dl_info info = {};
    if (dladdr(function, &info) == 0 || !info.dli_fname) return "of unknown origin";
    if (info.dli_sname && info.dli_saddr == function) return info.dli_sname;
    const char *slash = std::strrchr(info.dli_fname, '/');
    char offset[32];
    std::snprintf(offset, sizeof offset, "+0x%zx",
                  reinterpret_cast<std::uintptr_t>(function)
                      - reinterpret_cast<std::uintptr_t>(info.dli_fbase));
    return std::string(slash ? slash + 1 : info.dli_fname) + offset;
}

bool FeedProgram(const std::string &command, const std::string &text) {
    std::fflush(stdout);
    std::signal(SIGPIPE, SIG_IGN); // where there is no such program, nobody reads
    FILE *program = popen(command.c_str(), "w");
    const bool isWritten = program && std::fwrite(text.data(), 1, text.size(), program) == text.size();
    return program && pclose(program) == 0 && isWritten;
}

std::string ProgramFolder() {
#if defined(__APPLE__)
    char path[4096];
    uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) != 0) return "";
    const fs::path program = path;
#else
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed);
    if (failed) return "";
#endif
    return program.parent_path().string() + "/";
}

std::string MakeTemporaryFolder(const std::string &prefix, std::string &error) {
    std::error_code failed;
    std::string pattern =
        (fs::canonical(fs::temp_directory_path(failed), failed) / (prefix + "XXXXXX")).string();
    if (!failed && mkdtemp(pattern.data())) return pattern + "/";
    error = failed ? failed.message() : "cannot make a folder " + pattern;
    return "";
}

bool isTerminalOutput() {
    return isatty(STDOUT_FILENO) != 0;
}

std::string LocaleName(const std::string &name) {
    return name;
}

} // namespace simhost
