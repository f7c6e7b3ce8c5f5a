// What was heard last, what the running scripts wait for, and what happens to a new recognition before the
// systems cycle compares it with the expected phrases.
#pragma once

#include <string>
#include <vector>

extern std::string LastRecognition;    // the newest recognised text; the systems cycle clears it when used
extern std::string LastRecognitionOld; // the one handled last
extern bool isNewRecognitionMayCome;   // set at push-to-talk, cleared when a recognition was used
extern bool isAnyInputGood;            // a script waits for an answer that any utterance satisfies
extern bool isRecognizeSome;           // cleared when such an answer is consumed
extern int isOnExecuteUntilNextCommand;
extern bool onChecklistOrProcedure; // a serial device is running

// What the running scripts wait for, rebuilt by the systems cycle every frame.
struct input_struct {
    std::string name; // the device that expects them
    std::vector<std::string> texts;
};
extern std::vector<std::string> answers;
extern std::vector<input_struct> inputs;

// Makes a text the recognition, whoever it comes from: the server, the menu, the list or the select command.
void Recognise(const std::string &text);

// Once a frame, behind the systems: forgets a recognition that nothing has used while the action queue was
// empty for 15 s of flight time in all. What came too late must not answer another question.
void ForgetUnusedRecognition();

// Takes LastRecognition: "abort", however it is written, empties the action queue; anything else stays for
// the systems cycle.
void NewRecognition_Handler();

// Everything as when the program starts.
void ResetRecognition();
