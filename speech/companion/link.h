// The first officer's end of the speech link, as a neighbour in the same simulator sees it: her datarefs,
// which come and go with the aircraft.
#pragma once

#include <string>

namespace fennic_speech {

// Once a frame, before all below. Looks her datarefs up while they are missing; true while she is there.
bool FindFirstOfficer();

// True once after she has come: what was said before is not known to her any more.
bool hasComeAnew();

// The next message of hers that was not taken yet, in her order, none twice.
bool TakeMessage(std::string &message);

// True, with the phrases that she expects now, joined by ";", once after they have changed.
bool TakeExpected(std::string &phrases);

// Puts a message for her behind those that wait; she takes one a frame.
void Answer(const std::string &message);

// Hands her the next message that waits, if she has taken the one before.
void DeliverAnswer();

// Tells others how the halves of the link are: 1 works, 0 does not.
void TellState(bool ofSpeech, int state);

// Everything as at the start.
void ResetLink();

} // namespace fennic_speech
