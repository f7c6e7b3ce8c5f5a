// fennic-voice: the command line. What the program does is in server.h; here are also its two ways to be
// tried out, understanding recordings and checking what works.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "speech/voice/check.h"
#include "speech/voice/recognise_files.h"
#include "speech/voice/server.h"
#include "speech/voice/system.h"

using namespace fennic_voice;

namespace {

const char *const Usage =
    "usage: fennic-voice [OPTION...]                     speak and listen: the link's messages, one a line,\n"
    "                                                    on the standard input and output\n"
    "       fennic-voice --recognise CONTEXT.txt [--expected FILE] [--scores] WAV...\n"
    "                                                    print what is understood in each recording\n"
    "       fennic-voice --check [CONTEXT.txt]           try everything once, and tell what works\n"
    "       fennic-voice --devices                       list microphones and loudspeakers\n"
    "\n"
    "  --microphone NAME    a device, or a part of its name; or a WAV file, heard from each CmdRecStart on\n"
    "  --loudspeaker NAME   a device, or a part of its name; or a WAV file to be written\n"
    "  --settings FILE      instead of settings.txt and user_settings.txt beside the program's folder\n"
    "  --model FOLDER       of the recognition, instead of model/ beside the program's folder\n"
    "  --child              end as soon as the input ends\n"
    "\n"
    "  echo 'say>Gear up.' | fennic-voice\n";

struct CommandLine {
    std::string microphone, loudspeaker, settings, model, context, expected;
    std::vector<std::string> recordings;
    bool isChild = false, wantsDevices = false, wantsCheck = false, wantsScores = false, wantsHelp = false;
};

// False, with a line, when it is none.
bool Read(int count, char **words, CommandLine &line) {
    const std::pair<const char *, std::string *> texts[] = {
        {"--microphone", &line.microphone}, {"--loudspeaker", &line.loudspeaker},
        {"--settings", &line.settings},     {"--model", &line.model},
        {"--recognise", &line.context},     {"--expected", &line.expected},
    };
    const std::pair<const char *, bool *> flags[] = {{"--child", &line.isChild},
                                                     {"--devices", &line.wantsDevices},
                                                     {"--check", &line.wantsCheck},
                                                     {"--scores", &line.wantsScores},
                                                     {"--help", &line.wantsHelp}};
    for (int i = 1; i < count; i++) {
        const std::string word = words[i];
        bool isKnown = false;
        for (const auto &[name, text] : texts)
            if (word == name && i + 1 < count) {
                *text = words[++i];
                isKnown = true;
            }
        for (const auto &[name, flag] : flags)
            if (word == name) *flag = isKnown = true;
        if (isKnown) continue;
        if (word.starts_with("--") || (line.context.empty() && !line.wantsCheck)) {
            std::fprintf(stderr, "fennic-voice: no option %s, or nothing behind it\n%s", word.c_str(), Usage);
            return false;
        }
        line.recordings.push_back(word);
    }
    return true;
}

// A recording, or a pipe from which one comes or to which one goes.
bool isWavFile(const std::string &name) {
    std::error_code ignored;
    return name.ends_with(".wav") || name.ends_with(".WAV") || std::filesystem::is_fifo(name, ignored);
}

// A host that gives the sound says so in the environment, since the companion starts us.
std::unique_ptr<Sound> OpenSound(const Settings &settings, bool isChild, std::string &error) {
    if (const char *host = std::getenv("FENNIC_VOICE_HOST"); host && *host != '\0')
        return ConnectToHost(host, error);
    if (isWavFile(settings.microphone) || isWavFile(settings.loudspeaker))
        return OpenSoundFiles(settings.microphone, settings.loudspeaker, isChild, error);
    return OpenDevices(settings.microphone, settings.loudspeaker);
}

// The server, or a check of all that it needs.
int Work(const Settings &settings, const CommandLine &line) {
    std::string error;
    const std::unique_ptr<Sound> sound = OpenSound(settings, line.isChild, error);
    if (!sound) {
        std::fprintf(stderr, "fennic-voice: no sound: %s\n", error.c_str());
        return 1;
    }
    if (!line.wantsCheck) return RunServer(*sound, settings, line.isChild);
    return CheckAll(*sound, !sound->isWaiting(), settings, line.recordings.empty() ? "" : line.recordings[0]);
}

int ListDevices() {
    for (const std::string &name : Microphones()) std::printf("microphone   %s\n", name.c_str());
    for (const std::string &name : Loudspeakers()) std::printf("loudspeaker  %s\n", name.c_str());
    return 0;
}

} // namespace

int main(int count, char **words) {
    PrepareStreams();
    CommandLine line;
    if (!Read(count, words, line)) return 2;
    if (line.wantsHelp) {
        std::fputs(Usage, stdout);
        return 0;
    }
    if (line.wantsDevices) return ListDevices();

    std::error_code ignored;
    std::filesystem::path program = ProgramFile();
    if (program.empty()) program = std::filesystem::canonical(words[0], ignored);
    std::filesystem::path home = program.parent_path().parent_path();
    if (home.filename() == "Contents")
        home = home.parent_path().parent_path().parent_path(); // of a Mac's bundle
    Settings settings;
    settings.modelFolder = (home / "model").string();
    if (!line.settings.empty()) {
        ReadSettings(line.settings, settings);
    } else {
        for (const char *name : {"settings.txt", "user_settings.txt"}) // the pilot's own come last
            ReadSettings((home / name).string(), settings);
    }
    for (const char *name : {"pronunciations.txt", "user_pronunciations.txt"})
        if (std::filesystem::exists(home / name)) settings.pronunciations.push_back((home / name).string());
    if (!line.model.empty()) settings.modelFolder = line.model;
    if (!line.microphone.empty()) settings.microphone = line.microphone;
    if (!line.loudspeaker.empty()) settings.loudspeaker = line.loudspeaker;
    if (!line.context.empty())
        return RecogniseFiles(settings, line.context, line.expected, line.recordings, line.wantsScores);
    return Work(settings, line);
}
