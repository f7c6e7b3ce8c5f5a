// The speech link. Messages go out as text plus a zero byte in one write; two in one frame leave only the
// second in the dataref, which the server's polling has to live with.
#include "voice/speech_link.h"

#include <algorithm>

#include "XPLMDataAccess.h"
#include "figure/animation.h"
#include "frame/datarefs.h"
#include "frame/settings.h"
#include "frame/simulator_datarefs.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"
#include "voice/recognition.h"

std::vector<std::string> voiceList;
int setvoiceDone = 0;
int needCmdRecStart = 0;
int needCmdRecStop = 0;
int onAir = 0;

namespace {

const char *const ToSpeechName = "kv/to_speech";
const char *const FrSpeechName = "kv/fr_speech";
const int MessageSize = 600;          // of the server's messages, bytes
const double VoiceAfterSec = 3.0;     // flight time before which no voice is chosen
const float SettingsAfterSec = 30.0F; // flight time before which volume and rate are not sent at start

XPLMDataRef DRFs_ToSpeech;
XPLMDataRef DRFs_FrSpeech;

void SendChosenVoice() {
    std::string chosen;
    if (globalGender == "w") chosen = globalVoiceW;
    if (globalGender == "m") chosen = globalVoiceM;
    for (const std::string &line : voiceList) {
        const std::string voice = RemoveNRS(line);
        if (voice != chosen) continue;
        SendMSG("initvoice>" + voice);
        return;
    }
}

} // namespace

void CreateSpeechDatarefs() {
    CreateDrf_String(ToSpeechName, "");
    CreateDrf_String(FrSpeechName, "");
    CreateDrf_Int("kv/diagnost/speech", 1);
    CreateDrf_Int("kv/diagnost/reco", 1);
    FindSpeechDatarefs();
}

void FindSpeechDatarefs() {
    DRFs_ToSpeech = FindDataref(ToSpeechName);
    DRFs_FrSpeech = FindDataref(FrSpeechName);
}

void SendMSG(const std::string &message) {
    XPLMSetDatab(DRFs_ToSpeech, const_cast<char *>(message.c_str()), 0, static_cast<int>(message.size()) + 1);
}

std::string ReadMSG() {
    char buffer[MessageSize];
    const int size = std::min(XPLMGetDatab(DRFs_FrSpeech, nullptr, 0, 0), MessageSize);
    const int count = size > 0 ? std::min(XPLMGetDatab(DRFs_FrSpeech, buffer, 0, size), size) : 0;
    char zero = '\0';
    XPLMSetDatab(DRFs_FrSpeech, &zero, 0, 1);
    return std::string(buffer, std::find(buffer, buffer + std::max(count, 0), '\0'));
}

bool isLateFlight() {
    return XPLMGetDataf(DRFf_TotalFlightTimeSec) > SettingsAfterSec;
}

void ReadVoiceList() {
    voiceList = ReadFileToVector(WhatPluginPath() + "data/voicelist_mac.txt");
}

// One stage a frame at most. The volume and rate stages are over whether or not flight time was late enough
// to send them: in a fresh flight the server keeps its own until the pilot changes them.
void RunVoiceStartup() {
    if (setvoiceDone == 0) {
        if (FlightTimeSEC <= VoiceAfterSec) return;
        SendChosenVoice();
        setvoiceDone = 1;
    } else if (setvoiceDone == 1) {
        if (isLateFlight()) SendMSG("volume>" + int2string(globalVolume));
        setvoiceDone = 2;
    } else if (setvoiceDone == 2) {
        if (isLateFlight()) SendMSG("rate>" + int2string(globalRate));
        setvoiceDone = 3;
    }
}

bool RunPushToTalk() {
    if (needCmdRecStart == 1) {
        needCmdRecStart = 0;
        SendMSG("CmdRecStart");
        isOnExecuteUntilNextCommand = 0;
        onAir = 1;
        isNewRecognitionMayCome = true;
        return false;
    }
    if (needCmdRecStop == 1) {
        needCmdRecStop = 0;
        SendMSG("CmdRecStop");
        onAir = 0;
        LastRecognition.clear();
        LastRecognitionOld.clear();
        return true;
    }
    return false;
}

void ReadServerMessage(bool wasStoppedNow) {
    const std::string message = ReadMSG();
    if (message == "stop>") {
        Next_lipsAnimTime = static_cast<float>(FlightTimeSEC);
    } else if (message == "abort") {
        Recognise(message);
        NewRecognition_Handler();
    } else if (!message.empty() && isNewRecognitionMayCome) {
        Recognise(message);
        if (LastRecognition != LastRecognitionOld) NewRecognition_Handler();
    } else if (message.empty() && isAnyInputGood && wasStoppedNow) {
        needCmdRecStop = 0;
        onAir = 0;
        Recognise("ANY");
        LastRecognitionOld.clear();
        NewRecognition_Handler();
    }
}

void ReInitSpeechLink() {
    needCmdRecStart = 0;
    needCmdRecStop = 0;
    LastRecognition.clear();
    LastRecognitionOld.clear();
    isOnExecuteUntilNextCommand = 0;
}

void ResetSpeechLink() {
    MakeFresh(voiceList, setvoiceDone, needCmdRecStart, needCmdRecStop, onAir, DRFs_ToSpeech, DRFs_FrSpeech);
}
