// Word by word. What is written in capitals is an acronym only where it is known as one or cannot be spoken;
// all other capitals are the typesetter's.
#include "systems/import/spoken.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "util/numbers.h"
#include "util/text.h"

namespace {

// What stands in checklists and is said otherwise. Keys are in capitals.
const std::map<std::string, const char *, std::less<>> SpokenWords = {
    {"A/C", "aircraft"},
    {"A/P", "autopilot"},
    {"A/T", "autothrottle"},
    {"A/THR", "autothrust"},
    {"AC", "A C"},
    {"ACFT", "aircraft"},
    {"ADI", "A D I"},
    {"ALT", "altitude"},
    {"ALTM", "altimeter"},
    {"ANN", "annunciator"},
    {"ANNUN", "annunciator"},
    {"ANTI-ICE", "anti ice"},
    {"AP", "autopilot"},
    {"APPR", "approach"},
    {"ARR", "arrival"},
    {"ATT", "attitude"},
    {"AUTOBRK", "autobrake"},
    {"AUX", "auxiliary"},
    {"BAT", "battery"},
    {"BATT", "battery"},
    {"BRK", "brake"},
    {"BRKS", "brakes"},
    {"CAPT", "captain"},
    {"CHK", "check"},
    {"CHKD", "checked"},
    {"CKD", "checked"},
    {"CKT", "circuit"},
    {"CLR", "clear"},
    {"CMD", "command"},
    {"COMM", "com"},
    {"COND", "condition"},
    {"CONT", "continuous"},
    {"CTL", "control"},
    {"CTRL", "control"},
    {"CTRLS", "controls"},
    {"CTR", "centre"},
    {"DEG", "degrees"},
    {"DEP", "departure"},
    {"DISC", "disconnect"},
    {"DISCO", "disconnect"},
    {"ELEC", "electrical"},
    {"ELEV", "elevator"},
    {"EMER", "emergency"},
    {"EMERG", "emergency"},
    {"ENG", "engine"},
    {"ENGS", "engines"},
    {"EQUIP", "equipment"},
    {"EXT", "external"},
    {"F/O", "first officer"},
    {"FD", "flight director"},
    {"FLT", "flight"},
    {"FREQ", "frequency"},
    {"FT", "feet"},
    {"FWD", "forward"},
    {"GEN", "generator"},
    {"GENS", "generators"},
    {"GND", "ground"},
    {"GRND", "ground"},
    {"HDG", "heading"},
    {"HYD", "hydraulic"},
    {"IGN", "ignition"},
    {"IND", "indicator"},
    {"INIT", "initial"},
    {"INST", "instrument"},
    {"INSTR", "instrument"},
    {"INSTS", "instruments"},
    {"INV", "inverter"},
    {"ISOL", "isolation"},
    {"KIAS", "knots"},
    {"KT", "knots"},
    {"KTS", "knots"},
    {"LB", "pounds"},
    {"LBS", "pounds"},
    {"LDG", "landing"},
    {"LT", "light"},
    {"LTS", "lights"},
    {"MAX", "maximum"},
    {"MIN", "minimum"},
    {"MINS", "minimums"},
    {"MIX", "mixture"},
    {"NAV", "nav"},
    {"NML", "normal"},
    {"NORM", "normal"},
    {"NO", "no"},
    {"NO.", "number"},
    {"OVHD", "overhead"},
    {"OVRD", "override"},
    {"OXY", "oxygen"},
    {"PASS", "passenger"},
    {"PAX", "passenger"},
    {"PNL", "panel"},
    {"POS", "position"},
    {"PRES", "pressure"},
    {"PRESS", "pressure"},
    {"PROP", "propeller"},
    {"PROPS", "propellers"},
    {"PSI", "P S I"},
    {"PUSHBACK", "push back"},
    {"PWR", "power"},
    {"QTY", "quantity"},
    {"R/T", "radio"},
    {"REC", "recall"},
    {"RECIRC", "recirculation"},
    {"REF", "reference"},
    {"REQ", "required"},
    {"REQ'D", "required"},
    {"REQD", "required"},
    {"RQRD", "required"},
    {"RTO", "R T O"},
    {"RUD", "rudder"},
    {"RWY", "runway"},
    {"SEL", "selector"},
    {"SPD", "speed"},
    {"SPDBRK", "speed brake"},
    {"STAB", "stabilizer"},
    {"STBY", "standby"},
    {"SW", "switch"},
    {"SWS", "switches"},
    {"SYS", "system"},
    {"T.O", "take off"},
    {"T.O.", "take off"},
    {"T/O", "take off"},
    {"TEMP", "temperature"},
    {"THR", "thrust"},
    {"THROT", "throttle"},
    {"TKOF", "take off"},
    {"TO", "to"},
    {"TRANS", "transfer"},
    {"VAC", "vacuum"},
    {"VENT", "ventilation"},
    {"VLV", "valve"},
    {"VOL", "volume"},
    {"VNE", "V N E"},
    {"VREF", "V ref"},
    {"W/S", "windshield"},
    {"WX", "weather"},
    {"XFEED", "crossfeed"},
    {"XFER", "transfer"},
    {"XPDR", "transponder"},
    {"XPNDR", "transponder"},
    {"XPONDER", "transponder"},
};

// Spelled letter by letter, though they could be read as words.
const std::set<std::string, std::less<>> Acronyms = {
    "ACARS", "ACP", "ADF",  "ADIRU", "ADS", "AFDS", "AGL", "APU",  "ASI",  "ASR", "ATC",  "ATIS",
    "CDI",   "CDU", "CAS",  "DH",    "DME", "ECAM", "EEC", "EFB",  "EFIS", "EGT", "EHSI", "EICAS",
    "ELT",   "EPR", "EPU",  "FADEC", "FMA", "FMC",  "FMS", "GPS",  "GPU",  "HSI", "IAS",  "IDG",
    "IFR",   "ILS", "INS",  "IRS",   "IRU", "ISA",  "ITT", "LNAV", "MCDU", "MCP", "MDA",  "MEA",
    "MFD",   "MSL", "ND",   "NDB",   "OAT", "OBS",  "PFD", "QFE",  "QNE",  "QNH", "RAT",  "RMI",
    "RPM",   "RVR", "SID",  "TA",    "RA",  "TAS",  "TAT", "TCAS", "TOGA", "TOT", "UHF",  "VFR",
    "VHF",   "VMC", "VNAV", "VOR",   "VSI", "FMGC", "IMC", "EFC",  "TQ",   "NG",
};

// What a pilot does, and how he answers when it is done.
const std::map<std::string, const char *, std::less<>> DoneWords = {
    {"adjust", "adjusted"},
    {"advise", "advised"},
    {"align", "aligned"},
    {"apply", "applied"},
    {"arm", "armed"},
    {"brief", "briefed"},
    {"check", "checked"},
    {"close", "closed"},
    {"confirm", "confirmed"},
    {"connect", "connected"},
    {"disconnect", "disconnected"},
    {"enter", "entered"},
    {"establish", "established"},
    {"extend", "extended"},
    {"fasten", "fastened"},
    {"insert", "inserted"},
    {"install", "installed"},
    {"lock", "locked"},
    {"lower", "lowered"},
    {"monitor", "monitored"},
    {"obtain", "obtained"},
    {"perform", "performed"},
    {"press", "pressed"},
    {"receive", "received"},
    {"release", "released"},
    {"remove", "removed"},
    {"reset", "reset"},
    {"retract", "retracted"},
    {"review", "reviewed"},
    {"secure", "secured"},
    {"select", "selected"},
    {"set", "set"},
    {"start", "started"},
    {"stow", "stowed"},
    {"test", "tested"},
    {"tune", "tuned"},
    {"verify", "verified"},
};

// Answers that leave it to the pilot what he says.
const char *const FreeAnswers[] = {"as required", "as needed",    "as desired", "as applicable",
                                   "if required", "as necessary", "required",   "consider"};

bool isWordLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || (static_cast<unsigned char>(c) & 0x80) != 0;
}

