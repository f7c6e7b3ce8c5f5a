// Her messages are numbered lines of one dataref, the last sixteen of them. One of her that is older than
// that dataref has only the plain one, in which a message replaces the one before; there it is emptied after
// each reading, so that the same text twice is seen twice.
#include "speech/companion/link.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <string_view>

#include "XPLMDataAccess.h"
#include "voice/link_words.h"

namespace fennic_speech {

namespace {

const int FramesBetweenLooks = 30; // while she is missing
const size_t MostAnswers = 100;

struct Dataref {
    explicit Dataref(const char *name) : name(name) {}

    const char *name;
    XPLMDataRef handle = nullptr;
    std::string text; // as read last
    std::string read; // kept for its memory

    bool Find() {
        handle = XPLMFindDataRef(name);
        if (handle && !XPLMIsDataRefGood(handle)) handle = nullptr;
        return handle != nullptr;
    }
    // True when its text differs from the last one.
    bool Read();
};

bool Dataref::Read() {
    const int size = handle ? XPLMGetDatab(handle, nullptr, 0, 0) : 0;
    read.resize(size > 0 ? static_cast<size_t>(size) : 0);
    const int count = size > 0 ? XPLMGetDatab(handle, read.data(), 0, size) : 0;
    read.resize(count > 0 ? static_cast<size_t>(count) : 0);
    read.resize(std::min(read.find('\0'), read.size()));
    if (read == text) return false;
    text.swap(read);
    return true;
}

struct Link {
    Dataref toSpeech{link_words::ToSpeech}, frSpeech{link_words::FrSpeech}, messages{link_words::Messages},
        expected{link_words::Expected}, speechState{link_words::SpeechState},
        recognitionState{link_words::RecognitionState};
    int framesToLook = 0;
    bool isNew = false;
    unsigned long lastNumber = 0; // of the messages taken
    std::deque<std::string> taken, answers;
};
Link link_;

void Write(XPLMDataRef handle, const std::string &text) {
    XPLMSetDatab(handle, const_cast<char *>(text.c_str()), 0, static_cast<int>(text.size()) + 1);
}

// A number, a blank, the message. Numbers that begin anew are those of another one of her.
void TakeNumberedLines() {
    std::string_view text = link_.messages.text;
    unsigned long number = 0;
    const size_t lastLine = text.rfind('\n', text.empty() ? 0 : text.size() - 2);
    const std::string_view last = lastLine == std::string_view::npos ? text : text.substr(lastLine + 1);
    std::from_chars(last.data(), last.data() + last.size(), number);
    if (number < link_.lastNumber) link_.lastNumber = 0;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto [blank, error] = std::from_chars(line.data(), line.data() + line.size(), number);
        if (error != std::errc() || number <= link_.lastNumber) continue;
        link_.lastNumber = number;
        const size_t begin = static_cast<size_t>(blank - line.data()) + 1;
        link_.taken.emplace_back(begin < line.size() ? line.substr(begin) : std::string_view());
    }
}

void TakePlainMessage() {
    if (!link_.toSpeech.Read() || link_.toSpeech.text.empty()) return;
    link_.taken.push_back(link_.toSpeech.text);
    link_.toSpeech.text.clear();
    Write(link_.toSpeech.handle, "");
}

} // namespace

bool FindFirstOfficer() {
    Link &link = link_;
    if (link.frSpeech.handle && XPLMIsDataRefGood(link.frSpeech.handle)) return true;
    if (link.frSpeech.handle) {
        ResetLink();
        return false;
    }
    if (link.framesToLook-- > 0) return false;
    link.framesToLook = FramesBetweenLooks;
    if (!link.toSpeech.Find() || !link.frSpeech.Find()) {
        link.frSpeech.handle = nullptr;
        return false;
    }
    for (Dataref *dataref : {&link.messages, &link.expected, &link.speechState, &link.recognitionState})
        dataref->Find();
    link.isNew = true;
    return true;
}

bool hasComeAnew() {
    const bool isNew = link_.isNew;
    link_.isNew = false;
    return isNew;
}

bool TakeMessage(std::string &message) {
    if (link_.taken.empty()) {
        if (!link_.messages.handle)
            TakePlainMessage();
        else if (link_.messages.Read())
            TakeNumberedLines();
    }
    if (link_.taken.empty()) return false;
    message = std::move(link_.taken.front());
    link_.taken.pop_front();
    return true;
}

bool TakeExpected(std::string &phrases) {
    if (!link_.expected.handle || !link_.expected.Read()) return false;
    phrases = link_.expected.text;
    for (char &character : phrases)
        if (character == '\n') character = ';';
    return true;
}

void Answer(const std::string &message) {
    if (link_.answers.size() < MostAnswers) link_.answers.push_back(message);
}

void DeliverAnswer() {
    if (link_.answers.empty() || !link_.frSpeech.handle) return;
    if (XPLMGetDatab(link_.frSpeech.handle, nullptr, 0, 0) > 1) return;
    Write(link_.frSpeech.handle, link_.answers.front());
    link_.answers.pop_front();
}

void TellState(bool ofSpeech, int state) {
    XPLMDataRef handle = (ofSpeech ? link_.speechState : link_.recognitionState).handle;
    if (handle) XPLMSetDatai(handle, state);
}

void ResetLink() {
    link_ = Link();
}

} // namespace fennic_speech
