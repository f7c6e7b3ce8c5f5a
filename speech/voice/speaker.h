// What is to be said, one text after the other, as a stream of sound.
#pragma once

#include <deque>
#include <future>
#include <span>
#include <string>

#include "speech/voice/synthesis.h"

namespace fennic_voice {

class Speaker {
public:
    // Waiting: sound is made when it is asked for, so that what comes out does not depend on how busy the
    // machine is. Otherwise it is made beside, and silence comes until it is there.
    explicit Speaker(bool isWaiting) : isWaiting(isWaiting) {}

    void SetVoice(const VoiceChoice &choice) { voice = choice; } // from the next text on
    void SetVolume(int percent) { volume = percent; }

    // Says the text behind those that wait. A long one is made sentence by sentence.
    void Say(const std::string &text);

    // Falls silent and forgets what waits.
    void Stop();

    // Fills the block with the sound that comes next.
    void Speak(std::span<int16_t> block);

    bool isSpeaking() const { return !pieces.empty() || next < sound.size() || made.valid(); }

    // True once after the last text that waited was spoken to its end.
    bool TakeFinished();

    // What could not be said, for the log; empty when there is nothing new.
    std::string TakeError();

private:
    struct Made {
        Samples sound;
        std::string error;
    };
    struct Piece {
        std::string text;
        VoiceChoice voice;
    };

    const bool isWaiting;
    VoiceChoice voice;
    int volume = 100;
    std::deque<Piece> pieces; // not made yet
    std::future<Made> made;   // the piece that is being made
    Samples sound;            // the piece that is being spoken
    size_t next = 0;          // its first sample not spoken yet
    bool hasSpoken = false;   // since the last TakeFinished
    bool isDropped = false;   // what is being made is not to be spoken
    std::string error;

    bool hasNextPiece();
    void MakeNext();
};

} // namespace fennic_voice
