// The recognition handler. It decides nothing about phrases: that is the systems cycle's comparison blocks.
#include "voice/recognition.h"

#include "util/log.h"
#include "voice/executer.h"
#include "voice/phrases.h"

std::string LastRecognition;
std::string LastRecognitionOld;
bool isNewRecognitionMayCome = false;
bool isAnyInputGood = false;
bool isRecognizeSome = false;
int isOnExecuteUntilNextCommand = 0;
bool onChecklistOrProcedure = false;
std::vector<std::string> answers;
std::vector<input_struct> inputs;

void NewRecognition_Handler() {
    if (LastRecognition.empty()) {
        LastRecognitionOld = LastRecognition;
        return;
    }
    string2debugString("Just Get Recognition: ", LastRecognition, 1);
    if (MakeStrokaFromText(LastRecognition, NormaliseOnly).text == "ABORT") {
        LastRecognition = "abort"; // however the server wrote it, as the systems cycle knows it
        AbortExecution();
        return;
    }
    if (isAnyInputGood) {
        isAnyInputGood = false;
        isRecognizeSome = false;
    }
    LastRecognitionOld = LastRecognition;
}
