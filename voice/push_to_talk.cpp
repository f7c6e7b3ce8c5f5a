#include "voice/push_to_talk.h"

#include <string>

#include "figure/animation.h"
#include "util/clock.h"
#include "voice/link_words.h"
#include "voice/recognition.h"
#include "voice/speech_link.h"

bool RunPushToTalk() {
    if (needCmdRecStart == 1) {
        needCmdRecStart = 0;
        SendMSG(link_words::RecStart);
        isOnExecuteUntilNextCommand = 0;
        onAir = 1;
        isNewRecognitionMayCome = true;
        recognitionState.wasWord = false;
        return false;
    }
    if (needCmdRecStop == 1) {
        needCmdRecStop = 0;
        SendMSG(link_words::RecStop);
        onAir = 0;
        ForgetRecognition();
        return true;
    }
    return false;
}

void ReadServerMessage(bool wasStoppedNow) {
    const std::string message = ReadMSG();
    if (message == link_words::Spoken) {
        Next_lipsAnimTime = static_cast<float>(FlightTimeSEC);
    } else if (!message.empty()) {
        Hear(message, HeardFrom::Server);
    } else if (isAnyInputGood && wasStoppedNow && !recognitionState.wasWord) {
        needCmdRecStop = 0;
        onAir = 0;
        Hear("ANY", HeardFrom::Silence);
    }
}

void ReInitSpeechLink() {
    needCmdRecStart = 0;
    needCmdRecStop = 0;
    ForgetRecognition();
    isOnExecuteUntilNextCommand = 0;
}
