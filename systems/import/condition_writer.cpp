// A chain of comparisons has no brackets and no precedence. So a condition is brought into the form of one
// junction, whose first part may be another; what is nested deeper becomes a parameter of its own. In the
// same way calculations become parameters where a comparison needs their values.
#include "systems/import/condition_writer.h"
#include "systems/dataref_binding.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "systems/operators.h"
#include "util/numbers.h"
#include "util/text.h"

using Kind = ClistExpression::Kind;

namespace {

const char *const DatarefDevice = "DATAREFS";
const char *const Part = " PART";                              // of a condition
const double WholeTolerance = 0.01, FractionTolerance = 0.001; // of equality with a float
const int HighestPower = 16;

bool isCompared(const std::string &oper, double left, double right) {
    const int code = ComparisonOf(oper);
    if (code < 0) return false;
    const Comparator &comparator = Comparators[code];
    if (comparator.swapped) std::swap(left, right);
    return CompareNumbers(left, right, comparator.greater, comparator.equal, comparator.negated) != 0;
}

std::string Opposite(const std::string &oper) {
    static const std::pair<const char *, const char *> opposites[] = {
        {"==", "!="}, {"!=", "=="}, {">", "<="}, {"<=", ">"}, {"<", ">="}, {">=", "<"},
    };
    for (const auto &[one, other] : opposites)
        if (oper == one) return other;
    return oper;
}

ClistExpression NumberExpression(double number) {
    return {Kind::Number, number, "", {}};
}

// Numbers alone, worked out.
bool isConstant(const ClistExpression &expression, double &number) {
    if (expression.kind == Kind::Number) {
        number = expression.number;
        return true;
    }
    double left = 0.0, right = 0.0;
    if (expression.kind == Kind::Negate) {
        if (!isConstant(expression.parts[0], number)) return false;
        number = -number;
        return true;
    }
    if (expression.kind != Kind::Compute || !isConstant(expression.parts[0], left)
        || !isConstant(expression.parts[1], right))
        return false;
    if (expression.text == "**") {
        number = std::pow(left, right);
        return std::isfinite(number);
    }
    number = ApplyOperator(OperatorOf(expression.text), left, right);
    return true;
}

} // namespace

ConditionWriter::ConditionWriter(std::string systemName, std::function<bool(const std::string &)> isWhole)
    : systemName(std::move(systemName)), isWhole(std::move(isWhole)) {
    datarefs.name = DatarefDevice;
}

void ConditionWriter::BeginList(const std::string &list) {
    lists.emplace_back();
    lists.back().name = list;
    namesInList.clear();
}

std::string ConditionWriter::Dataref(const std::string &dataref, std::string &reason) {
    if (const auto found = linkOfDataref.find(dataref); found != linkOfDataref.end()) return found->second;
    const DatarefName parts(dataref);
    if (!parts.isReachable()) {
        reason = "of an array only elements 0 to 15 can be read, not " + dataref;
        return "";
    }
    std::string wanted = ReplaceStringAll(parts.name.substr(parts.name.rfind('/') + 1), "_", " ");
    if (parts.index) wanted += " " + int2string(*parts.index);
    out_parameter_struct parameter;
    parameter.name = UniqueName(wanted, datarefNames);
    parameter.type = isWhole(dataref) ? TypeInteger : TypeDouble;
    parameter.inDataref.fullName = dataref;
    parameter.inDataref.mode = BindingExist;
    datarefs.outs.push_back(parameter);
    return linkOfDataref[dataref] = systemName + "." + datarefs.name + "." + parameter.name;
}

ConditionWriter::Term ConditionWriter::Fail(const std::string &reason) {
    if (failure.empty()) failure = reason;
    return {};
}

// A parameter of the list's device.
std::string ConditionWriter::Add(const std::string &suffix, std::vector<logicblock_struct> blocks) {
    out_parameter_struct parameter;
    parameter.name = UniqueName(name + suffix, namesInList);
    parameter.type = suffix.empty() || suffix == Part ? TypeInteger : TypeDouble;
    parameter.logic = std::move(blocks);
    lists.back().outs.push_back(parameter);
    return systemName + "." + lists.back().name + "." + parameter.name;
}

