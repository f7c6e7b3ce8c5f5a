#include "speech/voice/rejection.h"

namespace fennic_voice {

double Confidence(const Heard &heard) {
    return 17.0 - heard.lag;
}

bool Accept(const Heard &heard) {
    return !heard.phrase.empty() && Confidence(heard) > 0.0;
}

} // namespace fennic_voice
