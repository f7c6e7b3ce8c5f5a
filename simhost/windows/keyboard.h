// The keys of the pilot's keyboard: what a character or a key's name is to plug-ins.
#pragma once

#include <string>
#include <string_view>

#include "XPLMDefs.h"

namespace simhost {

struct Key {
    char character = 0;     // 0: the key makes none
    char virtualKey = 0;    // 0: punctuation, which has no virtual key here
    bool isShifted = false; // on a keyboard of the United States the character takes shift
};

// Of an ASCII character, the line end, tab and backspace among them. False for others.
bool KeyOfCharacter(char character, Key &key);

// "return", "escape", "tab", "space", "backspace", "delete", "left", "right", "up", "down", "home", "end",
// "f1" to "f12". False for others.
bool KeyNamed(std::string_view name, Key &key);

// Of a virtual key, 1 to 255: with the character that it makes alone.
Key KeyOfVirtualKey(int virtualKey);

// What a virtual key, 0 to 255, is called: "A", "F8", "Return"; "" for one that is not known here.
const std::string &NameOfVirtualKey(int virtualKey);

// The key goes down and up. flags: shift, option and control; shift is added where the key takes it. False
// when it reaches the simulator.
bool StrikeKey(const Key &key, XPLMKeyFlags flags);

} // namespace simhost
