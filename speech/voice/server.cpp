// One loop, a block of sound each turn: take what was written, listen, speak, answer. Only loading the model
// and making speech are done beside it, and not even they where time waits.
#include "speech/voice/server.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>

#include "speech/voice/abort_listener.h"
#include "speech/voice/health.h"
#include "speech/voice/lines.h"
#include "speech/voice/listener.h"
#include "speech/voice/phrase_file.h"
#include "speech/voice/speaker.h"
#include "speech/voice/system.h"
#include "voice/link_words.h"

namespace fennic_voice {

namespace {

struct Loaded {
    std::unique_ptr<Recogniser> recogniser, second; // the second for the one phrase that is always heard
    std::string error;
};

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
        PrepareVoices();
        Load();
    }
    int Run(bool isChild);

private:
    Sound &sound;
    const Settings &settings;
    LineInput input;
    Speaker speaker;
    Health health{TellLog};
    Listener listener{[this](const std::string &phrase) { Understood(phrase); }};
    AbortListener abortListener{[this](const std::string &phrase) {
        if (!isSayingAborted) Understood(phrase); // she says the word herself then
    }};
    std::unique_ptr<Recogniser> recogniser;
    std::future<Loaded> loading;
    int rate = 50;
    std::string voice;       // as the link names it
    bool isReleased = false; // while the recording goes on
    bool isSayingAborted = false;
    bool hasEnded = false;
    std::string lastError; // of speaking, so that a lasting one is told once

    void Load();
    void TakeLoaded();
    void SetVoice();
    void ReadPhrases(const std::string &path);
    void Understood(const std::string &phrase);
    void SpeakAsWanted(size_t read, Samples &block);
    void TellNews();
    void Take(const std::string &message);
    void Answer(const std::string &message) { hasEnded |= !WriteLine(message); }
};

void Server::Load() {
    loading = std::async(std::launch::async, [this] {
        Loaded loaded;
        loaded.recogniser = Recogniser::Load(settings.modelFolder, settings.pronunciations, loaded.error);
        if (settings.hearsAbortAlways && loaded.recogniser)
            loaded.second = Recogniser::Load(settings.modelFolder, settings.pronunciations, loaded.error, 1);
        return loaded;
    });
    if (sound.isWaiting()) loading.wait();
}

void Server::TakeLoaded() {
    if (!loading.valid() || loading.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
    Loaded loaded = loading.get();
    recogniser = std::move(loaded.recogniser);
    listener.SetRecogniser(recogniser.get());
    abortListener.SetRecogniser(std::move(loaded.second));
    health.Set(Part::Model, loaded.error);
}

void Server::SetVoice() {
    VoiceChoice choice = ChooseVoice(voice, settings, SystemSpeaks);
    choice.rate = rate;
    speaker.SetVoice(choice);
}

void Server::ReadPhrases(const std::string &path) {
    std::vector<std::string> phrases;
    const bool isRead = ReadPhraseFile(path, phrases);
    health.Set(Part::Phrases, isRead && !phrases.empty() ? "" : "no phrases in " + path);
    listener.SetPhrases(std::move(phrases));
}

void Server::Understood(const std::string &phrase) {
    if (phrase == link_words::Abort) speaker.Stop();
    Answer(phrase);
}

void Server::Take(const std::string &message) {
    const size_t separator = message.find('>');
    const std::string verb = message.substr(0, separator == std::string::npos ? separator : separator + 1);
    const std::string argument = separator == std::string::npos ? "" : message.substr(separator + 1);
    const auto percent = [&] { return std::clamp(std::atoi(argument.c_str()), 10, 100); };
    if (verb == link_words::Say) {
        isSayingAborted = argument == link_words::AbortedText;
        if (isSayingAborted) speaker.Stop();
        speaker.Say(argument);
    } else if (verb == link_words::RecStart) {
        sound.Listen();
        abortListener.Pause();
        listener.Press();
    } else if (verb == link_words::RecStop) {
        isReleased = true;
    } else if (verb == link_words::ExpectedNow) {
        listener.SetExpected(Split(argument, ';'));
    } else if (verb == link_words::ContextPath || verb == link_words::ContextPathUpdate) {
        ReadPhrases(argument + "data/context.txt");
    } else if (verb == link_words::InitVoice || verb == link_words::SetVoice) {
        voice = argument;
        SetVoice();
    } else if (verb == link_words::Volume) {
        speaker.SetVolume(percent());
    } else if (verb == link_words::Rate) {
        rate = percent();
        SetVoice();
    } else if (verb == link_words::Restart) {
        speaker.Stop();
        listener.Release();
    } else if (verb == link_words::Exit) {
        hasEnded = true;
    } else if (!message.empty()) {
        TellLog("no message of the link: " + message.substr(0, 200));
    }
}

// Writing is the last thing, since a host goes on as soon as it has its sound.
void Server::SpeakAsWanted(size_t read, Samples &block) {
    block.resize(sound.Wanted(read));
    const size_t spoken = speaker.Speak(block);
    if (!sound.isSilenceWanted()) block.resize(spoken);
    if (speaker.TakeFinished()) {
        isSayingAborted = false;
        Answer(link_words::Spoken);
    }
    TellNews();
    sound.Write(block);
}

void Server::TellNews() {
    health.Set(Part::Microphone, sound.MicrophoneTrouble());
    health.Set(Part::Loudspeaker, sound.LoudspeakerTrouble());
    const std::string error = speaker.TakeError();
    if (!error.empty() && error != lastError) TellLog("not spoken as it should be: " + error);
    if (!error.empty()) lastError = error;
}

int Server::Run(bool isChild) {
    Samples block;
    SetVoice();
    health.Set(Part::Phrases, "");
    while (!hasEnded && sound.Read(block)) {
        TakeLoaded();
        for (const std::string &message : input.Take())
            if (!hasEnded) Take(message);
        if (!block.empty()) listener.Hear(block);
        if (!listener.isListening()) abortListener.Hear(block);
        if (isReleased && !sound.hasMore()) {
            listener.Release();
            isReleased = false;
        }
        SpeakAsWanted(block.size(), block);
        sound.SetIdle(!speaker.isSpeaking() && !listener.isListening());
        if (input.isAtEnd() && (isChild || (!speaker.isSpeaking() && !isReleased && !loading.valid()))) break;
    }
    return 0;
}

} // namespace

int RunServer(Sound &sound, const Settings &settings, bool isChild) {
    return Server(sound, settings).Run(isChild);
}

} // namespace fennic_voice
