// The simulator's own commands that are known without its lists, and what they do. Most set or move one
// dataref; a command without such an action is only counted and handed to its handlers.
#pragma once

#include <string_view>

namespace simhost {

struct BuiltinAction; // one line of the table

void AddBuiltinCommands();
const BuiltinAction *FindBuiltinAction(std::string_view command); // null: does nothing by itself
void RunBuiltinAction(const BuiltinAction &action);

} // namespace simhost
