// The lengths in the header are written at the end; until then they are the largest there are, which players
// take for "to the end of the file".
#include "simhost/sound/recording.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace simhost {

namespace {

constexpr unsigned Channels = 2, SampleBytes = 2, HeaderBytes = 44;

std::FILE *file = nullptr;
std::string path;
std::uint64_t blocks = 0;

void AddNumber(std::string &bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i));
}

void WriteHeader(std::uint64_t dataBytes) {
    const auto size =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(dataBytes, 0xFFFFFFFF - HeaderBytes));
    std::string header = "RIFF";
    AddNumber(header, size + HeaderBytes - 8, 4);
    header += "WAVEfmt ";
    AddNumber(header, 16, 4);
    AddNumber(header, 1, 2); // whole numbers
    AddNumber(header, Channels, 2);
    AddNumber(header, SoundRate, 4);
    AddNumber(header, SoundRate * Channels * SampleBytes, 4);
    AddNumber(header, Channels * SampleBytes, 2);
    AddNumber(header, SampleBytes * 8, 2);
    header += "data";
    AddNumber(header, size, 4);
    std::fwrite(header.data(), 1, header.size(), file);
}

} // namespace

bool BeginRecording(const std::string &newPath, std::string &error) {
    if (isRecording() && !EndRecording(error)) return false;
    path = newPath;
    blocks = 0;
    file = std::fopen(path.c_str(), "wbe");
    if (file == nullptr) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    WriteHeader(0xFFFFFFFF);
    return true;
}

bool isRecording() {
    return file != nullptr;
}

void Record(const SoundBlock &pilot, const SoundBlock &firstOfficer) {
    char bytes[BlockSamples * Channels * SampleBytes];
    char *next = bytes;
    for (std::size_t i = 0; i < BlockSamples; ++i)
        for (const std::int16_t sample : {pilot[i], firstOfficer[i]}) {
            *next++ = static_cast<char>(sample);
            *next++ = static_cast<char>(sample >> 8);
        }
    std::fwrite(bytes, 1, sizeof bytes, file);
    ++blocks;
}

bool EndRecording(std::string &error) {
    if (!isRecording()) return true;
    std::rewind(file);
    WriteHeader(blocks * BlockSamples * Channels * SampleBytes);
    const bool isWritten = std::ferror(file) == 0;
    const bool isClosed = std::fclose(file) == 0;
    file = nullptr;
    if (!isWritten || !isClosed) error = path + " could not be written whole";
    return isWritten && isClosed;
}

} // namespace simhost
