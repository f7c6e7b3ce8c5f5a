#include "speech/voice/health.h"

#include <algorithm>
#include <utility>

namespace fennic_voice {

namespace {

struct Description {
    Part part;
    bool ofSpeech;
    const char *works; // the news that it does again
};
const Description Parts[] = {{Part::Loudspeaker, true, "the loudspeaker is there"},
                             {Part::Model, false, "the model is there"},
                             {Part::Phrases, false, "there are phrases"},
                             {Part::Microphone, false, "the microphone is there"}};

} // namespace

bool Health::isKnown(bool ofSpeech) const {
    return std::all_of(std::begin(Parts), std::end(Parts), [&](const Description &description) {
        return description.ofSpeech != ofSpeech || troubles.contains(description.part);
    });
}

bool Health::isWell(bool ofSpeech) const {
    return std::all_of(std::begin(Parts), std::end(Parts), [&](const Description &description) {
        if (description.ofSpeech != ofSpeech) return true;
        const auto found = troubles.find(description.part);
        return found != troubles.end() && found->second.empty();
    });
}

void Health::Set(Part part, const std::string &trouble) {
    const Description &description = *std::find_if(
        std::begin(Parts), std::end(Parts), [&](const Description &known) { return known.part == part; });
    const bool ofSpeech = description.ofSpeech, wasKnown = isKnown(ofSpeech);
    const auto [place, isNew] = troubles.try_emplace(part, trouble);
    if (!isNew && place->second == trouble) return;
    place->second = trouble;
    const std::string half = ofSpeech ? "speech " : "reco ";
    const std::string state = half + (isWell(ofSpeech) ? "1 " : "0 ");
    if (!trouble.empty())
        tell(state + trouble);
    else if (wasKnown)
        tell(state + description.works);
    else if (isWell(ofSpeech))
        tell(state + "ready");
}

} // namespace fennic_voice
