// The C++ runtime inside the library sets memory aside for exceptions when there is none left, and never
// gives it back. The simulator loads and unloads the library with each aircraft, so it is given back here.
namespace __gnu_cxx {
void __freeres(); // of libstdc++, made for this
}

__attribute__((destructor)) static void FreeExceptionMemory() {
    __gnu_cxx::__freeres();
}