bool hasVowel(std::string_view word) {
    return word.find_first_of("AEIOUYaeiouy") != std::string_view::npos;
}

// Runs of a sign are ornaments, or lead to the answer.
std::string WithoutOrnaments(std::string_view text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); i++) {
        size_t end = i + 1;
        const bool isSign = std::ispunct(static_cast<unsigned char>(text[i])) != 0;
        while (isSign && end < text.size() && text[end] == text[i]) end++;
        plain += end > i + 1 ? ' ' : text[i];
        i = end - 1;
    }
    return plain;
}

// Abbreviations with a sign in them, such as "T/O", written out before signs become words.
std::string WrittenOut(std::string_view text) {
    std::string written;
    for (const std::string &token : StringToWordsArray(WithoutOrnaments(text), ' ')) {
        const auto found = SpokenWords.find(LowerToUpperCase(token));
        const bool hasSign = token.find_first_of("/.-") != std::string::npos;
        written += found != SpokenWords.end() && hasSign ? found->second : token;
        written += ' ';
    }
    return written;
}

// Signs that are read as words, and those that systems files would take for their own.
std::string SignsAsWords(std::string_view text) {
    static const std::pair<const char *, const char *> signs[] = {
        {"\xC2\xB0", " degrees "},
        {"\xC2\xBA", " degrees "},
        {"%", " percent "},
        {"&", " and "},
        {"<=", " at most "},
        {">=", " at least "},
        {"<", " below "},
        {">", " above "},
        {"=", " "},
        {"@", " at "},
        {"#", " number "},
        {"_", " "},
        {"*", " "},
        {"\"", " "},
        {"[", " "},
        {"]", " "},
        {"{", " "},
        {"}", " "},
        {"~", " "},
        {"^", " "},
        {"|", ", "},
        {";", ", "},
        {":", ", "},
        {"(", ", "},
        {")", ", "},
        {"\\", " "},
        {"\t", " "},
        {"!", " "},
        {"?", " "},
    };
    std::string words(text);
    for (const auto &[sign, word] : signs) words = ReplaceStringAll(std::move(words), sign, word);
    return words;
}

