// Conditions of a "clist.txt" as parameters of systems files.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "systems/import/condition.h"
#include "systems/import/parameters.h"

// The system that reads the datarefs and says of each condition whether it is met.
class ConditionWriter {
public:
    // isWhole: whether a dataref holds whole numbers alone.
    ConditionWriter(std::string systemName, std::function<bool(const std::string &)> isWhole);

    // What follows is about this list, whose conditions get a device of their own.
    void BeginList(const std::string &list);

    // The link of a parameter that is 1 while the condition is met, else 0; its name begins with name.
    // before is the link of what is 0 until the condition's item is the current one; empty where a condition
    // belongs to no item. Empty, with the reason, when systems files cannot say it; whole is then as before.
    std::string Write(const ClistExpression &condition, const std::string &name, const std::string &before,
                      std::string &reason);

    // The link of a parameter that reads a dataref; empty, with the reason, when none can.
    std::string Dataref(const std::string &dataref, std::string &reason);

    // The system as it has become, without lists that have no condition.
    system_class System() const;

private:
    // A condition in the form that chains of comparisons can say.
    struct Term {
        enum Kind { True, False, Compare, And, Or } kind = True;
        compare_block_class comparison;
        std::vector<Term> terms;
    };

    std::string systemName;
    std::function<bool(const std::string &)> isWhole;
    device_struct datarefs;
    std::vector<std::string> datarefNames;
    std::map<std::string, std::string> linkOfDataref;
    std::vector<device_struct> lists;
    std::vector<std::string> namesInList;
    std::string name, before, failure; // of the condition that is being written

    Term Fail(const std::string &reason);
    std::string Add(const std::string &suffix, std::vector<logicblock_struct> blocks);

    static Term TermOf(compare_block_class comparison);
    Term TermOf(const ClistExpression &expression, bool isNegated);
    Term TermOfParts(const ClistExpression &expression, bool isNegated);
    Term TermOfComparison(const ClistExpression &left, std::string oper, const ClistExpression &right,
                          bool isNegated);
    Term TermOfEquality(const ClistExpression &left, const ClistExpression &right, bool isNegated);
    Term TermOfPassed(const ClistExpression &expression);
    Term TermOfMoved(const ClistExpression &expression);
    Term TermOfNear(const ClistExpression &call);
    static Term Junction(bool isAnd, std::vector<Term> terms);
    static Term Negated(Term term);
    std::vector<compare_block_class> Chain(const Term &term);
    compare_block_class AsComparison(const Term &term);

    Operand ValueOf(const ClistExpression &expression);
    Operand ValueOfCall(const ClistExpression &call);
    Operand Choice(const Operand &a, const std::string &oper, const Operand &b,
                   std::vector<calcBlock_struct> whenTrue, std::vector<calcBlock_struct> otherwise);
    std::vector<calcStack_class> Stack(const ClistExpression &expression,
                                       std::vector<calcBlock_struct> &lines);
    calcStack_class Piece(const std::string &oper, const ClistExpression &expression,
                          std::vector<calcBlock_struct> &lines);
    bool hasWholeValue(const ClistExpression &expression) const;
};
