// The transcript of a flight, for a pilot's eyes: who speaks, which commands fire, which datarefs an action
// writes, which answers are waited for, each with the flight time. It is made from the simulator's events
// and from what the flight itself does.
#pragma once

#include <string>

#include "simhost/events.h"

namespace simhost {

// How the pilot speaks: the command that is held meanwhile, and the dataref of what was understood.
inline constexpr const char *PushToTalk = "kv/fennic/rec", *FromSpeechServer = "kv/fr_speech";

// Colour is used when stdout is a terminal. Paths under the simulator's folder are told as "X-Plane/...", so
// that the transcript of a flight is the same each time.
void OpenTranscript(bool shown, const std::string &xplaneFolder);
// The last line: what there was in all, and how long it took.
void CloseTranscript(double simulatedSeconds, double realSeconds);

// The listener to the simulator's events.
void TranscribeEvent(const Event &event);
// After each frame: tells an action that changed nothing, and what has settled.
void TranscribeFrameEnd();

// What the pilot does.
void TranscribeHeard(const std::string &text);
void TranscribeVoice(bool isThere);            // from now on her voice hears the pilot, or does not
void TranscribeReply(const std::string &text); // the speech server's, not spoken into the microphone
void TranscribeSet(const std::string &dataref, const std::string &value);
void TranscribeTap(const std::string &command);
void TranscribeAct(const std::string &act); // "clicks at 800, 300": with mouse, keyboard and menus

// While one of these is alive the pilot's commands and the push-to-talk messages are not told: what is
// heard or tapped is told as one line.
class TranscriptPause {
public:
    TranscriptPause();
    ~TranscriptPause();
    TranscriptPause(const TranscriptPause &) = delete;
    TranscriptPause &operator=(const TranscriptPause &) = delete;
};

// "(The simulator is paused.)"
void TranscribeDirection(const std::string &text);
// A flight's own narration.
void TranscribeNote(const std::string &text);

} // namespace simhost
