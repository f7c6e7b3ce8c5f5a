#include "util/checksum.h"

#include <cstdint>

std::string TextChecksum(std::string_view text) {
    const uint64_t offsetBasis = 0xCBF29CE484222325U, prime = 0x00000100000001B3U; // for 64 bits
    uint64_t checksum = offsetBasis;
    for (const char c : text)
        if (c != '\r') checksum = (checksum ^ static_cast<unsigned char>(c)) * prime;
    std::string digits(16, '0');
    for (size_t i = digits.size(); i-- > 0; checksum >>= 4U) digits[i] = "0123456789abcdef"[checksum & 0xFU];
    return digits;
}
