// fennic_speech, the companion plug-in: carries lines between the first officer's datarefs and the voice's
// process, keeps that process alive, and speaks with the simulator's own voice where there is none.
//
// All of it runs in the simulator's thread and never waits.
#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"
#include "speech/companion/helper_process.h"
#include "speech/companion/link.h"
#include "speech/companion/patience.h"
#include "voice/link_words.h"

using namespace fennic_speech;

namespace {

using Clock = Patience::Clock;

const float EveryFrame = -1.0F;
const double ShortestDelay = 1.0, LongestDelay = 60.0; // seconds before the process is started again
const double HealthyAfter = 60.0;                      // seconds of life that end the growing of the delay
const int MostLogLines = 20;                           // of the process, a second
const size_t LongestAnswer = 599;                      // bytes that she takes of a message
const std::chrono::milliseconds TimeToEnd{500};

// What a process that is started anew must be told.
struct Remembered {
    std::string context, voice, volume, rate, expected;
};

struct Companion {
    std::string program;
    HelperProcess process;
    Remembered remembered;
    double startAt = 0.0, startedAt = 0.0, delay = ShortestDelay; // seconds of the simulator's run
    std::string lastFailure;                                      // to start the process
    bool isRestarting = false;
    bool canSpeak = true, canHear = true; // as the process told, or as its absence tells
    int logLines = 0;
    double logSecond = 0.0;
    std::string line; // kept for its memory

