// A WAV file is a list of chunks; the format's and the samples' are looked at, all others are passed over.
// Programs that write to a pipe do not know the length yet and leave 0 or the largest number there: the
// samples then go to the end.
#include "speech/voice/wav_file.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>

#include "speech/voice/resampler.h"

namespace fennic_voice {

namespace {

const size_t LongestSeconds = 3600;

struct Format {
    unsigned kind = 0; // 1 whole numbers, 3 floating, 0xFFFE: see extension
    unsigned channels = 0, rate = 0, bits = 0;
};

unsigned Number(const std::string &bytes, size_t at, size_t size) {
    unsigned number = 0;
    for (size_t i = 0; i < size; i++)
        number |= static_cast<unsigned>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
    return number;
}

bool Fail(std::string &error, const char *reason) {
    error = reason;
    return false;
}

bool FindChunks(const std::string &bytes, Format &format, std::string &data, std::string &error) {
    if (bytes.size() < 12 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 4, "WAVE") != 0)
        return Fail(error, "no WAV file");
    for (size_t at = 12; at + 8 <= bytes.size();) {
        const std::string name = bytes.substr(at, 4);
        const size_t start = at + 8, rest = bytes.size() - start;
        size_t size = Number(bytes, at + 4, 4);
        if (name == "fmt " && size >= 16 && rest >= 16) {
            format = {Number(bytes, start, 2), Number(bytes, start + 2, 2), Number(bytes, start + 4, 4),
                      Number(bytes, start + 14, 2)};
            if (format.kind == 0xFFFE && size >= 26 && rest >= 26) format.kind = Number(bytes, start + 24, 2);
        } else if (name == "data") {
            if (size == 0 || size > rest) size = rest;
            data = bytes.substr(start, size);
            return true;
        }
        if (size > rest) break;
        at = start + size + size % 2;
    }
    return Fail(error, "a WAV file without samples");
}

// One sample, -1 to 1.
double Value(const std::string &data, size_t at, const Format &format) {
    const unsigned bits = format.bits;
    if (format.kind == 3) {
        float value = 0;
        std::memcpy(&value, data.data() + at, sizeof value);
        return std::isfinite(value) ? value : 0.0;
    }
    if (bits == 8) return (static_cast<unsigned char>(data[at]) - 128) / 128.0;
    const unsigned raw = Number(data, at, bits / 8) << (32 - bits); // the sign to the highest bit
    return static_cast<int32_t>(raw) / 2147483648.0;
}

} // namespace

bool ReadWav(const std::string &bytes, Samples &samples, std::string &error) {
    Format format;
    std::string data;
    if (!FindChunks(bytes, format, data, error)) return false;
    const bool isWhole =
        format.kind == 1 && (format.bits == 8 || format.bits == 16 || format.bits == 24 || format.bits == 32);
    const bool isFloating = format.kind == 3 && format.bits == 32;
    if ((!isWhole && !isFloating) || format.channels < 1 || format.channels > 16 || format.rate < 4000
        || format.rate > 384000)
        return Fail(error, "a WAV file of a kind that is not read here");
    const size_t sampleSize = format.bits / 8, frameSize = sampleSize * format.channels;
    const size_t count = data.size() / frameSize;
    if (count > LongestSeconds * format.rate) return Fail(error, "a WAV file of more than an hour");
    Samples all(count);
    for (size_t i = 0; i < count; i++) {
        double sum = 0;
        for (unsigned channel = 0; channel < format.channels; channel++)
            sum += Value(data, i * frameSize + channel * sampleSize, format);
        all[i] =
            static_cast<int16_t>(std::clamp(std::lround(sum / format.channels * 32767.0), -32768L, 32767L));
    }
    samples.clear();
    Resampler resampler(format.rate, SampleRate);
    resampler.Add(all, samples);
    resampler.Finish(samples);
    return true;
}

bool ReadWavFile(const std::string &path, Samples &samples, std::string &error) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return Fail(error, "cannot be read");
    std::ostringstream bytes;
    bytes << file.rdbuf(); // which, unlike its iterators, does not throw where the path is a folder
    return ReadWav(bytes.str(), samples, error);
}

bool WriteWavFile(const std::string &path, const Samples &samples) {
    std::ofstream file(path, std::ios::binary);
    const auto number = [&](uint32_t value, size_t size) {
        for (size_t i = 0; i < size; i++) file.put(static_cast<char>(value >> (8 * i)));
    };
    const auto bytes = static_cast<uint32_t>(samples.size() * 2);
    file << "RIFF";
    number(36 + bytes, 4);
    file << "WAVEfmt ";
    number(16, 4);
    number(1, 2);
    number(1, 2);
    number(SampleRate, 4);
    number(SampleRate * 2, 4);
    number(2, 2);
    number(16, 2);
    file << "data";
    number(bytes, 4);
    for (const int16_t sample : samples) number(static_cast<uint16_t>(sample), 2);
    return static_cast<bool>(file.flush());
}

} // namespace fennic_voice
