#include "simhost/sound/run_program.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace simhost {

bool RunProgram(const std::vector<std::string> &words, const std::string &input) {
    std::vector<char *> arguments, environment;
    for (const std::string &word : words) arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    for (char **variable = environ; *variable != nullptr; ++variable)
        if (std::strncmp(*variable, "FENNIC_VOICE_HOST=", 18) != 0) environment.push_back(*variable);
    environment.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failed =
        posix_spawn(&process, words[0].c_str(), &actions, nullptr, arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    while (failed == 0 && waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    return failed == 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace simhost
