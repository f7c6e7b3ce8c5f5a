// Which characters and virtual keys belong together, on a keyboard of the United States.
#include "simhost/windows/keyboard.h"

#include <map>

#include "simhost/windows/windows.h"

namespace simhost {

namespace {

struct NamedKey {
    std::string_view name;
    char character;
    int virtualKey;
};
constexpr NamedKey NamedKeys[] = {
    {"return", XPLM_KEY_RETURN, XPLM_VK_RETURN},
    {"escape", XPLM_KEY_ESCAPE, XPLM_VK_ESCAPE},
    {"tab", XPLM_KEY_TAB, XPLM_VK_TAB},
    {"space", ' ', XPLM_VK_SPACE},
    {"backspace", XPLM_KEY_DELETE, XPLM_VK_BACK},
    {"delete", 127, XPLM_VK_DELETE},
    {"left", XPLM_KEY_LEFT, XPLM_VK_LEFT},
    {"right", XPLM_KEY_RIGHT, XPLM_VK_RIGHT},
    {"up", XPLM_KEY_UP, XPLM_VK_UP},
    {"down", XPLM_KEY_DOWN, XPLM_VK_DOWN},
    {"home", 0, XPLM_VK_HOME},
    {"end", 0, XPLM_VK_END},
    {"f1", 0, XPLM_VK_F1},
    {"f2", 0, XPLM_VK_F2},
    {"f3", 0, XPLM_VK_F3},
    {"f4", 0, XPLM_VK_F4},
    {"f5", 0, XPLM_VK_F5},
    {"f6", 0, XPLM_VK_F6},
    {"f7", 0, XPLM_VK_F7},
    {"f8", 0, XPLM_VK_F8},
    {"f9", 0, XPLM_VK_F9},
    {"f10", 0, XPLM_VK_F10},
    {"f11", 0, XPLM_VK_F11},
    {"f12", 0, XPLM_VK_F12},
};

constexpr std::string_view ShiftedDigits = ")!@#$%^&*("; // over 0 to 9
constexpr std::string_view ShiftedSymbols = "~_+{}|:\"<>?";

bool isBetween(int value, int first, int last) {
    return value >= first && value <= last;
}

} // namespace

bool KeyOfCharacter(char character, Key &key) {
    const auto set = [&](int virtualKey, bool isShifted) {
        key = {character, static_cast<char>(virtualKey), isShifted};
        return true;
    };
    if (character == '\n') return KeyNamed("return", key);
    if (isBetween(character, 'a', 'z')) return set(character - 'a' + XPLM_VK_A, false);
    if (isBetween(character, 'A', 'Z')) return set(character - 'A' + XPLM_VK_A, true);
    if (isBetween(character, '0', '9')) return set(character - '0' + XPLM_VK_0, false);
    for (const NamedKey &named : NamedKeys)
        if (named.character == character && named.character != 0) return set(named.virtualKey, false);
    if (!isBetween(character, '!', '~')) return false;
    const std::size_t digit = ShiftedDigits.find(character);
    if (digit != std::string_view::npos) return set(static_cast<int>(digit) + XPLM_VK_0, true);
    return set(0, ShiftedSymbols.find(character) != std::string_view::npos);
}

bool KeyNamed(std::string_view name, Key &key) {
    for (const NamedKey &named : NamedKeys) {
        if (named.name != name) continue;
        key = {named.character, static_cast<char>(named.virtualKey), false};
        return true;
    }
    return false;
}

Key KeyOfVirtualKey(int virtualKey) {
    Key key;
    key.virtualKey = static_cast<char>(virtualKey);
    for (const NamedKey &named : NamedKeys)
        if (named.virtualKey == virtualKey) key.character = named.character;
    if (isBetween(virtualKey, XPLM_VK_A, XPLM_VK_Z))
        key.character = static_cast<char>(virtualKey - XPLM_VK_A + 'a');
    if (isBetween(virtualKey, XPLM_VK_0, XPLM_VK_9))
        key.character = static_cast<char>(virtualKey - XPLM_VK_0 + '0');
    return key;
}

const std::string &NameOfVirtualKey(int virtualKey) {
    static std::map<int, std::string> names; // which plug-ins keep pointers to
    if (names.empty()) {
        const auto capital = [](char letter) { return static_cast<char>(letter - 'a' + 'A'); };
        for (const NamedKey &named : NamedKeys) {
            names[named.virtualKey] = named.name;
            names[named.virtualKey][0] = capital(named.name[0]);
        }
        for (int key = XPLM_VK_0; key <= XPLM_VK_9; key++) names[key] = KeyOfVirtualKey(key).character;
        for (int key = XPLM_VK_A; key <= XPLM_VK_Z; key++)
            names[key] = capital(KeyOfVirtualKey(key).character);
    }
    return names[virtualKey];
}

bool StrikeKey(const Key &key, XPLMKeyFlags flags) {
    if (key.isShifted) flags |= xplm_ShiftFlag;
    const bool isTaken = SendKey(key.character, flags | xplm_DownFlag, key.virtualKey);
    SendKey(key.character, flags | xplm_UpFlag, key.virtualKey);
    return isTaken;
}

} // namespace simhost
