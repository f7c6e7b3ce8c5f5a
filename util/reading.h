// What comes of reading a file, or of looking for one, and how large one may be.
#pragma once

#include <cstdint>

// The largest files that are read, in bytes. A larger one counts as unreadable.
inline constexpr uint64_t SmallFile = 16 << 20;       // settings, lists, positions, presets, fonts
inline constexpr uint64_t SavedValuesFile = 16 << 20; // "_save.txt"
inline constexpr uint64_t SystemsFile = 64 << 20;
inline constexpr uint64_t PictureFile = 64 << 20;
inline constexpr uint64_t ObjectFile = 64 << 20;            // the figure's object, as it is installed
inline constexpr uint64_t AircraftFile = uint64_t{4} << 30; // .acf, and what is copied: read in pieces

enum class Reading {
    Absent, // nothing is there
    Failed, // something is there, or may be, and it was not read, or not to its end
    Read,
};

// Whether a file is at the path. Unknown when something else is, or when the system does not say, which is
// not the same as Absent where a file must not be lost.
enum class Presence { Absent, Present, Unknown };
