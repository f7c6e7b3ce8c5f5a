// The link to the speech server, another program: one-line messages in two string datarefs, and its start-up
// sequence.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "XPLMDataAccess.h"

struct SpeechLinkState {
    std::vector<std::string> voiceList; // lines of "data/voicelist_mac.txt"
    int setvoiceDone = 0;               // start-up: 0 nothing sent, 1 voice, 2 volume and 3 rate stage done
    int needRecStart = 0, needRecStop = 0; // requests of the push-to-talk button
    int onAir = 0;                         // the server is listening
    XPLMDataRef toSpeech = nullptr, fromSpeech = nullptr;
    // The last messages, each behind its number, as the dataref of them shows them.
    XPLMDataRef messages = nullptr;
    unsigned long messageCount = 0;
    std::deque<std::string> messageLines;
};
extern SpeechLinkState speechLink;
inline std::vector<std::string> &voiceList = speechLink.voiceList;
inline int &setvoiceDone = speechLink.setvoiceDone;
inline int &needCmdRecStart = speechLink.needRecStart, &needCmdRecStop = speechLink.needRecStop;
inline int &onAir = speechLink.onAir;
inline XPLMDataRef &DRFs_ToSpeech = speechLink.toSpeech, &DRFs_FrSpeech = speechLink.fromSpeech;

// Publishes the link's datarefs and looks their handles up.
void CreateSpeechDatarefs();
void FindSpeechDatarefs();

// Writes one message, replacing the one before; nothing is queued or acknowledged.
void SendMSG(const std::string &message);

// Takes the server's message, at most 600 bytes; empty when there is none.
std::string ReadMSG();

void ReadVoiceList();

// True when flight time is past the 30 s before which volume is not sent.
bool isLateFlight();

// A step of each frame.
void RunVoiceStartup();

// Everything as when the program starts.
void ResetSpeechLink();
