// The simulator's own commands that are known without its lists, and what they do. Most set or move one
// dataref; a command without such an action is only counted and handed to its handlers.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

enum class Move {
    Set,    // to the value
    Toggle, // between 0 and 1
    Notch,  // by so many notches of the flap lever, within 0 to 1
};

struct BuiltinAction {
    std::string command;
    std::string dataref;
    int index = 0; // of an array
    Move move = Move::Set;
    double value = 0;
};

// All actions, sorted by command; a command may have several.
std::span<const BuiltinAction> BuiltinActions();

// The names of all commands, those without an action too, some of them twice.
std::vector<std::string> BuiltinCommands();

// The first action of a command; null when it does nothing by itself.
const BuiltinAction *FindBuiltinAction(std::string_view command);

// Runs an action and the others of its command behind it.
void RunBuiltinActions(const BuiltinAction &first);

} // namespace simhost
