// How both halves of the link are, speaking and hearing, and what is wrong with them: told to the log, and so
// to "kv/diagnost/speech" and "kv/diagnost/reco", whenever it changes.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace fennic_voice {

enum class Part { Loudspeaker, Model, Phrases, Microphone }; // of hearing all but the first

class Health {
public:
    explicit Health(std::function<void(const std::string &)> tell) : tell(std::move(tell)) {}

    // What is wrong with a part; empty: nothing. Nothing is told of a half until all of its parts are known.
    void Set(Part part, const std::string &trouble);

private:
    const std::function<void(const std::string &)> tell; // a line
    std::map<Part, std::string> troubles;

    bool isKnown(bool ofSpeech) const;
    bool isWell(bool ofSpeech) const;
};

} // namespace fennic_voice
