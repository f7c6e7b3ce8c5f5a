#include <filesystem>
#include <mach-o/dyld.h>

#include "speech/voice/system.h"

namespace fennic_voice {

const bool SystemSpeaks = true;

// Left to itself PortAudio asks a Mac for the smallest blocks that the device has, thousands a second. And
// where one device is microphone and loudspeaker, both directions have to ask for the same.
const unsigned long FramesPerBuffer = 256;

std::string ProgramFile() {
    uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size); // tells the size
    std::string path(size, '\0');
    std::error_code ignored;
    if (_NSGetExecutablePath(path.data(), &size) != 0) return "";
    return std::filesystem::canonical(path.c_str(), ignored).string();
}

} // namespace fennic_voice
