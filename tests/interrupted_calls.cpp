// Nothing is really flushed: that would only make the tests slow.
#include "tests/interrupted_calls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Interruption interruption = Interruption::None;
int chosen = 0, calls = 0;
bool hasSecondNames = true;

bool IsDead() {
    return interruption == Interruption::Die && calls >= chosen;
}

// Whether this call fails.
bool IsFailing(int error) {
    calls++;
    const bool isFailing = IsDead() || (interruption == Interruption::FailOnce && calls == chosen);
    if (isFailing) errno = error;
    return isFailing;
}

} // namespace

void InterruptCalls(Interruption how, int call) {
    interruption = how;
    chosen = call;
    calls = 0;
}

void HaveSecondNames(bool have) {
    hasSecondNames = have;
}

int CallsSoFar() {
    return calls;
}

// A call that fails, or goes through.
#define CALL(result, name, error, parameters, arguments)                                                     \
    result __real_##name parameters;                                                                         \
    result __wrap_##name parameters {                                                                        \
        return IsFailing(error) ? -1 : __real_##name arguments;                                              \
    }

extern "C" {

CALL(ssize_t, read, EIO, (int file, void *buffer, size_t size), (file, buffer, size))
CALL(int, rename, EACCES, (const char *from, const char *to), (from, to))
CALL(int, stat, EIO, (const char *path, struct stat *status), (path, status))
CALL(int, fchmod, EPERM, (int file, mode_t mode), (file, mode))

int __real_open(const char *path, int flags, ...);
int __wrap_open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (IsFailing(EACCES)) return -1;
    const bool isRefused = interruption == Interruption::ReadOnly && (flags & O_ACCMODE) != O_RDONLY;
    if (isRefused) errno = EROFS;
    return isRefused ? -1 : __real_open(path, flags, mode);
}

ssize_t __real_write(int file, const void *buffer, size_t size);
ssize_t __wrap_write(int file, const void *buffer, size_t size) {
    const bool isLast = calls + 1 == chosen && interruption != Interruption::None;
    if (isLast && __real_write(file, buffer, size / 2) < 0) std::perror("write");
    return IsFailing(ENOSPC) ? -1 : __real_write(file, buffer, size);
}

int __real_close(int file);
int __wrap_close(int file) {
    const bool isFailing = IsFailing(EIO);
    const int result = __real_close(file); // what fails to close is closed all the same
    if (isFailing) errno = EIO;
    return isFailing ? -1 : result;
}

int __real_link(const char *path, const char *second);
int __wrap_link(const char *path, const char *second) {
    if (IsFailing(EPERM)) return -1;
    if (!hasSecondNames) errno = EPERM;
    return hasSecondNames ? __real_link(path, second) : -1;
}

int __real_unlink(const char *path);
int __wrap_unlink(const char *path) {
    return IsDead() ? -1 : __real_unlink(path);
}

int __wrap_fsync(int file);
int __wrap_fsync(int) {
    return IsFailing(EIO) ? -1 : 0;
}
}
