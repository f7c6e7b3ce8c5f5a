// The conditions of a "clist.txt": what must hold of datarefs for an item to be done.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A condition, or a value in one, as a tree. Numbers serve as conditions: true when they are not 0.
struct ClistExpression {
    enum Kind {
        Number,  // number
        Dataref, // name, perhaps with "[index]"
        Negate,  // parts[0]; of numbers
        Not,     // parts[0]; of conditions
        And,     // all parts
        Or,      // any part
        Compare, // parts[0] text parts[1]: "==", "!=", ">", "<", ">=", "<="
        Compute, // parts[0] text parts[1]: "+", "-", "*", "/", "**"
        Call,    // text is the name of a function or a type, parts its arguments
        Passed,  // parts[0] was at or beyond parts[1], then reached parts[2]
        Moved,   // parts[0] has risen (text ">"), fallen ("<") or changed ("") by more than parts[1]
    };
    Kind kind = Number;
    double number = 0.0;
    std::string text;
    std::vector<ClistExpression> parts;
};

// Reads a condition in either form; the newer one begins with ":". False, with the reason in English, when
// it is none.
bool ReadClistCondition(std::string_view text, ClistExpression &condition, std::string &reason);
