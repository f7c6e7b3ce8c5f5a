// One loop, a block of sound each turn: take what was written, listen, speak, answer. Only loading the model
// and making speech are done beside it, and not even they where time waits.
#include "speech/voice/server.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>

#include "speech/voice/lines.h"
#include "speech/voice/listener.h"
#include "speech/voice/phrase_file.h"
#include "speech/voice/speaker.h"
#include "voice/link_words.h"

namespace fennic_voice {

namespace {

struct Loaded {
    std::unique_ptr<Recogniser> recogniser;
    std::string error;
};

std::vector<std::string> ReadPhrases(const std::string &path) {
    std::vector<std::string> phrases;
    if (!ReadPhraseFile(path, phrases) || phrases.empty()) TellLog("reco 1 no phrases in " + path);
    return phrases;
}

std::vector<std::string> Split(const std::string &text, char separator) {
    std::vector<std::string> parts;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(separator, start), text.size());
        if (end > start) parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

class Server {
public:
    Server(Sound &sound, const Settings &settings)
        : sound(sound), settings(settings), speaker(sound.isWaiting()) {
        Load();
    }
    int Run(bool isChild);

private:
    Sound &sound;
    const Settings &settings;
    LineInput input;
    Speaker speaker;
    Listener listener{[this](const std::string &phrase) {
        if (phrase == link_words::Abort) speaker.Stop();
        Answer(phrase);
    }};
    std::unique_ptr<Recogniser> recogniser;
    std::future<Loaded> loading;
    int rate = 50;
    std::string voice;       // as the link names it
    bool isReleased = false; // while the recording goes on
    bool hasEnded = false;

    void Load();
    void TakeLoaded();
    void ChooseVoice();
    void Take(const std::string &message);
    void Answer(const std::string &message) { hasEnded |= !WriteLine(message); }
};

void Server::Load() {
    loading = std::async(std::launch::async, [this] {
        Loaded loaded;
        loaded.recogniser = Recogniser::Load(settings.modelFolder, settings.pronunciations, loaded.error);
        return loaded;
    });
    if (sound.isWaiting()) loading.wait();
}

void Server::TakeLoaded() {
    if (!loading.valid() || loading.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
    Loaded loaded = loading.get();
    recogniser = std::move(loaded.recogniser);
    listener.SetRecogniser(recogniser.get());
    if (!recogniser)
        TellLog("reco 0 " + loaded.error);
    else
        TellLog(sound.hasMicrophone() ? "reco 1 ready" : "reco 0 ready, but without a microphone");
}

void Server::ChooseVoice() {
    VoiceChoice choice;
    choice.isMan = isMansVoice(voice);
    choice.rate = rate;
    choice.command = choice.isMan ? settings.mansCommand : settings.womansCommand;
    speaker.SetVoice(choice);
}

void Server::Take(const std::string &message) {
    const size_t separator = message.find('>');
    const std::string verb = message.substr(0, separator == std::string::npos ? separator : separator + 1);
    const std::string argument = separator == std::string::npos ? "" : message.substr(separator + 1);
    const auto percent = [&] { return std::clamp(std::atoi(argument.c_str()), 10, 100); };
    if (verb == link_words::Say) {
        if (argument == link_words::AbortedText) speaker.Stop();
        speaker.Say(argument);
    } else if (verb == link_words::RecStart) {
        sound.Listen();
        listener.Press();
    } else if (verb == link_words::RecStop) {
        isReleased = true;
    } else if (verb == link_words::ExpectedNow) {
        listener.SetExpected(Split(argument, ';'));
    } else if (verb == link_words::ContextPath || verb == link_words::ContextPathUpdate) {
        listener.SetPhrases(ReadPhrases(argument + "data/context.txt"));
    } else if (verb == link_words::InitVoice || verb == link_words::SetVoice) {
        voice = argument;
        ChooseVoice();
    } else if (verb == link_words::Volume) {
        speaker.SetVolume(percent());
    } else if (verb == link_words::Rate) {
        rate = percent();
        ChooseVoice();
    } else if (verb == link_words::Restart) {
        speaker.Stop();
        listener.Release();
    } else if (verb == link_words::Exit) {
        hasEnded = true;
    } else if (!message.empty()) {
        TellLog("speech 1 no message of the link: " + message.substr(0, 200));
    }
}

int Server::Run(bool isChild) {
    Samples block;
    ChooseVoice();
    TellLog("speech 1 ready");
    while (!hasEnded && sound.Read(block)) {
        TakeLoaded();
        for (const std::string &message : input.Take())
            if (!hasEnded) Take(message);
        listener.Hear(block);
        if (isReleased && !sound.hasMore()) {
            listener.Release();
            isReleased = false;
        }
        speaker.Speak(block);
        if (const std::string error = speaker.TakeError(); !error.empty())
            TellLog("speech 1 not spoken: " + error);
        if (speaker.TakeFinished()) Answer(link_words::Spoken);
        for (const std::string &news : sound.TakeNews()) TellLog(news);
        sound.Write(block);
        if (input.isAtEnd() && (isChild || (!speaker.isSpeaking() && !isReleased && !loading.valid()))) break;
    }
    return 0;
}

} // namespace

int RunServer(Sound &sound, const Settings &settings, bool isChild) {
    return Server(sound, settings).Run(isChild);
}

} // namespace fennic_voice
