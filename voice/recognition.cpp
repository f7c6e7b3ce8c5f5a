// The recognition handler. It decides nothing about phrases: that is the systems cycle's comparison blocks.
#include "voice/recognition.h"

#include "util/clock.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "voice/action_queue.h"
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

namespace {

const double UnusedLifeSec = 15.0;

double unusedSec = 0.0;  // flight time with an empty queue since LastRecognition came
bool isCounting = false; // false until the first frame that has seen it is over

} // namespace

void Recognise(const std::string &text) {
    LastRecognition = text;
    isCounting = false;
}

void ForgetUnusedRecognition() {
    if (!isCounting || LastRecognition.empty()) {
        unusedSec = 0.0;
        isCounting = !LastRecognition.empty();
        return;
    }
    if (executeFlow.empty()) unusedSec += FrpSEC;
    if (unusedSec < UnusedLifeSec) return;
    string2debugString("Forgotten, since nobody waited for it: ", LastRecognition, 1);
    LastRecognition.clear();
    LastRecognitionOld.clear();
}

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

void ResetRecognition() {
    MakeFresh(LastRecognition, LastRecognitionOld, isNewRecognitionMayCome, isAnyInputGood, isRecognizeSome);
    MakeFresh(isOnExecuteUntilNextCommand, onChecklistOrProcedure, answers, inputs, unusedSec, isCounting);
}
