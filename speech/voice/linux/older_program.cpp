// What a program takes from the C library in a version newer than glibc 2.31, beside what older_c_library.cpp
// of util/linux/ gives it: threads and libraries, which have moved into that library since. The program asks
// for them by the version they have had all the time; an older system has them in libpthread and libdl, which
// it is linked with.
#include <pthread.h>
#include <sys/stat.h>

#ifdef __x86_64__
#define FIRST "GLIBC_2.2.5"
#define FIRST_OF_CANCELLING "GLIBC_2.3.3"
#else // those of ARM
#define FIRST "GLIBC_2.17"
#define FIRST_OF_CANCELLING "GLIBC_2.17"
#endif

// Declares the function as it was, by a name of its own.
#define OLDER(version, result, name, ...)                                                                    \
    extern "C" result older_##name(__VA_ARGS__);                                                             \
    __asm__(".symver older_" #name "," #name "@" version);                                                   \
    extern "C" result name(__VA_ARGS__)

using Function = void (*)();
using Main = int (*)(int, char **, char **);
struct UnwindBuffer;

OLDER(FIRST, void *, dlopen, const char *file, int mode) {
    return older_dlopen(file, mode);
}
OLDER(FIRST, void *, dlsym, void *library, const char *name) {
    return older_dlsym(library, name);
}
OLDER(FIRST, int, dlclose, void *library) {
    return older_dlclose(library);
}
OLDER(FIRST, char *, dlerror) {
    return older_dlerror();
}

OLDER(FIRST, int, pthread_create, pthread_t *thread, const pthread_attr_t *attributes, void *(*run)(void *),
      void *argument) {
    return older_pthread_create(thread, attributes, run, argument);
}
OLDER(FIRST, int, pthread_join, pthread_t thread, void **result) {
    return older_pthread_join(thread, result);
}
OLDER(FIRST, int, pthread_cancel, pthread_t thread) {
    return older_pthread_cancel(thread);
}
OLDER(FIRST, void, pthread_testcancel) {
    older_pthread_testcancel();
}
OLDER(FIRST_OF_CANCELLING, void, __pthread_register_cancel, UnwindBuffer *buffer) {
    older___pthread_register_cancel(buffer);
}
OLDER(FIRST_OF_CANCELLING, void, __pthread_unregister_cancel, UnwindBuffer *buffer) {
    older___pthread_unregister_cancel(buffer);
}
OLDER(FIRST_OF_CANCELLING, void, __pthread_unwind_next, UnwindBuffer *buffer) {
    older___pthread_unwind_next(buffer);
}

// On processors of 64 bits this is the other one, of older_c_library.cpp.
struct stat64;
extern "C" int fstat64(int file, struct stat64 *status) {
    return fstat(file, reinterpret_cast<struct stat *>(status));
}

// The newer start of a program finds its constructors itself, the older one is given a function that calls
// them.
extern "C" {
using Constructor = void (*)(int, char **, char **);
extern const Constructor __preinit_array_start[], __preinit_array_end[], __init_array_start[],
    __init_array_end[];
void _init();
}

static void Construct(int count, char **words, char **environment) {
    for (const Constructor *next = __preinit_array_start; next != __preinit_array_end; next++)
        (*next)(count, words, environment);
    _init();
    for (const Constructor *next = __init_array_start; next != __init_array_end; next++)
        (*next)(count, words, environment);
}

OLDER(FIRST, int, __libc_start_main, Main main, int count, char **words, Constructor construct,
      Function destruct, Function end, void *stack) {
    return older___libc_start_main(main, count, words, construct ? construct : Construct, destruct, end,
                                   stack);
}
