// The one phrase that is heard at any time, where the pilot wants it: while the button is up.
#pragma once

#include <functional>
#include <memory>

#include "speech/voice/listener.h"

namespace fennic_voice {

class AbortListener {
public:
    explicit AbortListener(const std::function<void(const std::string &)> &understood);

    // Of its own: it hears between two presses of the button, and another one in them.
    void SetRecogniser(std::unique_ptr<Recogniser> engine);

    // The microphone's sound while the button is up, and the end of it.
    void Hear(const Samples &block);
    void Pause() { listener.Release(); }

private:
    std::unique_ptr<Recogniser> recogniser;
    Listener listener;
    double background = 0.0;     // power of what is heard all the time
    size_t heard = 0, quiet = 0; // samples since it began to listen, and of silence at the end of them
};

} // namespace fennic_voice
