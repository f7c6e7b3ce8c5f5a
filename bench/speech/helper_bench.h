// What the voice costs beside its time: the companion's frame in the simulator, and the process's memory.
#pragma once

#include <filesystem>
#include <string>

namespace speech_bench {

// The companion as it is installed, with its process, in the headless simulator: processor time and
// allocations of a frame in which nobody speaks, and of one in which it has a message to carry.
void MeasureCompanion();

// The process after it has read the phrases of folder/context.txt, understood the recording, which says the
// phrase, and spoken.
void MeasureMemory(const std::filesystem::path &folder, const std::filesystem::path &recording,
                   const std::string &phrase);

} // namespace speech_bench
