// While one piece is spoken the next is made, one at a time: the engine is not made for more. A piece is so
// short that the built-in voices make it in a fifth of a second.
#include "speech/voice/speaker.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace fennic_voice {

namespace {

// Characters from which on a text is cut where a clause ends, at a blank, and anywhere.
const size_t CutBehindClause = 50, CutAtBlank = 90, CutAnywhere = 160;
const double PauseBehindSentence = 0.25, PauseBehindClause = 0.12; // seconds

bool isOneOf(char character, const char *characters) {
    return character != '\0' && std::strchr(characters, character) != nullptr;
}

// The end of the text's first piece.
size_t EndOfPiece(const std::string &text) {
    for (size_t i = 0; i + 1 < text.size(); i++) {
        const bool isBlankNext = text[i + 1] == ' ', isWhole = (text[i + 1] & 0xC0) != 0x80;
        if (isBlankNext && isOneOf(text[i], ".!?")) return i + 1;
        if (isBlankNext && i >= CutBehindClause && isOneOf(text[i], ",;:")) return i + 1;
        if ((isBlankNext && i >= CutAtBlank) || (isWhole && i >= CutAnywhere)) return i + 1;
    }
    return text.size();
}

double PauseBehind(const std::string &piece) {
    if (isOneOf(piece.back(), ".!?")) return PauseBehindSentence;
    return isOneOf(piece.back(), ",;:") ? PauseBehindClause : 0.0;
}

} // namespace

std::vector<std::string> CutIntoPieces(const std::string &text) {
    std::vector<std::string> pieces;
    for (size_t start = text.find_first_not_of(' '); start != std::string::npos;) {
        const std::string rest = text.substr(start, CutAnywhere + 4);
        const size_t end = EndOfPiece(rest);
        pieces.push_back(rest.substr(0, end));
        start = text.find_first_not_of(' ', start + end);
    }
    return pieces;
}

void Speaker::SetVoice(const VoiceChoice &choice) {
    voice = choice;
    brokenCommand.clear();
}

void Speaker::Say(const std::string &text) {
    const std::vector<std::string> texts = CutIntoPieces(text);
    double given = SecondsGiven(CountCharacters(text), voice.rate), characters = 0.0;
    for (const std::string &piece : texts) {
        characters += static_cast<double>(CountCharacters(piece));
        if (&piece != &texts.back()) given -= PauseBehind(piece);
    }
    for (const std::string &piece : texts)
        pieces.push_back({piece, voice, given * static_cast<double>(CountCharacters(piece)) / characters});
    hasSpoken = true;
    MakeNext();
}

void Speaker::Stop() {
    pieces.clear();
    sound.clear();
    next = 0;
    isDropped = made.valid();
    pauseBehindMade = 0.0;
}

void Speaker::MakeNext() {
    if (made.valid() || pieces.empty()) return;
    Piece piece = std::move(pieces.front());
    pieces.pop_front();
    if (piece.voice.command == brokenCommand) piece.voice.command.clear();
    madeBy = piece.voice.command;
    pauseBeforeMade = std::exchange(pauseBehindMade, PauseBehind(piece.text));
    auto make = [piece = std::move(piece)] {
        Made result;
        Synthesise(piece.text, piece.voice, result.sound, result.error, piece.seconds);
        return result;
    };
    made = std::async(isWaiting ? std::launch::deferred : std::launch::async, std::move(make));
}

// Takes the piece that was made, if it is there.
bool Speaker::hasNextPiece() {
    if (!made.valid()) MakeNext();
    if (!made.valid()) return false;
    if (!isWaiting && made.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return false;
    Made result = made.get();
    const bool isWanted = !isDropped;
    isDropped = false;
    if (!result.error.empty() && !madeBy.empty()) brokenCommand = madeBy;
    const auto pause = static_cast<size_t>(pauseBeforeMade * SampleRate);
    MakeNext();
    if (!isWanted) return true;
    if (!result.error.empty()) error = std::move(result.error);
    sound.assign(pause, 0);
    sound.insert(sound.end(), result.sound.begin(), result.sound.end());
    next = 0;
    return true;
}

size_t Speaker::Speak(std::span<int16_t> block) {
    std::fill(block.begin(), block.end(), int16_t{0});
    size_t i = 0;
    while (i < block.size()) {
        if (next == sound.size() && !hasNextPiece()) break;
        const size_t count = std::min(block.size() - i, sound.size() - next);
        for (size_t end = i + count; i < end; i++, next++)
            block[i] = static_cast<int16_t>(sound[next] * std::clamp(volume, 0, 100) / 100);
    }
    return i;
}

bool Speaker::TakeFinished() {
    if (!hasSpoken || isSpeaking()) return false;
    hasSpoken = false;
    pauseBehindMade = 0.0; // the next text has nothing before it
    return true;
}

std::string Speaker::TakeError() {
    return std::exchange(error, {});
}

} // namespace fennic_voice