std::string ConditionWriter::Write(const ClistExpression &condition, const std::string &wantedName,
                                   const std::string &link, std::string &reason) {
    name = wantedName;
    before = link;
    failure.clear();
    const size_t parameters = lists.back().outs.size();
    const std::vector<std::string> names = namesInList;
    const Term term = TermOf(condition, false);
    if (term.kind == Term::False) Fail("it never holds");
    std::string met;
    if (failure.empty()) met = Add("", OneWhile(Chain(term)));
    if (failure.empty()) return met;
    reason = failure;
    lists.back().outs.resize(parameters);
    namesInList = names;
    return "";
}

system_class ConditionWriter::System() const {
    system_class system;
    system.name = systemName;
    if (!datarefs.outs.empty()) system.devices.push_back(datarefs);
    for (const device_struct &list : lists)
        if (!list.outs.empty()) system.devices.push_back(list);
    return system;
}

// ---- Conditions ----

ConditionWriter::Term ConditionWriter::TermOf(compare_block_class comparison) {
    Term term;
    term.kind = Term::Compare;
    term.comparison = std::move(comparison);
    return term;
}

ConditionWriter::Term ConditionWriter::Junction(bool isAnd, std::vector<Term> terms) {
    const Term::Kind neutral = isAnd ? Term::True : Term::False, decisive = isAnd ? Term::False : Term::True;
    Term junction;
    junction.kind = isAnd ? Term::And : Term::Or;
    for (Term &term : terms) {
        if (term.kind == decisive) return term;
        if (term.kind == junction.kind)
            std::move(term.terms.begin(), term.terms.end(), std::back_inserter(junction.terms));
        else if (term.kind != neutral)
            junction.terms.push_back(std::move(term));
    }
    if (junction.terms.empty()) junction.kind = neutral;
    return junction.terms.size() == 1 ? Term(junction.terms[0]) : junction;
}

ConditionWriter::Term ConditionWriter::Negated(Term term) {
    switch (term.kind) {
    case Term::True: term.kind = Term::False; break;
    case Term::False: term.kind = Term::True; break;
    case Term::Compare: {
        const std::string oper = Opposite(term.comparison.cmpText);
        term.comparison.cmpOp = ComparisonOf(oper);
        term.comparison.cmpText = oper;
        break;
    }
    case Term::And:
    case Term::Or:
        term.kind = term.kind == Term::And ? Term::Or : Term::And;
        for (Term &part : term.terms) part = Negated(std::move(part));
        break;
    }
    return term;
}

ConditionWriter::Term ConditionWriter::TermOf(const ClistExpression &expression, bool isNegated) {
    switch (expression.kind) {
    case Kind::Not: return TermOf(expression.parts[0], !isNegated);
    case Kind::And:
    case Kind::Or: return TermOfParts(expression, isNegated);
    case Kind::Compare:
        return TermOfComparison(expression.parts[0], expression.text, expression.parts[1], isNegated);
    case Kind::Passed:
    case Kind::Moved: {
        Term term = expression.kind == Kind::Passed ? TermOfPassed(expression) : TermOfMoved(expression);
        return isNegated ? Negated(std::move(term)) : term;
    }
    default: break;
    }
    if (expression.kind == Kind::Call && expression.text == "closer_than") {
        Term term = TermOfNear(expression);
        return isNegated ? Negated(std::move(term)) : term;
    }
    return TermOfComparison(expression, "!=", NumberExpression(0.0), isNegated);
}

ConditionWriter::Term ConditionWriter::TermOfParts(const ClistExpression &expression, bool isNegated) {
    std::vector<Term> terms;
    for (const ClistExpression &part : expression.parts) terms.push_back(TermOf(part, isNegated));
    return Junction((expression.kind == Kind::And) != isNegated, std::move(terms));
}

