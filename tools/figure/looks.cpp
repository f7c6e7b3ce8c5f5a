// The rows.
#include "tools/figure/looks.h"

#include "tools/figure/paints.h"

namespace figure_maker {

namespace {

const Tone Light = {"light", Color(224, 176, 147), Color(219, 136, 116)},
           Dark = {"dark", Color(139, 94, 68), Color(140, 72, 56)};

// clang-format off
const Look HerLooks[LookCount] = {
    {.tone = Light, .hair = Color(66, 43, 30), .brow = Color(66, 44, 32), .iris = Color(112, 82, 50),
     .lip = Color(190, 106, 99), .style = HairStyle::Knot, .age = 0.08, .stubble = 0,
     .glasses = Color(92, 66, 44), .rim = 0.95},
    {.tone = Light, .hair = Color(150, 132, 108), .brow = Color(112, 92, 72), .iris = Color(84, 104, 120),
     .lip = Color(186, 112, 104), .style = HairStyle::Bob, .age = 0.75, .stubble = 0,
     .glasses = Color(34, 30, 34), .rim = 1.5},
    {.tone = Dark, .hair = Color(27, 22, 20), .brow = Color(30, 23, 20), .iris = Color(66, 42, 26),
     .lip = Color(138, 70, 66), .style = HairStyle::Knot, .age = 0.05, .stubble = 0,
     .glasses = Color(190, 152, 84), .rim = 0.8}};
const Look HisLooks[LookCount] = {
    {.tone = Light, .hair = Color(58, 40, 28), .brow = Color(58, 40, 29), .iris = Color(88, 98, 92),
     .lip = Color(196, 132, 114), .style = HairStyle::Short, .age = 0.35, .stubble = 0.22,
     .glasses = Color(40, 42, 46), .rim = 0.9},
    {.tone = Light, .hair = Color(146, 142, 138), .brow = Color(104, 94, 86), .iris = Color(90, 112, 130),
     .lip = Color(192, 132, 116), .style = HairStyle::Receding, .age = 1, .stubble = 0.12,
     .glasses = Color(150, 152, 156), .rim = 0.8},
    {.tone = Dark, .hair = Color(24, 21, 20), .brow = Color(26, 21, 19), .iris = Color(58, 38, 25),
     .lip = Color(132, 82, 68), .style = HairStyle::Cropped, .age = 0.2, .stubble = 0.85,
     .glasses = Color(30, 28, 28), .rim = 1.4}};
// clang-format on

} // namespace

const Look &LookOf(const Body &body, int look) {
    return (body.isMan ? HisLooks : HerLooks)[look];
}

std::string ChartOf(const Body &body, int look, const std::string &part) {
    return (body.isMan ? "his " : "her ") + part + " " + std::to_string(look);
}

int LooksWith(const Body &body, const Tone &tone) {
    int looks = 0;
    for (int look = 0; look < LookCount; look++)
        if (LookOf(body, look).tone.name == std::string(tone.name)) looks |= 1 << look;
    return looks;
}

const Tone &LightTone() {
    return Light;
}

const Tone &DarkTone() {
    return Dark;
}

} // namespace figure_maker
