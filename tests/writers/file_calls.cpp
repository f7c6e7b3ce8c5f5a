// Nothing is really flushed: that would only make the tests slow.
#include "tests/writers/file_calls.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <dirent.h>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Harm harm = Harm::None;
int chosen = 0, chosenError = 0;
bool hasLinks = true;

// Whether this call is the one to fail. One that kills does not come back.
bool IsHarmed() {
    if (++counts->calls != chosen || harm == Harm::None || harm == Harm::KillHalfWay) return false;
    if (harm == Harm::Kill) kill(getpid(), SIGKILL);
    errno = chosenError;
    return true;
}

} // namespace

Counts *counts =
    new (mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Counts;

void HarmCalls(Harm how, int call, int error, bool hasSecondNames) {
    harm = how;
    chosen = call;
    chosenError = error;
    hasLinks = hasSecondNames;
    *counts = {};
}

// A call that fails, or goes through.
#define CALL(result, failed, name, parameters, arguments)                                                    \
    result __real_##name parameters;                                                                         \
    result __wrap_##name parameters {                                                                        \
        return IsHarmed() ? failed : __real_##name arguments;                                                \
    }

extern "C" {

CALL(ssize_t, -1, read, (int file, void *buffer, size_t size), (file, buffer, size))
CALL(int, -1, rename, (const char *from, const char *to), (from, to))
CALL(int, -1, unlink, (const char *path), (path))
CALL(int, -1, stat, (const char *path, struct stat *status), (path, status))
CALL(int, -1, lstat, (const char *path, struct stat *status), (path, status))
CALL(int, -1, fstat, (int file, struct stat *status), (file, status))
CALL(int, -1, fchmod, (int file, mode_t mode), (file, mode))
CALL(int, -1, chmod, (const char *path, mode_t mode), (path, mode))
CALL(int, -1, mkdir, (const char *path, mode_t mode), (path, mode))
CALL(int, -1, access, (const char *path, int mode), (path, mode))
CALL(char *, nullptr, realpath, (const char *path, char *resolved), (path, resolved))
CALL(DIR *, nullptr, opendir, (const char *path), (path))

int __real_open(const char *path, int flags, ...);
int __wrap_open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return IsHarmed() ? -1 : __real_open(path, flags, mode);
}

ssize_t __real_write(int file, const void *buffer, size_t size);
ssize_t __wrap_write(int file, const void *buffer, size_t size) {
    const bool isKilled = harm == Harm::KillHalfWay && counts->writes + 1 == chosen;
    const bool isHalf = isKilled || (harm == Harm::Fail && counts->calls + 1 == chosen);
    counts->writes++;
    if (isHalf && __real_write(file, buffer, size / 2) < 0) return -1;
    if (isKilled) kill(getpid(), SIGKILL);
    return IsHarmed() ? -1 : __real_write(file, buffer, size);
}

int __real_close(int file);
int __wrap_close(int file) {
    const bool isHarmed = IsHarmed();
    const int result = __real_close(file); // what fails to close is closed all the same
    if (isHarmed) errno = chosenError;
    return isHarmed ? -1 : result;
}

int __real_link(const char *path, const char *second);
int __wrap_link(const char *path, const char *second) {
    counts->links++;
    if (IsHarmed()) return -1;
    if (!hasLinks) errno = EPERM;
    return hasLinks ? __real_link(path, second) : -1;
}

int __wrap_fsync(int file);
int __wrap_fsync(int) {
    return IsHarmed() ? -1 : 0;
}
}
