// Of the companion it has the very code of the plug-in, which is linked to this program.
#include "bench/speech/helper_bench.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "XPLMDataAccess.h"
#include "XPLMProcessing.h"
#include "bench/allocations.h"
#include "bench/ways.h"
#include "simhost/interface/plugins.h"
#include "simhost/simulator.h"
#include "speech/companion/helper_process.h"
#include "tests/text_dataref.h"
#include "voice/link_words.h"

PLUGIN_API int XPluginStart(char *outName, char *outSig, char *outDesc);
PLUGIN_API void XPluginStop(void);
PLUGIN_API int XPluginEnable(void);
PLUGIN_API void XPluginDisable(void);

namespace speech_bench {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const double FrameSeconds = 1.0 / 60.0;
const std::chrono::seconds Patience{120}; // with a busy machine
const int MostMessages = 16;

// The first officer's datarefs.
class FirstOfficer {
public:
    FirstOfficer() {
        for (size_t i = 0; i < std::size(names); i++) PublishTextDataref(names[i], texts[i]);
        for (int i = 0; i < MostMessages; i++) Send();
    }
    // One more message, which costs the process next to nothing. The last sixteen remain.
    void Send() {
        std::string &all = texts[2];
        if (number >= MostMessages) all.erase(0, all.find('\n') + 1);
        char line[40];
        std::snprintf(line, sizeof line, "%d volume>90\n", ++number);
        all += line;
    }

private:
    int number = 0;
    static constexpr const char *names[] = {link_words::ToSpeech, link_words::FrSpeech, link_words::Messages,
                                            link_words::Expected};
    std::string texts[std::size(names)] = {"", "", "",
                                           "adjusted and locked\nlocked\nfastened\nbefore start checklist\n"};
};

struct Cost {
    double microseconds = 0.0; // of the fastest of some stretches
    double allocations = 0.0;  // of a frame, on average
};

template <typename Frame> Cost CostOf(Frame frame) {
    const int stretches = 200, frames = 2000;
    for (int i = 0; i < frames; i++) frame();
    const size_t before = AllocationCount();
    double fastest = 1e9;
    for (int stretch = 0; stretch < stretches; stretch++) {
        const double begin = ProcessorSec();
        for (int i = 0; i < frames; i++) frame();
        fastest = std::min(fastest, ProcessorSec() - begin);
    }
    return {fastest / frames * 1e6, static_cast<double>(AllocationCount() - before) / (stretches * frames)};
}

void Step() {
    simhost::StepFrame(FrameSeconds);
}

// Megabytes of a line of /proc/PROCESS/status, such as "VmRSS:".
double Megabytes(int process, const std::string &name) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::atof(line.c_str() + name.size()) / 1024.0;
    return 0.0;
}

// Waits until the process has written the line. False when it ends, or takes too long.
bool WaitFor(fennic_speech::HelperProcess &process, const std::string &wanted) {
    std::string line;
    for (const auto start = Clock::now(); process.isRunning() && Clock::now() - start < Patience;) {
        process.Exchange();
        while (process.TakeLogLine(line)) {
        }
        while (process.TakeLine(line))
            if (line == wanted) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

} // namespace

void MeasureCompanion() {
    const XPLMFlightLoop_f nothing = [](float, float, int, void *) { return -1.0F; };
    simhost::ResetSimulator();
    simhost::ActAsPlugin(COMPANION_LIBRARY);
    XPLMRegisterFlightLoopCallback(nothing, -1.0F, nullptr);
    const Cost host = CostOf(Step);

    simhost::ResetSimulator();
    simhost::ActAsPlugin(COMPANION_LIBRARY);
    FirstOfficer firstOfficer;
    char name[256], signature[256], description[256];
    XPluginStart(name, signature, description);
    XPluginEnable();
    const XPLMDataRef process = XPLMFindDataRef(link_words::VoiceProcess);
    const auto start = Clock::now(); // its first lines, and its model, are behind it then
    while (Clock::now() - start < std::chrono::seconds(5)) {
        Step();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    const bool runs = XPLMGetDatai(process) > 0;
    const Cost idle = CostOf(Step);
    const Cost carrying = CostOf([&] {
        firstOfficer.Send();
        Step();
    });
    if (!runs || XPLMGetDatai(process) == 0) std::printf("The companion has no process\n");
    XPluginDisable();
    XPluginStop();
    simhost::ResetSimulator();
    const auto print = [&](const char *when, const Cost &cost) {
        std::printf("The companion's frame %s: %.2f us, %.1f allocations\n", when,
                    cost.microseconds - host.microseconds, cost.allocations - host.allocations);
    };
    print("while nobody speaks", idle);
    print("with a message to carry", carrying);
}

void MeasureMemory(const fs::path &folder, const fs::path &recording, const std::string &phrase) {
    const fs::path home = folder / "process", program = home / "voice";
    fs::create_directories(home / "data");
    fs::copy_file(folder / "context.txt", home / "data/context.txt", fs::copy_options::overwrite_existing);
    std::ofstream(program) << "#!/bin/sh\nexec '" VOICE_PROGRAM "' --model '" SPEECH_MODEL "' --microphone '"
                           << recording.string() << "' \"$@\"\n";
    fs::permissions(program, fs::perms::owner_all);
    fennic_speech::HelperProcess process;
    std::string error;
    if (!process.Start(program, error)) {
        std::printf("The process cannot be started: %s\n", error.c_str());
        return;
    }
    process.Send(link_words::ContextPath + home.string() + "/");
    process.Send(link_words::RecStart);
    process.Send(link_words::RecStop);
    const bool hasHeard = WaitFor(process, phrase);
    const double heard = Megabytes(process.Id(), "VmRSS:");
    process.Send(std::string(link_words::Say) + "Before start checklist complete.");
    const bool hasSpoken = hasHeard && WaitFor(process, link_words::Spoken);
    const double spoken = Megabytes(process.Id(), "VmRSS:"), most = Megabytes(process.Id(), "VmHWM:");
    process.End();
    if (hasSpoken)
        std::printf(
            "The process: %.0f MB when it has understood a phrase, %.0f MB when it has spoken; at most "
            "%.0f MB\n",
            heard, spoken, most);
    else
        std::printf("The process did not %s\n", hasHeard ? "speak" : "understand the recording");
}

} // namespace speech_bench
