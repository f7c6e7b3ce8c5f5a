// What is to be said, one text after the other, as a stream of sound.
#pragma once

#include <deque>
#include <future>
#include <span>
#include <string>
#include <vector>

#include "speech/voice/synthesis.h"

namespace fennic_voice {

// Where a text is cut so that its first sound does not wait for the last: behind sentences, in long ones
// behind clauses, in longer ones at a blank. The pieces without the blanks between them.
std::vector<std::string> CutIntoPieces(const std::string &text);

class Speaker {
public:
    // Waiting: sound is made when it is asked for, so that what comes out does not depend on how busy the
    // machine is. Otherwise it is made beside, and silence comes until it is there.
    explicit Speaker(bool isWaiting) : isWaiting(isWaiting) {}

    // From the next text on. A command that has failed is tried again.
    void SetVoice(const VoiceChoice &choice);
    void SetVolume(int percent) { volume = percent; }

    // Says the text behind those that wait. A long one is made piece by piece.
    void Say(const std::string &text);

    // Falls silent and forgets what waits.
    void Stop();

    // Fills the block with the sound that comes next, and with silence behind it. The length of the sound:
    // less than the block where all was spoken, or the next piece is not made yet.
    size_t Speak(std::span<int16_t> block);

    bool isSpeaking() const { return !pieces.empty() || next < sound.size() || made.valid(); }

    // True once after the last text that waited was spoken to its end.
    bool TakeFinished();

    // What could not be said, or not as it was wished, for the log; empty when there is nothing new.
    std::string TakeError();

private:
    struct Made {
        Samples sound;
        std::string error;
    };
    struct Piece {
        std::string text;
        VoiceChoice voice;
        double seconds; // given to it
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
    double pauseBeforeMade = 0.0, pauseBehindMade = 0.0; // seconds, of the piece that is being made
    std::string madeBy;                                  // the command that makes the piece
    std::string brokenCommand;                           // one that has failed

    bool hasNextPiece();
    void MakeNext();
};

} // namespace fennic_voice
