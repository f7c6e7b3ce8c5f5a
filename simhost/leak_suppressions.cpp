// Under the address sanitizer: Mesa's driver and the compiler that it brings keep memory until the process
// ends. Leaks of this project's own are still found.
extern "C" const char *__lsan_default_suppressions();

extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions() {
    return "leak:swrast_dri.so\n"
           "leak:libLLVM\n"
           "leak:libEGL_mesa.so\n"
           "leak:libglapi.so\n";
}