std::string SpokenWord(const std::string &word) {
    const std::string upper = LowerToUpperCase(word);
    if (const auto found = SpokenWords.find(upper);
        found != SpokenWords.end() && (word == upper || upper.size() > 3))
        return found->second;
    if (Acronyms.contains(upper) && word == upper) return upper;
    const bool isAllUpper =
        std::none_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    const bool isShort = word.size() <= 4;
    if (isAllUpper && isShort && word.size() > 1 && !hasVowel(word)) return word; // letters, or "V1"
    if (isAllUpper && word.size() == 1) return word == "A" ? "a" : word;
    return FoldCase(word);
}

// The words of a text, a comma with the word before it. Runs of dots and dashes that lead to an answer are
// none; a dot between digits is the decimal one, a dash between them is "to".
std::vector<std::string> WordsOf(std::string_view text) {
    const std::string plain = SignsAsWords(WrittenOut(text));
    std::vector<std::string> words;
    std::string word;
    const auto end = [&] {
        while (!word.empty() && (word.back() == '.')) word.pop_back();
        if (!word.empty()) words.push_back(SpokenWord(word));
        word.clear();
    };
    for (size_t i = 0; i < plain.size(); i++) {
        const char c = plain[i];
        const char before = i > 0 ? plain[i - 1] : ' ', behind = i + 1 < plain.size() ? plain[i + 1] : ' ';
        if (c == ',' && isDigit(before) && isDigit(behind)) continue; // 2,000
        if (c == ',') {
            end();
            if (!words.empty() && words.back().back() != ',') words.back() += ',';
        } else if (c == '+' && (!isDigit(behind) || isDigit(before))) {
            end();
            words.emplace_back("and");
        } else if (c == '/') {
            end();
            if (!words.empty() && words.back().back() != ',') words.back() += ',';
        } else if ((c == '-' && !isDigit(behind)) || c == ' ' || (c == '.' && !isDigit(behind))) {
            end();
        } else if (c == '-' && isDigit(before)) {
            end();
            words.emplace_back("to");
        } else if (c == '-') {
            end();
            if (!isWordLetter(before)) words.emplace_back("minus");
        } else if (isWordLetter(c) || isDigit(c) || c == '\'' || c == '.') {
            word += c;
        }
    }
    end();
    while (!words.empty() && words.back().back() == ',') {
        words.back().pop_back();
        if (words.back().empty()) words.pop_back();
    }
    return words;
}

std::string Joined(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

// As the recognition context has phrases: small letters, no punctuation, single blanks.
std::string AsPhrase(std::string_view text) {
    std::string phrase;
    for (char c : FoldCase(Joined(WordsOf(text)))) {
        if (std::ispunct(static_cast<unsigned char>(c)) == 0) phrase += c;
    }
    return ReplaceStringDoubleSpace(phrase);
}

void AddUnique(std::vector<std::string> &phrases, const std::string &phrase) {
    if (!phrase.empty() && std::find(phrases.begin(), phrases.end(), phrase) == phrases.end())
        phrases.push_back(phrase);
}

// "set and checked" of "SET & CHECK".
std::string Done(const std::string &phrase) {
    std::vector<std::string> words;
    for (const std::string &word : StringToWordsArray(phrase, ' ')) {
        const auto found = DoneWords.find(word);
        words.emplace_back(found == DoneWords.end() ? word : found->second);
    }
    return Joined(words);
}

// The alternatives of an answer: "ON / OFF", "AUTO or ON".
std::vector<std::string> Alternatives(std::string_view answer) {
    std::string text = ReplaceStringAll(WrittenOut(answer), " OR ", "|");
    text = ReplaceStringAll(std::move(text), " or ", "|");
    std::replace(text.begin(), text.end(), '/', '|');
    return StringToWordsArray(text, '|');
}

} // namespace

std::string SpokenText(std::string_view text) {
    std::string spoken = Joined(WordsOf(text));
    const bool hasWord =
        std::any_of(spoken.begin(), spoken.end(), [](char c) { return isWordLetter(c) || isDigit(c); });
    if (!hasWord) return "";
    spoken[0] = LowerToUpperCase(spoken.substr(0, 1))[0];
    return spoken;
}

std::vector<std::string> AnswerPhrases(std::string_view answer) {
    const std::string whole = AsPhrase(answer);
    const bool isFree = std::any_of(std::begin(FreeAnswers), std::end(FreeAnswers),
                                    [&](const char *free) { return Contains(whole, free); });
    std::vector<std::string> phrases;
    if (whole.empty() || isFree) return phrases;
    for (const std::string &alternative : Alternatives(answer)) {
        const std::string phrase = AsPhrase(alternative);
        AddUnique(phrases, phrase);
        AddUnique(phrases, Done(phrase));
    }
    AddUnique(phrases, "checked");
    return phrases;
}

std::string ChecklistPhrase(std::string_view name) {
    std::string phrase = AsPhrase(name);
    for (const char *word : {"checklist", "check list", "procedure", "checks"})
        if (Contains(phrase, word)) return phrase;
    return phrase + (phrase.empty() ? "checklist" : " checklist");
}
