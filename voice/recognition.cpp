// The recognition handler. It decides nothing about phrases: that is the systems cycle's comparison blocks.
#include "voice/recognition.h"

#include "systems/checklists.h"
#include "util/clock.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "voice/action_queue.h"
#include "voice/executer.h"
#include "voice/phrases.h"

RecognitionState recognitionState;

namespace {

const double UnusedLifeSec = 15.0;

// Whether the handler takes it at once. What comes from list, menu and select command was read on the screen,
// and is as the scripts have it.
bool isHandled(const std::string &text, HeardFrom source) {
    switch (source) {
    case HeardFrom::Server: return text == link_words::Abort || text != LastRecognitionOld;
    case HeardFrom::Silence:
    case HeardFrom::StopCommand: return true;
    default: return false;
    }
}

} // namespace

void Hear(const std::string &text, HeardFrom source) {
    const bool isAbort = text == link_words::Abort;
    if (source == HeardFrom::Server && !isAbort && !isNewRecognitionMayCome) return;
    LastRecognition = text;
    recognitionState.isCounting = false;
    if (source == HeardFrom::Silence || source == HeardFrom::SelectCommand) LastRecognitionOld.clear();
    if (source == HeardFrom::List && isAbort) SayAborted();
    if (isHandled(text, source)) NewRecognition_Handler();
}

void ForgetRecognition() {
    LastRecognition.clear();
    LastRecognitionOld.clear();
}

void EndRecognition() {
    if (isAbortHeard()) {
        LastRecognition.clear(); // what starts from now on is not to be aborted
        EndBegunCommands();      // also when the menu or an answer says so
        DropStandBy();
    }
    double &unusedSec = recognitionState.unusedSec;
    if (!recognitionState.isCounting || LastRecognition.empty()) {
        unusedSec = 0.0;
        recognitionState.isCounting = !LastRecognition.empty();
        return;
    }
    if (executeFlow.empty()) unusedSec += FrpSEC;
    if (unusedSec < UnusedLifeSec) return;
    string2debugString("Forgotten, since nobody waited for it: ", LastRecognition, 1);
    ForgetRecognition();
}

void NewRecognition_Handler() {
    if (LastRecognition.empty()) {
        LastRecognitionOld = LastRecognition;
        return;
    }
    string2debugString("Just Get Recognition: ", LastRecognition, 1);
    if (MakeStrokaFromText(LastRecognition, NormaliseOnly).text == "ABORT") {
        LastRecognition = link_words::Abort; // however the server wrote it, as the systems cycle knows it
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
    MakeFresh(recognitionState);
}
