// What happens to the microphone's sound: while the button is held it is understood, phrase by phrase.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "speech/voice/recogniser.h"

namespace fennic_voice {

class Listener {
public:
    // understood is called with each phrase as soon as speech pauses behind it, at latest at the release.
    explicit Listener(std::function<void(const std::string &)> understood)
        : understood(std::move(understood)) {}

    // Null: there is no recognition, and all sound passes by.
    void SetRecogniser(Recogniser *engine);

    // What may be said: the whole list, and those of it that are expected now. They count from the next
    // press of the button on.
    void SetPhrases(std::vector<std::string> all);
    void SetExpected(std::vector<std::string> some);

    // The button.
    void Press();
    void Release();
    bool isListening() const { return isHeld; }

    void Hear(const Samples &block);

private:
    Recogniser *recogniser = nullptr;
    const std::function<void(const std::string &)> understood;
    std::vector<std::string> phrases, expected;
    bool haveChanged = true; // since the recogniser was told
    bool isHeld = false;
    std::deque<int16_t> before; // the last sound before the button
    double loudness = 0.0;      // of the loudest phrase since the button was pressed

    void Begin(std::span<const int16_t> noise);
    void End();
    bool Takes(const Heard &heard) const;
    void Understand(const Heard &heard);
};

} // namespace fennic_voice