ConditionWriter::Term ConditionWriter::TermOfComparison(const ClistExpression &left, std::string oper,
                                                        const ClistExpression &right, bool isNegated) {
    if (isNegated) oper = Opposite(oper);
    double a = 0.0, b = 0.0;
    const bool isLeftConstant = isConstant(left, a), isRightConstant = isConstant(right, b);
    Term term;
    if (isLeftConstant && isRightConstant) {
        term.kind = isCompared(oper, a, b) ? Term::True : Term::False;
        return term;
    }
    if (oper == "==" || oper == "!=")
        return isLeftConstant ? TermOfEquality(right, left, oper == "!=")
                              : TermOfEquality(left, right, oper == "!=");
    return TermOf(Comparison(ValueOf(left), oper, ValueOf(right)));
}

// Floats are seldom exactly what they should be: a lever at 0.9999 is taken for one at 1.
ConditionWriter::Term ConditionWriter::TermOfEquality(const ClistExpression &left,
                                                      const ClistExpression &right, bool isNegated) {
    double number = 0.0;
    const bool isNumber = isConstant(right, number);
    if (hasWholeValue(left) && hasWholeValue(right))
        return TermOf(Comparison(ValueOf(left), isNegated ? "!=" : "==", ValueOf(right)));
    const Operand value = isNumber ? ValueOf(left) : ValueOf({Kind::Compute, 0.0, "-", {left, right}});
    const double tolerance = std::floor(number) == number ? WholeTolerance : FractionTolerance;
    return Junction(!isNegated,
                    {TermOf(Comparison(value, isNegated ? "<" : ">=", {"", number - tolerance})),
                     TermOf(Comparison(value, isNegated ? ">" : "<=", {"", number + tolerance}))});
}

ConditionWriter::Term ConditionWriter::TermOfNear(const ClistExpression &call) {
    if (call.parts.size() != 3) return Fail("closer_than takes three values");
    const Operand difference = ValueOf({Kind::Compute, 0.0, "-", {call.parts[0], call.parts[1]}});
    const Operand positive = ValueOf(call.parts[2]);
    const Operand negative = ValueOf({Kind::Negate, 0.0, "", {call.parts[2]}});
    return Junction(
        true, {TermOf(Comparison(difference, ">", negative)), TermOf(Comparison(difference, "<", positive))});
}

// The parameter remembers: 1 when the value was at the beginning, 2 when it has reached the end since.
ConditionWriter::Term ConditionWriter::TermOfPassed(const ClistExpression &expression) {
    double from = 0.0, to = 0.0;
    if (!isConstant(expression.parts[1], from) || !isConstant(expression.parts[2], to) || from == to)
        return Fail("what is passed must be two different numbers");
    const bool isRising = from < to;
    const Operand value = ValueOf(expression.parts[0]);
    if (value.link.empty()) return Fail("a number does not move");
    const std::string link = Add(" PASSED", {});
    std::vector<logicblock_struct> blocks(2);
    blocks[0].compares = {Comparison(value, isRising ? "<=" : ">=", {"", from})};
    blocks[0].calcs = {Calculation({"", 1.0})};
    blocks[1].compares = {Comparison({link}, "==", {"", 1.0}),
                          Comparison(value, isRising ? ">=" : "<=", {"", to})};
    blocks[1].calcs = {Calculation({"", 2.0})};
    lists.back().outs.back().logic = std::move(blocks);
    return TermOf(Comparison({link}, "==", {"", 2.0}));
}

