#include "speech/voice/system.h"

#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace fennic_voice {

namespace {

void Ignore(const char *, int, const char *, int, const char *, ...) {}

} // namespace

void PrepareStreams() {
    std::signal(SIGPIPE, SIG_IGN);
}

std::string MakeTemporaryWav() {
    std::string path = (std::filesystem::temp_directory_path() / "fennic_voice_XXXXXX.wav").string();
    const int handle = mkstemps(path.data(), 4);
    if (handle >= 0) close(handle);
    return handle >= 0 ? path : "";
}

std::string QuotedForCommand(const std::string &path) {
    return "'" + path + "'";
}

std::string DescribeSoundError(long) {
    return "";
}

Hush::Hush() : kept(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
    void *const library = dlopen("libasound.so.2", RTLD_NOW); // where it is
    void *const function = library ? dlsym(library, "snd_lib_error_set_handler") : nullptr;
    if (function) reinterpret_cast<int (*)(decltype(&Ignore))>(function)(Ignore);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

Hush::~Hush() {
    dup2(kept, STDERR_FILENO);
    close(kept);
}

} // namespace fennic_voice
