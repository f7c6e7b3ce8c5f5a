// Systems files made by the program: the records of parameters, put together in few words.
#pragma once

#include <string>
#include <vector>

#include "systems/model.h"

// A link, or a number where the link is empty.
struct Operand {
    std::string link;
    double number = 0.0;
};

// The parts of a logic block.
compare_block_class Comparison(const Operand &left, const std::string &oper, const Operand &right);
compare_block_class Heard(const std::string &phrase);
calcStack_class Element(const std::string &oper, const Operand &operand);
calcBlock_struct Calculation(const Operand &value);
structExecute Action(int type, const std::string &text, double value = 0.0);

// Joins a comparison to the chain before it by "||".
void JoinByOr(std::vector<compare_block_class> &chain, compare_block_class comparison);

// The blocks that make a parameter 1 while a block's comparisons hold, else 0.
std::vector<logicblock_struct> OneWhile(std::vector<compare_block_class> chain);

// A name that a system, device or parameter may have and that is none of those in use, which it joins.
std::string UniqueName(const std::string &wanted, std::vector<std::string> &used);
