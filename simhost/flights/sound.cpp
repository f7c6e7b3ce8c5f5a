// The calls on what is heard and said aloud: speak, noise, record, loudness, understood, simulator_said; and
// the sound of a frame.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/sound/microphone.h"
#include "simhost/sound/recording.h"
#include "simhost/sound/voice_host.h"
#include "simhost/system.h"

namespace simhost {

namespace {

constexpr const char *ProcessDataref = "fennic_speech/process", *ProgramName = "fennic-voice";
constexpr const char *Spoken = "stop>";
constexpr double BlocksASecond = static_cast<double>(SoundRate) / BlockSamples;

double blocksDue = 0; // of the time that has passed
int loudestNow = 0;   // of the loudspeaker's last block

bool hasDevices() {
    return flight.options.window || flight.options.realTime;
}

void NeedOwnTime(const Call &call) {
    if (hasDevices())
        call.Fail("with --window and --real-time the voice has the machine's own devices; fly without them");
}

// The program that speaks for the pilot, too; empty when none is there.
std::string VoiceProgram() {
    std::error_code failed;
    for (const std::string &folder : FindPluginFolders(flight.scratch.root + "Resources")) {
        const auto program = std::filesystem::path(FindPluginLibrary(folder)).parent_path()
                             / (std::string(ProgramName) + ProgramEnding);
        if (program.is_absolute() && std::filesystem::exists(program, failed)) return program.string();
    }
    return "";
}

int Speak(Call &call) {
    const std::string text = call.Text(1, "text");
    if (text.empty()) call.Refuse("text", "must not be empty");
    PilotsVoice voice;
    if (call.Has(2)) {
        const std::string who = call.Text(2, "voice");
        voice.isWoman = who == "woman";
        if (who != "woman" && who != "man")
            call.Refuse("voice", "must be \"man\" or \"woman\", got \"" + who + "\"");
    }
    if (call.Has(3)) voice.rate = static_cast<int>(call.Integer(3, "rate", 10, 100));
    NeedOwnTime(call);
    const std::string program = VoiceProgram();
    if (program.empty() && !text.ends_with(".wav"))
        call.Fail("nobody can say it: there is no plug-in fennic_speech in Resources/plugins");
    double seconds = 0;
    std::string error;
    if (!SpeakIntoMicrophone(text, voice, program, flight.scratch.root, seconds, error))
        call.Fail("\"" + text + "\": " + error);
    lua_pushnumber(call.lua, seconds);
    return 1;
}

int Noise(Call &call) {
    SetMicrophoneNoise(call.Has(1) ? call.Number(1, "below", -20, 100) : QuietRoom);
    return 0;
}

int RecordCall(Call &call) {
    std::string error;
    if (!call.Has(1)) {
        if (!EndRecording(error)) call.Fail(error);
        return 0;
    }
    const std::string path = call.Text(1, "path");
    if (path.empty()) call.Refuse("path", "must not be empty");
    NeedOwnTime(call);
    if (!BeginRecording(PathFromStart(path), error)) call.Fail(error);
    return 0;
}

int Loudness(Call &call) {
    lua_pushnumber(call.lua, loudestNow / 32768.0);
    return 1;
}

int SimulatorSaid(Call &call) {
    PushTexts(call.lua, TakeSimulatorSpeech());
    return 1;
}

int Understood(Call &call) {
    PushTexts(call.lua, flight.understood);
    flight.understood.clear();
    return 1;
}

int VoiceProcess() {
    if (flight.globalPlugins.empty()) return 0;
    SimulatorCall inside;
    return static_cast<int>(GetNumber(ProcessDataref));
}

} // namespace

bool StartSound(std::string &error) {
    if (hasDevices()) return true;
    {
        SimulatorCall socketsPlace;
        if (!OpenVoiceHost(HangSeconds(), error)) return false;
    }
    const std::string &recording = flight.options.recording;
    return recording.empty() || BeginRecording(PathFromStart(recording), error);
}

void RunFrameOfSound() {
    if (hasDevices()) return;
    AwaitVoice(VoiceProcess());
    TranscribeVoice(isVoiceConnected());
    if (!isVoiceConnected() && !isRecording() && !isPilotSpeaking()) {
        blocksDue = 0;
        loudestNow = 0;
        return;
    }
    for (blocksDue += flight.frameSeconds * BlocksASecond; blocksDue > 1 - 1e-6; blocksDue -= 1) {
        std::string begun;
        const SoundBlock microphone = HearMicrophone(begun);
        if (!begun.empty()) TranscribeHeard(begun);
        SoundBlock loudspeaker;
        ExchangeSound(microphone, loudspeaker);
        if (isRecording()) Record(microphone, loudspeaker);
        loudestNow = 0;
        for (const int sample : loudspeaker) loudestNow = std::max(loudestNow, std::abs(sample));
    }
    const std::string problem = TakeVoiceProblem();
    if (!problem.empty()) std::fprintf(stderr, "fennic-sim: %s\n", problem.c_str());
}

void NoteUnderstood(const Event &event) {
    if (event.kind == EventKind::DatarefWritten && event.subject == FromSpeechServer && !event.detail.empty()
        && event.detail != Spoken)
        flight.understood.push_back(event.detail);
}

bool EndSound() {
    CloseVoiceHost();
    ResetMicrophone();
    std::string error;
    if (EndRecording(error)) return true;
    std::fprintf(stderr, "fennic-sim: %s\n", error.c_str());
    return false;
}

void AddSoundCalls(lua_State *lua) {
    AddCalls(lua, {{"speak", Bridge<Speak>},
                   {"noise", Bridge<Noise>},
                   {"record", Bridge<RecordCall>},
                   {"loudness", Bridge<Loudness>},
                   {"understood", Bridge<Understood>},
                   {"simulator_said", Bridge<SimulatorSaid>}});
}

} // namespace simhost
