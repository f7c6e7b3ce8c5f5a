// The body lines of parameters: logic, comparisons, calculations, actions and graph points. And the phrases
// that they offer to the commands menu.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "systems/model.h"

// A group of the commands menu.
struct commandsMenuStruct {
    std::string title;
    std::vector<std::string> phrases;
};
struct BodyParserState {
    std::vector<commandsMenuStruct> menu;
    std::unordered_set<std::string> offered; // phrases of the menu's last entry
};
extern BodyParserState bodyParserState;
inline std::vector<commandsMenuStruct> &commandsMenuVector = bodyParserState.menu;

// Parses the stored body lines of every parameter of the model. All parameters exist by then, so links may
// name parameters that stand further down.
void LogicAndCalcForOutputParce();

// Whether what an action names is missing: a position of the figure, a command or a dataref. What comes into
// existence later is found when it is used.
bool isMissing(const structExecute &action);

// Everything as when the program starts.
void ResetBodyParser();
