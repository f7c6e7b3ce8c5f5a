// Nothing is really flushed: that would only make the tests slow.
#include "tests/figure/interrupted_calls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

Interruption interruption = Interruption::None;
int chosen = 0, calls = 0;

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

int CallsSoFar() {
    return calls;
}

#define REAL(result, name, parameters)                                                                       \
    result __real_##name parameters;                                                                         \
    result __wrap_##name parameters

extern "C" {

int __real_open(const char *path, int flags, ...);
int __wrap_open(const char *path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (IsFailing(EACCES)) return -1;
    if (interruption == Interruption::ReadOnly && (flags & O_ACCMODE) != O_RDONLY) {
        errno = EROFS;
        return -1;
    }
    return __real_open(path, flags, mode);
}

REAL(ssize_t, read, (int file, void *buffer, size_t size)) {
    return IsFailing(EIO) ? -1 : __real_read(file, buffer, size);
}

REAL(ssize_t, write, (int file, const void *buffer, size_t size)) {
    const bool isLast = calls + 1 == chosen && interruption != Interruption::None;
    if (isLast && __real_write(file, buffer, size / 2) < 0) std::perror("write");
    return IsFailing(ENOSPC) ? -1 : __real_write(file, buffer, size);
}

REAL(int, close, (int file)) {
    const bool isFailing = IsFailing(EIO);
    const int result = __real_close(file); // what fails to close is closed all the same
    if (!isFailing) return result;
    errno = EIO;
    return -1;
}

REAL(int, rename, (const char *from, const char *to)) {
    return IsFailing(EACCES) ? -1 : __real_rename(from, to);
}

REAL(int, stat, (const char *path, struct stat *status)) {
    return IsFailing(EIO) ? -1 : __real_stat(path, status);
}

REAL(int, fchmod, (int file, mode_t mode)) {
    return IsFailing(EPERM) ? -1 : __real_fchmod(file, mode);
}

REAL(int, unlink, (const char *path)) {
    return IsDead() ? -1 : __real_unlink(path);
}

int __wrap_fsync(int file);
int __wrap_fsync(int) {
    return IsFailing(EIO) ? -1 : 0;
}
}
