#include <filesystem>

#include "speech/voice/system.h"

namespace fennic_voice {

const bool SystemSpeaks = false;
const unsigned long FramesPerBuffer = 0;

std::string ProgramFile() {
    std::error_code ignored;
    return std::filesystem::canonical("/proc/self/exe", ignored).string();
}

} // namespace fennic_voice
