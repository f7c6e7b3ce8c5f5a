// While one piece is spoken the next is made, one at a time: the engine is not made for more.
#include "speech/voice/speaker.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace fennic_voice {

namespace {

const size_t LongestPiece = 240; // characters; beyond them a text is cut at a comma or blank

// The end of the text's first piece: behind its first sentence.
size_t EndOfPiece(const std::string &text) {
    for (size_t i = 0; i < text.size(); i++) {
        const bool isEnd = text[i] == '.' || text[i] == '!' || text[i] == '?';
        if (isEnd && i + 1 < text.size() && text[i + 1] == ' ') return i + 1;
        if (i < LongestPiece) continue;
        if (text[i] == ' ' || text[i] == ',' || text[i] == ';' || i >= 2 * LongestPiece) return i + 1;
    }
    return text.size();
}

} // namespace

void Speaker::Say(const std::string &text) {
    for (std::string rest = text; !rest.empty();) {
        const size_t end = EndOfPiece(rest);
        pieces.push_back({rest.substr(0, end), voice});
        rest.erase(0, std::min(rest.find_first_not_of(' ', end), rest.size()));
    }
    hasSpoken = true;
    MakeNext();
}

void Speaker::Stop() {
    pieces.clear();
    sound.clear();
    next = 0;
    isDropped = made.valid();
}

void Speaker::MakeNext() {
    if (made.valid() || pieces.empty()) return;
    auto make = [piece = std::move(pieces.front())] {
        Made result;
        Synthesise(piece.text, piece.voice, result.sound, result.error);
        return result;
    };
    pieces.pop_front();
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
    MakeNext();
    if (!isWanted) return true;
    if (!result.error.empty()) error = std::move(result.error);
    sound = std::move(result.sound);
    next = 0;
    return true;
}

void Speaker::Speak(std::span<int16_t> block) {
    std::fill(block.begin(), block.end(), int16_t{0});
    for (size_t i = 0; i < block.size();) {
        if (next == sound.size() && !hasNextPiece()) return;
        const size_t count = std::min(block.size() - i, sound.size() - next);
        for (size_t end = i + count; i < end; i++, next++)
            block[i] = static_cast<int16_t>(sound[next] * std::clamp(volume, 0, 100) / 100);
    }
}

bool Speaker::TakeFinished() {
    if (!hasSpoken || isSpeaking()) return false;
    hasSpoken = false;
    return true;
}

std::string Speaker::TakeError() {
    return std::exchange(error, {});
}

} // namespace fennic_voice