// The parameter follows the value until the item becomes the current one.
ConditionWriter::Term ConditionWriter::TermOfMoved(const ClistExpression &expression) {
    if (before.empty()) return Fail("only an item can wait for a value to move");
    const Operand value = ValueOf(expression.parts[0]);
    if (value.link.empty()) return Fail("a number does not move");
    std::vector<logicblock_struct> follows(1);
    follows[0].compares = {Comparison({before}, "==", {"", 0.0})};
    follows[0].calcs = {Calculation(value)};
    const std::string start = Add(" AT FIRST", std::move(follows));
    std::vector<logicblock_struct> difference(1);
    difference[0].calcs = {Calculation(value)};
    difference[0].calcs[0].stack.push_back(Element("-", {start}));
    const Operand moved = {Add(" MOVED", std::move(difference))};
    const Operand amount = ValueOf(expression.parts[1]);
    const Operand fall = ValueOf({Kind::Negate, 0.0, "", {expression.parts[1]}});
    const Term up = TermOf(Comparison(moved, ">", amount)), down = TermOf(Comparison(moved, "<", fall));
    if (expression.text == ">") return up;
    if (expression.text == "<") return down;
    return Junction(false, {up, down});
}

// The junction that is not the first part of a chain, as a parameter that is compared.
compare_block_class ConditionWriter::AsComparison(const Term &term) {
    if (term.kind == Term::Compare) return term.comparison;
    return Comparison({Add(Part, OneWhile(Chain(term)))}, "==", {"", 1.0});
}

std::vector<compare_block_class> ConditionWriter::Chain(const Term &term) {
    if (term.kind == Term::True) return {};
    if (term.kind == Term::Compare) return {term.comparison};
    const auto isJunction = [](const Term &part) { return part.kind == Term::And || part.kind == Term::Or; };
    const auto first = std::find_if(term.terms.begin(), term.terms.end(), isJunction);
    std::vector<compare_block_class> chain;
    if (first != term.terms.end()) chain = Chain(*first);
    for (auto part = term.terms.begin(); part != term.terms.end(); ++part) {
        if (part == first) continue;
        if (term.kind == Term::Or)
            JoinByOr(chain, AsComparison(*part));
        else
            chain.push_back(AsComparison(*part));
    }
    return chain;
}

// ---- Values ----

bool ConditionWriter::hasWholeValue(const ClistExpression &expression) const {
    double number = 0.0;
    if (isConstant(expression, number)) return std::floor(number) == number;
    if (expression.kind == Kind::Dataref) return isWhole(expression.text);
    if (expression.kind == Kind::Call)
        return expression.text == "int" || expression.text == "round" || expression.text == "floor";
    const bool keepsWhole =
        expression.kind == Kind::Negate
        || (expression.kind == Kind::Compute && expression.text != "/" && expression.text != "**");
    return keepsWhole
           && std::all_of(expression.parts.begin(), expression.parts.end(),
                          [this](const ClistExpression &part) { return hasWholeValue(part); });
}

Operand ConditionWriter::ValueOf(const ClistExpression &expression) {
    double number = 0.0;
    if (isConstant(expression, number)) return {"", number};
    switch (expression.kind) {
    case Kind::Dataref: return {Dataref(expression.text, failure)};
    case Kind::Call: return ValueOfCall(expression);
    case Kind::Negate:
    case Kind::Compute: {
        std::vector<logicblock_struct> blocks(1);
        std::vector<calcStack_class> stack = Stack(expression, blocks[0].calcs);
        blocks[0].calcs.emplace_back();
        blocks[0].calcs.back().stack = std::move(stack);
        return {Add(" VALUE", std::move(blocks))};
    }
    default: return {Add(Part, OneWhile(Chain(TermOf(expression, false))))};
    }
}

// A parameter with one of two values.
Operand ConditionWriter::Choice(const Operand &a, const std::string &oper, const Operand &b,
                                std::vector<calcBlock_struct> whenTrue,
                                std::vector<calcBlock_struct> otherwise) {
    std::vector<logicblock_struct> blocks(2);
    blocks[0].compares = {Comparison(a, oper, b)};
    blocks[0].calcs = std::move(whenTrue);
    blocks[1].calcs = std::move(otherwise);
    return {Add(" VALUE", std::move(blocks))};
}