    Patience patience; // with what it was given to say
    Clock::time_point killAt;
};
Companion companion;

void Log(const std::string &text) {
    XPLMDebugString(("FENNIC Speech: " + text + "\n").c_str());
}

// The same of a problem, told to programs as the first officer tells hers.
void LogProblem(const std::string &text) {
    Log(text);
    const XPLMDataRef told = XPLMFindDataRef(link_words::LogTold);
    std::string record = "error\t\tFENNIC Speech: " + text;
    if (told) XPLMSetDatab(told, record.data(), 0, static_cast<int>(record.size()) + 1);
}

double Now() {
    return XPLMGetElapsedTime();
}

// The plug-in's file is fennic_speech/64/lin.xpl, and the program lies beside it; on a Mac in its bundle, so
// that the system knows whom it asks about the microphone.
std::string ProgramPath() {
    char path[256 * 4] = "";
    XPLMGetPluginInfo(XPLMGetMyID(), nullptr, path, nullptr, nullptr);
    const std::string file = path;
    return file.substr(0, file.find_last_of("/\\") + 1) + HELPER_PROGRAM;
}

void SetState(bool ofSpeech, bool works) {
    (ofSpeech ? companion.canSpeak : companion.canHear) = works;
    TellState(ofSpeech, works ? 1 : 0);
}

bool BeginsWith(const std::string &text, const char *begin) {
    return text.compare(0, std::strlen(begin), begin) == 0;
}

// What comes from the voice, so many lines a second.
void LogOfVoice(const std::string &line) {
    if (Now() - companion.logSecond >= 1.0) {
        if (companion.logLines > MostLogLines)
            Log(std::to_string(companion.logLines - MostLogLines) + " more lines of the voice are left out");
        companion.logSecond = Now();
        companion.logLines = 0;
    }
    const bool isProblem = BeginsWith(line, "speech 0") || BeginsWith(line, "reco 0");
    if (++companion.logLines <= MostLogLines) (isProblem ? LogProblem : Log)(line);
}

// "speech 1 ready", "reco 0 no microphone": a half of the link, how it is, and why.
void TakeState(const std::string &line) {
    const bool ofSpeech = BeginsWith(line, "speech ");
    if (!ofSpeech && !BeginsWith(line, "reco ")) return;
    const size_t digit = ofSpeech ? 7 : 5;
    if (line.size() > digit && (line[digit] == '0' || line[digit] == '1'))
        SetState(ofSpeech, line[digit] == '1');
}

void StartProcess() {
    std::string error;
    companion.startedAt = Now();
    companion.patience.Forget();
    if (companion.process.Start(companion.program, error)) {
        companion.lastFailure.clear();
        companion.canSpeak = true; // or it will tell; what is said meanwhile waits for it
        const Remembered &remembered = companion.remembered;
        for (const std::string *message : {&remembered.context, &remembered.voice, &remembered.volume,
                                           &remembered.rate, &remembered.expected})
            if (!message->empty()) companion.process.Send(*message);
        return;
    }
    if (error != companion.lastFailure)
        LogProblem("cannot start " + companion.program + ": " + error
                   + "; texts are spoken by the simulator");
    companion.lastFailure = error;
    SetState(true, false);
    SetState(false, false);
    companion.startAt = Now() + LongestDelay;
}

void NoticeEnd() {
    const double now = Now();
    SetState(true, false);
    SetState(false, false);
    companion.startAt = now;
    if (std::exchange(companion.isRestarting, false)) return;
    if (now - companion.startedAt > HealthyAfter) companion.delay = ShortestDelay;
    LogProblem("the voice ended " + companion.process.Ending() + "; it is started again in "
               + std::to_string(static_cast<int>(companion.delay)) + " s");
    companion.startAt += companion.delay;
    companion.delay = std::min(companion.delay * 2.0, LongestDelay);
}

// One that does not say what it was given to say hangs.
void NoticeSilence() {
    if (companion.isRestarting) {
        if (Clock::now() > companion.killAt) companion.process.Kill();
    } else if (companion.patience.isOver(Now(), Clock::now())) {
        LogProblem("the voice does not say what it was given to say");
        companion.process.Kill();
    }
}

void KeepRunning() {
    const bool wasRunning = companion.process.isRunning();
    companion.process.Exchange();
    while (companion.process.TakeLogLine(companion.line)) {
        TakeState(companion.line);
        LogOfVoice(companion.line);
    }
    if (companion.process.isRunning()) NoticeSilence();
    if (companion.process.isRunning()) return;
    if (wasRunning) NoticeEnd();
    if (Now() >= companion.startAt) StartProcess();
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

// A process that has no loudspeaker is not asked: the simulator may have one.
void Say(const std::string &message) {
    const char *const text = message.c_str() + std::strlen(link_words::Say);
    if (companion.canSpeak && !companion.isRestarting && companion.process.Send(message))
        companion.patience.Give(message.size(), Now(), Clock::now());
    else
        XPLMSpeakString(text);
}

// "exit>" is the first officer's good-bye, when the aircraft is left: the voice falls silent, but waits for
// the next one.
void Carry(const std::string &message) {
    Remember(message);
    if (BeginsWith(message, link_words::Say)) {
        Say(message);
    } else if (message == link_words::Restart) {
        companion.startAt = Now();
        companion.delay = ShortestDelay;
        companion.killAt = Clock::now() + TimeToEnd;
        companion.isRestarting = companion.process.isRunning();
        companion.process.Leave();
    } else {
        companion.process.Send(message == link_words::Exit ? link_words::Restart : message);
    }
}

// What the voice writes is a message of the link, or it is no voice.
void TakeAnswer(const std::string &line, bool isThere) {
    if (line == link_words::Spoken) companion.patience.Forget();
    const bool isText = !line.empty() && line.size() <= LongestAnswer
                        && std::none_of(line.begin(), line.end(), [](unsigned char c) { return c < ' '; });
    if (isText && isThere) Answer(line);
    if (isText || !companion.process.isRunning()) return;
    LogProblem("the voice writes what is no message");
    companion.process.Kill();
    NoticeEnd();
}

void CarryLines() {
    std::string &line = companion.line;
    const bool isThere = FindFirstOfficer();
    if (isThere && hasComeAnew()) {
        TellState(true, companion.canSpeak ? 1 : 0);
        TellState(false, companion.canHear ? 1 : 0);
    }
    while (isThere && TakeMessage(line)) Carry(line);
    if (isThere && TakeExpected(line)) {
        companion.remembered.expected = link_words::ExpectedNow + line;
        companion.process.Send(companion.remembered.expected);
    }
    while (companion.process.TakeLine(line)) TakeAnswer(line, isThere);
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
