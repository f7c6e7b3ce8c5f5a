// The speech link. Messages go out as text plus a zero byte in one write; two in one frame leave only the
// second in the dataref. A server that must not lose one reads the list of the last messages beside it.
#include "voice/speech_link.h"

#include <algorithm>

#include "frame/datarefs.h"
#include "frame/settings.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/find_dataref.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"
#include "voice/link_words.h"

SpeechLinkState speechLink;

namespace {

const int MessageSize = 600; // of the server's messages, bytes
const size_t MessagesListed = 16;
const double VoiceAfterSec = 3.0;     // flight time before which no voice is chosen
const float SettingsAfterSec = 30.0F; // flight time before which volume and rate are not sent at start

void List(const std::string &message) {
    std::deque<std::string> &lines = speechLink.messageLines;
    std::string line = std::to_string(++speechLink.messageCount) + " " + message;
    for (char &character : line)
        if (character == '\n' || character == '\r' || character == '\0') character = ' ';
    lines.push_back(std::move(line));
    if (lines.size() > MessagesListed) lines.pop_front();
    std::string list;
    for (const std::string &listed : lines) list += listed + "\n";
    XPLMSetDatab(speechLink.messages, list.data(), 0, static_cast<int>(list.size()) + 1);
}

void SendChosenVoice() {
    std::string chosen;
    if (globalGender == "w") chosen = globalVoiceW;
    if (globalGender == "m") chosen = globalVoiceM;
    for (const std::string &line : voiceList) {
        const std::string voice = RemoveNRS(line);
        if (voice != chosen) continue;
        SendMSG(link_words::InitVoice + voice);
        return;
    }
}

} // namespace

void CreateSpeechDatarefs() {
    CreateDrf_String(link_words::ToSpeech, "");
    CreateDrf_String(link_words::FrSpeech, "");
    CreateDrf_Int(link_words::SpeechState, 1);
    CreateDrf_Int(link_words::RecognitionState, 1);
    speechLink.messages = CreateDrf_String(link_words::Messages, "");
    FindSpeechDatarefs();
}

void FindSpeechDatarefs() {
    DRFs_ToSpeech = FindDataref(link_words::ToSpeech);
    DRFs_FrSpeech = FindDataref(link_words::FrSpeech);
}

void SendMSG(const std::string &message) {
    XPLMSetDatab(DRFs_ToSpeech, const_cast<char *>(message.c_str()), 0, static_cast<int>(message.size()) + 1);
    List(message);
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
        if (isLateFlight()) SendMSG(link_words::Volume + int2string(globalVolume));
        setvoiceDone = 2;
    } else if (setvoiceDone == 2) {
        if (isLateFlight()) SendMSG(link_words::Rate + int2string(globalRate));
        setvoiceDone = 3;
    }
}

void ResetSpeechLink() {
    MakeFresh(speechLink);
}
