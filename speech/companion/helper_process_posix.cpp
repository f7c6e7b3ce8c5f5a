// POSIX processes. The input is a socket and not a pipe: writing to a pipe that nobody reads any more would
// raise a signal, which ends a simulator that does not expect it. All handles close when a program is
// started, ours and those of others, or the process would hold its own input open.
#include "speech/companion/helper_process.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#ifdef __APPLE__
#include <dlfcn.h>
#endif
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace fennic_speech {

namespace {

// The system's handles are of this type, and ours can hold one.
template <typename Handle> void Close(Handle &handle) {
    if (handle >= 0) close(static_cast<int>(handle));
    handle = -1;
}

void CloseBoth(int (&pair)[2]) {
    Close(pair[0]);
    Close(pair[1]);
}

bool MakeQuiet(int handle) {
    fcntl(handle, F_SETFD, FD_CLOEXEC);
    return fcntl(handle, F_SETFL, O_NONBLOCK) == 0;
}

void MakeExecutable(const std::string &program) {
    struct stat state = {};
    if (access(program.c_str(), X_OK) == 0 || stat(program.c_str(), &state) != 0 || !S_ISREG(state.st_mode))
        return;
    chmod(program.c_str(), state.st_mode | S_IXUSR | S_IXGRP | S_IXOTH);
}

// A Mac asks who is responsible for a process whether the microphone may be used, and that is who started it:
// the simulator, which says nothing about a microphone, and what has to be asked and says nothing is ended.
// So the process answers for itself, by the text in its bundle. Other programs that start programs ask so,
// too, but no header has the call; without it all stays as it is.
void LetAnswerForItself(posix_spawnattr_t &attributes) {
#ifdef __APPLE__
    using Disclaim = int (*)(posix_spawnattr_t *, int);
    const auto disclaim =
        reinterpret_cast<Disclaim>(dlsym(RTLD_DEFAULT, "responsibility_spawnattrs_setdisclaim"));
    if (disclaim) disclaim(&attributes, 1);
#else
    (void)attributes;
#endif
}

std::string DescribeEnd(int status) {
    if (WIFSIGNALED(status)) return "by signal " + std::to_string(WTERMSIG(status));
    return "with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

bool HelperProcess::StartProgram(const std::string &program, std::string &error) {
    MakeExecutable(program);
    int input[2] = {-1, -1}, result[2] = {-1, -1}, errorPipe[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, input) != 0 || pipe(result) != 0 || pipe(errorPipe) != 0) {
        error = std::strerror(errno);
        CloseBoth(input);
        CloseBoth(result);
        CloseBoth(errorPipe);
        return false;
    }
#ifdef SO_NOSIGPIPE
    const int on = 1;
    setsockopt(input[0], SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
    for (int handle : {input[0], result[0], errorPipe[0]}) MakeQuiet(handle);
    for (int handle : {input[1], result[1], errorPipe[1]}) fcntl(handle, F_SETFD, FD_CLOEXEC);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, result[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errorPipe[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    LetAnswerForItself(attributes);
    const char *const arguments[] = {program.c_str(), "--child", nullptr};
    pid_t started = 0;
    const int reason = posix_spawn(&started, program.c_str(), &actions, &attributes,
                                   const_cast<char *const *>(arguments), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    Close(input[1]);
    Close(result[1]);
    Close(errorPipe[1]);
    inputHandle = input[0];
    outputHandle = result[0];
    errorHandle = errorPipe[0];
    if (reason == 0)
        id = started;
    else
        error = std::strerror(reason);
    return reason == 0;
}

void HelperProcess::CloseInput() {
    Close(inputHandle);
}

void HelperProcess::CloseHandles() {
    Close(inputHandle);
    Close(outputHandle);
    Close(errorHandle);
}

void HelperProcess::Write() {
#ifdef MSG_NOSIGNAL
    const int flags = MSG_NOSIGNAL;
#else
    const int flags = 0;
#endif
    while (!waiting.empty() && inputHandle >= 0) {
        const ssize_t count = send(static_cast<int>(inputHandle), waiting.data(), waiting.size(), flags);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return; // full, or gone, which its output will tell
        waiting.erase(0, static_cast<size_t>(count));
    }
}

bool HelperProcess::ReadSome(Handle handle, LineBuffer &lines) {
    char buffer[4096];
    for (size_t round = 0; round < MostInAFrame / sizeof buffer; round++) {
        const ssize_t count = read(static_cast<int>(handle), buffer, sizeof buffer);
        if (count > 0) lines.Add(buffer, static_cast<size_t>(count));
        if (count == 0) return false;
        if (count < 0 && errno != EINTR) return errno == EAGAIN || errno == EWOULDBLOCK;
    }
    return true;
}

void HelperProcess::Read() {
    if (errorHandle >= 0 && !ReadSome(errorHandle, errors)) Close(errorHandle);
    if (outputHandle >= 0 && !ReadSome(outputHandle, output)) Close(outputHandle);
}

void HelperProcess::Reap(bool waits) {
    int status = 0;
    pid_t result = 0;
    for (int left = waits ? EndMilliseconds : 0; (result = waitpid(id, &status, WNOHANG)) == 0 && left > 0;
         left -= 10)
        poll(nullptr, 0, 10);
    if (result == 0) {
        kill(id, SIGKILL);
        while (waitpid(id, &status, 0) < 0 && errno == EINTR) continue;
    }
    ending = result < 0 ? "nobody knows how" : DescribeEnd(status); // somebody else in this process took it
    id = 0;
    CloseHandles();
}

} // namespace fennic_speech
