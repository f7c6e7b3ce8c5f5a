// The readers under libFuzzer, one for a run: the environment variable FENNIC_READER names it. Called with
// "--seeds FOLDER" instead, writes the sound inputs of all readers to FOLDER/<reader>/.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "tests/fuzz/readers.h"

namespace {

const char *reader = nullptr;

[[noreturn]] void WriteSeeds(const std::filesystem::path &folder) {
    for (const Reader &each : Readers) {
        std::filesystem::create_directories(folder / each.name);
        int number = 0;
        for (const std::string &seed : SeedsOf(each))
            std::ofstream(folder / each.name / ("seed" + std::to_string(number++)), std::ios::binary) << seed;
        std::puts(each.name);
    }
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***words) {
    if (*count == 3 && std::strcmp((*words)[1], "--seeds") == 0) WriteSeeds((*words)[2]);
    reader = std::getenv("FENNIC_READER");
    if (reader == nullptr || !ReadBytes(reader, "")) {
        std::fprintf(stderr, "FENNIC_READER names no reader\n");
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    ReadBytes(reader, std::string(reinterpret_cast<const char *>(data), size));
    return 0;
}
