// What was heard last, what the running scripts wait for, and what happens to a new recognition before the
// systems cycle compares it with the expected phrases.
#pragma once

#include <string>
#include <vector>

#include "voice/link_words.h"

// What a script waits for.
struct input_struct {
    std::string name; // the device that expects them
    std::vector<std::string> texts;
};

struct RecognitionState {
    std::string newest;     // the newest recognised text; the systems cycle clears it when used
    std::string handled;    // the one handled last
    bool mayCome = false;   // set at push-to-talk, cleared when a recognition was used
    bool wasWord = false;   // used since push-to-talk: one of the words below, no silence and no answer
    bool isAnyGood = false; // a script waits for an answer that any utterance satisfies
    bool isSome = false;    // cleared when such an answer is consumed
    int isOnUntilNextCommand = 0;
    bool isSequenceRunning = false; // a serial device is running
    // What the running scripts wait for, rebuilt by the systems cycle every frame.
    std::vector<std::string> answers;
    std::vector<input_struct> inputs;
    std::vector<std::string> words; // of the inputs those that the select button comes to, behind the answers
    double unusedSec = 0.0;         // flight time with an empty queue since the newest came
    bool isCounting = false;        // false until the first frame that has seen it is over
};
extern RecognitionState recognitionState;
inline std::string &LastRecognition = recognitionState.newest;
inline std::string &LastRecognitionOld = recognitionState.handled;
inline bool &isNewRecognitionMayCome = recognitionState.mayCome;
inline bool &isAnyInputGood = recognitionState.isAnyGood;
inline bool &isRecognizeSome = recognitionState.isSome;
inline int &isOnExecuteUntilNextCommand = recognitionState.isOnUntilNextCommand;
inline bool &onChecklistOrProcedure = recognitionState.isSequenceRunning;
inline std::vector<std::string> &answers = recognitionState.answers;
inline std::vector<input_struct> &inputs = recognitionState.inputs;

// Where a text comes from that she hears.
enum class HeardFrom {
    Server,        // was spoken; counts between push-to-talk and its use alone, unless it is "abort"
    Silence,       // push-to-talk without a word, while any answer will do
    StopCommand,   // the pilot's command "stop"
    SelectCommand, // an answer that the held button confirms
    List,          // a line that was clicked
    Menu,          // an item of the menu "Commands"
};

// The one door for what was heard: the text becomes the recognition, which the systems cycle of this frame
// compares with what is waited for. An "abort" that was spoken, however it is written, or commanded also
// empties the action queue; one of the list says so.
void Hear(const std::string &text, HeardFrom source);

// Every sequence that runs is to be broken off.
inline bool isAbortHeard() {
    return LastRecognition == link_words::Abort;
}

// Nothing was heard, and the same text may come again.
void ForgetRecognition();

// Once a frame, behind the systems: an abort, which every running sequence has seen, is over, and so is a
// recognition that nothing has used while the action queue was empty for 15 s of flight time in all. What
// came too late must not answer another question.
void EndRecognition();

// Takes LastRecognition: "abort", however it is written, empties the action queue; anything else stays for
// the systems cycle.
void NewRecognition_Handler();

// Everything as when the program starts.
void ResetRecognition();
