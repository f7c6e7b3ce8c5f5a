// A talk with the speech server: the button, and what the server understood meanwhile.
#pragma once

// The steps of a frame. RunPushToTalk says whether it sent the stop of a recognition in this frame, which
// ReadServerMessage wants to know: a press without a word answers a question that takes any answer.
bool RunPushToTalk();
void ReadServerMessage(bool wasStoppedNow);

// Forgets requests and what was heard: flight time went back.
void ReInitSpeechLink();
