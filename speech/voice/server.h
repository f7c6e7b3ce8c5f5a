// The speech server: takes the link's messages from the standard input, speaks, listens, and writes its own
// to the standard output.
#pragma once

#include <string>

#include "speech/voice/settings.h"
#include "speech/voice/sound.h"

namespace fennic_voice {

// Works until "exit>", until nobody reads its answers, or until the input has ended and all was spoken; as
// somebody's child it ends with the input. The program's status.
int RunServer(Sound &sound, const Settings &settings, bool isChild);

} // namespace fennic_voice
