// Calculation lines: operator and operand pairs evaluated strictly from left to right.
#pragma once

#include <string_view>
#include <vector>

#include "systems/model.h"

// The elements of a text such as "[A.B.C]+[2]flr[0]"; the owner is the parameter it belongs to, for marking
// links that do not resolve. Empty when the text holds no "]". False, with the offending text in error, when
// a number or block index is none.
bool calcString2calcStack(const ParameterAddress &owner, std::string_view text,
                          std::vector<calcStack_class> &stack, std::string &error);
