// Checksums that tell one version of a text file from another. They are no protection against whoever wants
// them to be equal.
#pragma once

#include <string>
#include <string_view>

// FNV-1a with 64 bits (Fowler, Noll, Vo; RFC 9923), as 16 hexadecimal digits. Carriage returns are left out,
// so that other line ends make no other version.
std::string TextChecksum(std::string_view text);
