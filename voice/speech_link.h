// The link to the speech server, another program: one-line messages in two string datarefs, its start-up
// sequence, and push-to-talk.
#pragma once

#include <string>
#include <vector>

extern std::vector<std::string> voiceList; // lines of "data/voicelist_mac.txt"
extern int setvoiceDone;    // start-up: 0 nothing sent, 1 voice, 2 volume and 3 rate stage done
extern int needCmdRecStart; // requests of the push-to-talk button
extern int needCmdRecStop;
extern int onAir; // the server is listening

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

// The steps of a frame. RunPushToTalk says whether it sent the stop of a recognition in this frame, which
// ReadServerMessage wants to know: a press without a word answers a question that takes any answer.
void RunVoiceStartup();
bool RunPushToTalk();
void ReadServerMessage(bool wasStoppedNow);

// Forgets requests and what was heard: flight time went back.
void ReInitSpeechLink();

// Everything as when the program starts.
void ResetSpeechLink();
