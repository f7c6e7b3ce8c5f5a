// fennic_speech, the companion plug-in: carries lines between the first officer's datarefs and the voice's
// process, keeps that process alive, and speaks with the simulator's own voice where there is none.
//
// All of it runs in the simulator's thread and never waits.
#include <algorithm>
#include <cstring>
#include <string>

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "speech/companion/helper_process.h"
#include "speech/companion/link.h"
#include "voice/link_words.h"

using namespace fennic_speech;

namespace {

const float EveryFrame = -1.0F;
const double ShortestDelay = 1.0, LongestDelay = 60.0; // seconds before the process is started again
const double HealthyAfter = 60.0;                      // seconds of life that end the growing of the delay
const int MostLogLines = 20;                           // of the process, a second

// What a process that is started anew must be told.
struct Remembered {
    std::string context, voice, volume, rate, expected;
};

struct Companion {
    std::string program;
    HelperProcess process;
    Remembered remembered;
    double startAt = 0.0, startedAt = 0.0, delay = ShortestDelay; // seconds of the simulator's run
    int logLines = 0;
    double logSecond = 0.0;
    std::string line; // kept for its memory
};
Companion companion;

void Log(const std::string &text) {
    XPLMDebugString(("FENNIC Speech: " + text + "\n").c_str());
}

double Now() {
    return XPLMGetElapsedTime();
}

// The plug-in's file is fennic_speech/64/lin.xpl, and the program lies beside it.
std::string ProgramPath() {
    char path[256 * 4] = "";
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    const std::string file = path;
    return file.substr(0, file.rfind('/') + 1) + "fennic-voice";
}

void StartProcess() {
    std::string error;
    companion.startedAt = Now();
    if (companion.process.Start(companion.program, error)) {
        const Remembered &remembered = companion.remembered;
        for (const std::string *message : {&remembered.context, &remembered.voice, &remembered.volume,
                                           &remembered.rate, &remembered.expected})
            if (!message->empty()) companion.process.Send(*message);
        return;
    }
    Log("cannot start " + companion.program + ": " + error + "; texts are spoken by the simulator");
    TellState(true, 0);
    TellState(false, 0);
    companion.startAt = Now() + LongestDelay;
}

void NoticeEnd() {
    const double now = Now();
    if (now - companion.startedAt > HealthyAfter) companion.delay = ShortestDelay;
    Log("the voice ended " + companion.process.Ending() + "; it is started again in "
        + std::to_string(static_cast<int>(companion.delay)) + " s");
    TellState(true, 0);
    TellState(false, 0);
    companion.startAt = now + companion.delay;
    companion.delay = std::min(companion.delay * 2.0, LongestDelay);
}

void KeepRunning() {
    const bool wasRunning = companion.process.isRunning();
    companion.process.Exchange();
    if (companion.process.isRunning()) return;
    if (wasRunning)
        NoticeEnd();
    else if (Now() >= companion.startAt)
        StartProcess();
}

bool BeginsWith(const std::string &text, const char *begin) {
    return text.compare(0, std::strlen(begin), begin) == 0;
}

void Remember(const std::string &message) {
    Remembered &remembered = companion.remembered;
    if (BeginsWith(message, link_words::ContextPath) || BeginsWith(message, link_words::ContextPathUpdate))
        remembered.context = link_words::ContextPath + message.substr(message.find('>') + 1);
    else if (BeginsWith(message, link_words::InitVoice) || BeginsWith(message, link_words::SetVoice))
        remembered.voice = message;
    else if (BeginsWith(message, link_words::Volume))
        remembered.volume = message;
    else if (BeginsWith(message, link_words::Rate))
        remembered.rate = message;
}

// "exit>" is the first officer's good-bye, when the aircraft is left: the voice falls silent, but waits for
// the next one.
void Carry(const std::string &message) {
    Remember(message);
    if (message == link_words::Exit) {
        companion.process.Send(link_words::Restart);
    } else if (message == link_words::Restart) {
        companion.process.End();
        companion.startAt = Now();
        companion.delay = ShortestDelay;
    } else if (!companion.process.Send(message) && BeginsWith(message, link_words::Say)) {
        XPLMSpeakString(message.c_str() + std::strlen(link_words::Say));
    }
}

// "speech 1 ready", "reco 0 no microphone": a half of the link, how it is, and why.
void TakeLogLine(const std::string &line) {
    const bool ofSpeech = BeginsWith(line, "speech ");
    if (ofSpeech || BeginsWith(line, "reco ")) {
        const size_t digit = ofSpeech ? 7 : 5;
        if (line.size() > digit && (line[digit] == '0' || line[digit] == '1'))
            TellState(ofSpeech, line[digit] - '0');
    }
    if (Now() - companion.logSecond >= 1.0) {
        if (companion.logLines > MostLogLines)
            Log(std::to_string(companion.logLines - MostLogLines) + " more lines of the voice are left out");
        companion.logSecond = Now();
        companion.logLines = 0;
    }
    if (++companion.logLines <= MostLogLines) Log(line);
}

void CarryLines() {
    std::string &line = companion.line;
    const bool isThere = FindFirstOfficer();
    while (isThere && TakeMessage(line)) Carry(line);
    if (isThere && TakeExpected(line)) {
        companion.remembered.expected = link_words::ExpectedNow + line;
        companion.process.Send(companion.remembered.expected);
    }
    while (companion.process.TakeLine(line))
        if (isThere) Answer(line);
    while (companion.process.TakeLogLine(line)) TakeLogLine(line);
    DeliverAnswer();
}

XPLMDataRef processDataref = nullptr;

int ReadProcess(void *) {
    return companion.process.Id();
}

float Frame(float, float, int, void *) {
    KeepRunning();
    CarryLines();
    return EveryFrame;
}

} // namespace

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc) {
    std::strcpy(outName, "Fennic speech");
    std::strcpy(outSig, "velmora.fennic.speech");
    std::strcpy(outDesc, "Voice and ears of the first officer");
    XPLMEnableFeature("XPLM_USE_NATIVE_PATHS", 1);
    companion = Companion();
    ResetLink();
    companion.program = ProgramPath();
    processDataref = XPLMRegisterDataAccessor(link_words::VoiceProcess, xplmType_Int, 0, ReadProcess, nullptr,
                                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr, nullptr);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    XPLMUnregisterDataAccessor(processDataref);
}

PLUGIN_API int XPluginEnable(void) {
    XPLMRegisterFlightLoopCallback(Frame, EveryFrame, nullptr);
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    XPLMUnregisterFlightLoopCallback(Frame, nullptr);
    companion.process.End();
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID, int, void *) {}
