// What the running sequences wait for in this frame, collected by the cycle and published to the voice
// engine's answers and inputs when it differs from the frame before.
#pragma once

#include <string>

void BeginExpectations();

// An answer; one that is there already counts once.
void ExpectAnswer(const std::string &text);

// Any utterance will do.
void ExpectAnyAnswer();

// A checklist or procedure that may be called, of the device that expects it; joins the entry before it if
// that is of the same device. With isForButton the select button comes to it, behind the answers.
void ExpectInput(const std::string &device, const std::string &text, bool isForButton);

// Brings answers and inputs up to date. A change of the answers is logged: "Expected answers: a, b".
void PublishExpectations();

// Everything as when the program starts.
void ResetExpectations();
