// What the compiler and the C++ runtime inside the library would take from a C library newer than glibc 2.31.
// The library takes these instead; the list of what it exports shows them to nobody.
#include <atomic>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// Whether the process has but one thread, so that counters need not be atomic: the simulator has many.
extern "C" char __libc_single_threaded;
char __libc_single_threaded = 0;

// The kernel's structure is the C library's, on processors of 64 bits.
extern "C" int stat(const char *path, struct stat *status) {
    return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, status, 0));
}

extern "C" int lstat(const char *path, struct stat *status) {
    return static_cast<int>(syscall(SYS_newfstatat, AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW));
}

extern "C" int fstat(int file, struct stat *status) {
    return static_cast<int>(syscall(SYS_fstat, file, status));
}

// The older ones differ in the error that they leave in errno alone.
#ifdef __x86_64__
__asm__(".symver older_hypot,hypot@GLIBC_2.2.5");
__asm__(".symver older_hypotf,hypotf@GLIBC_2.2.5");
#else // ARM
__asm__(".symver older_hypot,hypot@GLIBC_2.17");
__asm__(".symver older_hypotf,hypotf@GLIBC_2.17");
#endif
extern "C" double older_hypot(double x, double y);
extern "C" float older_hypotf(float x, float y);
extern "C" double hypot(double x, double y) {
    return older_hypot(x, y);
}
extern "C" float hypotf(float x, float y) {
    return older_hypotf(x, y);
}

// 0 before, 1 while somebody does it, 2 when it is done.
extern "C" int pthread_once(pthread_once_t *control, void (*doIt)()) {
    const std::atomic_ref<int> state(*control);
    int before = 0;
    if (state.compare_exchange_strong(before, 1)) {
        try {
            doIt();
        } catch (...) {
            state = 0;
            throw;
        }
        state = 2;
    }
    while (state == 1) sched_yield();
    return 0;
}