Operand ConditionWriter::ValueOfCall(const ClistExpression &call) {
    const std::string &function = call.text;
    if (function == "closer_than") return {Add(Part, OneWhile(Chain(TermOfNear(call))))};
    const size_t count = function == "min" || function == "max" ? 2 : 1;
    if (call.parts.size() != count) {
        Fail("the function \"" + function + "\" with " + int2string(static_cast<int>(call.parts.size()))
             + " values");
        return {};
    }
    const Operand value = ValueOf(call.parts[0]);
    const Operand zero = {"", 0.0};
    if (function == "float" || function == "double") return value;
    const auto floorOf = [](std::vector<calcStack_class> stack) {
        stack.push_back(Element("flr", {"", 0.0}));
        calcBlock_struct calculation;
        calculation.stack = std::move(stack);
        return calculation;
    };
    calcBlock_struct negative = Calculation(zero);
    negative.stack.push_back(Element("-", value));
    // The floor of the negative value, and the negative of that.
    calcBlock_struct ceiling = Calculation(zero);
    calcStack_class before = Element("-", {});
    before.blockIndex = 0;
    ceiling.stack.push_back(before);
    const std::vector<calcBlock_struct> rounded = {floorOf({Element("", value), Element("+", {"", 0.5})})};
    const std::vector<calcBlock_struct> down = {floorOf({Element("", value)})};
    const std::vector<calcBlock_struct> up = {floorOf({Element("", zero), Element("-", value)}), ceiling};
    const auto always = [&](const std::vector<calcBlock_struct> &calculations) {
        std::vector<logicblock_struct> blocks(1);
        blocks[0].calcs = calculations;
        return Operand{Add(" VALUE", std::move(blocks))};
    };
    if (function == "round") return always(rounded);
    if (function == "floor") return always(down);
    if (function == "ceil") return always(up);
    if (function == "int") return Choice(value, "<", zero, up, down);
    if (function == "abs" || function == "fabs")
        return Choice(value, "<", zero, {negative}, {Calculation(value)});
    if (count == 2) {
        const Operand other = ValueOf(call.parts[1]);
        return Choice(value, function == "min" ? "<" : ">", other, {Calculation(value)},
                      {Calculation(other)});
    }
    Fail("there is no function \"" + function + "\"");
    return {};
}

// One line from left to right; what stands in brackets on the right comes from a line before it.
std::vector<calcStack_class> ConditionWriter::Stack(const ClistExpression &expression,
                                                    std::vector<calcBlock_struct> &lines) {
    if (expression.kind == Kind::Negate)
        return {Element("", {"", 0.0}), Piece("-", expression.parts[0], lines)};
    double number = 0.0;
    if (expression.kind != Kind::Compute || isConstant(expression, number))
        return {Piece("", expression, lines)};
    if (expression.text != "**") {
        std::vector<calcStack_class> stack = Stack(expression.parts[0], lines);
        stack.push_back(Piece(expression.text, expression.parts[1], lines));
        return stack;
    }
    const bool isPower = isConstant(expression.parts[1], number) && std::floor(number) == number;
    if (!isPower || number < 1.0 || number > HighestPower) {
        Fail("only powers from 1 to 16 can be calculated");
        return {};
    }
    const calcStack_class base = Piece("", expression.parts[0], lines);
    std::vector<calcStack_class> stack(static_cast<size_t>(number), base);
    for (size_t i = 1; i < stack.size(); i++) stack[i].oper = "*";
    return stack;
}

calcStack_class ConditionWriter::Piece(const std::string &oper, const ClistExpression &expression,
                                       std::vector<calcBlock_struct> &lines) {
    double number = 0.0;
    const bool isCalculation = expression.kind == Kind::Compute || expression.kind == Kind::Negate;
    if (!isCalculation || isConstant(expression, number)) return Element(oper, ValueOf(expression));
    std::vector<calcStack_class> stack = Stack(expression, lines);
    calcStack_class piece = Element(oper, {});
    piece.blockIndex = static_cast<int>(lines.size());
    lines.emplace_back();
    lines.back().stack = std::move(stack);
    return piece;
}
