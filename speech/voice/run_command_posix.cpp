// Both ends are served as the program wants, since one that answers before it has read all would otherwise
// wait for us while we wait for it. Its input is a socket: a pipe that nobody reads any more raises a signal.
#include "speech/voice/run_command.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace fennic_voice {

namespace {

const int LongestMilliseconds = 10000;
#ifdef MSG_NOSIGNAL
const int NoSignal = MSG_NOSIGNAL;
#else
const int NoSignal = 0; // there the socket is told
#endif
const size_t LongestOutput = size_t{200} << 20;

struct Program {
    pid_t id = -1;
    int input = -1, output = -1; // our ends
};

void Close(int &handle) {
    if (handle >= 0) close(handle);
    handle = -1;
}

bool Start(const std::string &line, Program &program) {
    int input[2], output[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, input) != 0) return false;
    if (pipe(output) != 0) {
        close(input[0]);
        close(input[1]);
        return false;
    }
#ifdef SO_NOSIGPIPE
    const int on = 1;
    setsockopt(input[0], SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
    for (int handle : {input[0], input[1], output[0], output[1]}) fcntl(handle, F_SETFD, FD_CLOEXEC);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP); // so that all it starts can be ended
    const char *const arguments[] = {"sh", "-c", line.c_str(), nullptr};
    const int result = posix_spawn(&program.id, "/bin/sh", &actions, &attributes,
                                   const_cast<char *const *>(arguments), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    close(input[1]);
    close(output[1]);
    program.input = input[0];
    program.output = output[0];
    fcntl(program.input, F_SETFL, O_NONBLOCK);
    return result == 0;
}

// True when all of its output was read before the time was over.
bool Exchange(Program &program, const std::string &input, std::string &output) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(LongestMilliseconds);
    size_t written = 0;
    while (output.size() < LongestOutput) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd handles[] = {{program.output, POLLIN, 0}, {program.input, POLLOUT, 0}};
        if (left <= 0 || poll(handles, program.input >= 0 ? 2 : 1, static_cast<int>(left)) == 0) return false;
        if (handles[1].revents != 0 && program.input >= 0) {
            const ssize_t count =
                send(program.input, input.data() + written, input.size() - written, NoSignal);
            if (count > 0) written += static_cast<size_t>(count);
            if ((count < 0 && errno != EAGAIN && errno != EINTR) || written == input.size())
                Close(program.input);
        }
        if (handles[0].revents == 0) continue;
        char buffer[65536];
        const ssize_t count = read(program.output, buffer, sizeof buffer);
        if (count == 0) return true;
        if (count > 0) output.append(buffer, static_cast<size_t>(count));
    }
    return false;
}

} // namespace

bool RunCommand(const std::string &line, const std::string &input, std::string &output, std::string &error) {
    Program program;
    output.clear();
    if (!Start(line, program)) {
        error = std::strerror(errno);
        Close(program.input);
        Close(program.output);
        return false;
    }
    const bool isWhole = Exchange(program, input, output);
    Close(program.input);
    Close(program.output);
    if (!isWhole) kill(-program.id, SIGKILL);
    int status = 0;
    while (waitpid(program.id, &status, 0) < 0 && errno == EINTR) continue;
    const bool isGood = isWhole && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (!isWhole)
        error = "took too long";
    else if (!isGood)
        error = WIFEXITED(status) ? "ended with status " + std::to_string(WEXITSTATUS(status)) : "was ended";
    return isGood;
}

} // namespace fennic_voice
