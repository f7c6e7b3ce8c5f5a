// How a mouth says a text: opening with each syllable, round for an o, shut for an m and at every comma.
#pragma once

#include <string_view>
#include <vector>

// The values of "kv/fo/_mouth".
enum MouthShape { MouthAsFaceSays = 0, MouthClosed = 1, MouthOpen = 2, MouthNarrow = 3, MouthRound = 4 };

struct MouthPhase {
    float until = 0.0F; // seconds from the beginning of the text
    MouthShape shape = MouthClosed;
};

// One phase behind the other, in place of what phases held. The speed is that of her voice at its usual rate.
void MakeMouthPhases(std::string_view text, std::vector<MouthPhase> &phases);
