#include "speech/voice/voices.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace fennic_voice {

namespace {

const std::string_view Prefix = "com.apple.speech.synthesis.voice.";

// Men among the voices that Apple's systems have had, and among those of the engines for Linux.
const char *const Men[] = {"aaron",  "albert", "alex",  "bruce",  "diego", "fred",   "jonas", "jorge",
                           "junior", "kal",    "luca",  "male",   "man",   "nathan", "ralph", "reed",
                           "rishi",  "rms",    "rocko", "thomas", "tom",   "xander"};
// Those of the British Isles and Australia.
const char *const BritishMen[] = {"arthur", "awb", "daniel", "gordon", "jamie", "lee", "oliver", "scotsman"};
const char *const OurOwn[] = {"woman", "man", "scotsman"};

// "com.apple.speech.synthesis.voice.Alex" and "….alex.premium" are alex.
std::string NameOf(const std::string &identifier) {
    std::string name = identifier.starts_with(Prefix) ? identifier.substr(Prefix.size()) : identifier;
    name.resize(std::min(name.find('.'), name.size()));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

template <size_t Count> bool isAmong(const char *const (&names)[Count], const std::string &name) {
    return std::any_of(names, names + Count, [&](const char *known) { return name == known; });
}

// The system's own program. It writes files alone, and reads the text from its input.
std::string SystemsCommand(const std::string &name) {
    std::string quoted;
    for (const char character : name)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return "/usr/bin/say -v '" + quoted
           + "' -r {words} --file-format=WAVE --data-format=LEI16@16000 -o {wav} -f -";
}

} // namespace

BuiltIn NearestBuiltIn(const std::string &identifier) {
    const std::string name = NameOf(identifier);
    if (isAmong(BritishMen, name)) return BuiltIn::Scotsman;
    return isAmong(Men, name) ? BuiltIn::Man : BuiltIn::Woman;
}

VoiceChoice ChooseVoice(const std::string &identifier, const Settings &settings, bool isMac) {
    const std::string name = NameOf(identifier);
    VoiceChoice choice;
    choice.builtIn = NearestBuiltIn(identifier);
    const auto own = settings.voices.find(name);
    const auto general = settings.voices.find(choice.builtIn == BuiltIn::Woman ? "w" : "m");
    if (own != settings.voices.end())
        choice.command = own->second;
    else if (isMac && !name.empty() && !isAmong(OurOwn, name))
        choice.command = SystemsCommand(name);
    else if (general != settings.voices.end())
        choice.command = general->second;
    return choice;
}

} // namespace fennic_voice
