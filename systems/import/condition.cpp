// Both forms are read by descent: alternatives, conjunctions, comparisons, sums, products, powers. In the
// older form a comparison is "dataref:value" and its kin; in the newer one it stands between two values.
#include "systems/import/condition.h"

#include <cctype>
#include <utility>

#include "util/numbers.h"
#include "util/text.h"

namespace {

using Kind = ClistExpression::Kind;

const int DeepestNesting = 100;

ClistExpression Make(Kind kind, std::string text, std::vector<ClistExpression> parts) {
    return {kind, 0.0, std::move(text), std::move(parts)};
}

bool isLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class ConditionReader {
public:
    ConditionReader(std::string_view text, bool isNewer) : rest(text), isNewer(isNewer) {}

    bool ReadAll(ClistExpression &condition, std::string &why);

private:
    std::string_view rest;
    bool isNewer;
    std::string reason; // of the first failure; nothing is read behind it
    int depth = 0;

    bool Take(std::string_view token);
    bool TakeBar(); // "|" that is not "||"
    ClistExpression Fail(const std::string &why);
    bool hasFailed() const { return !reason.empty(); }

    ClistExpression ReadAlternatives();
    ClistExpression ReadConjunction();
    ClistExpression ReadAtom();
    ClistExpression ReadNewerComparison();
    ClistExpression ReadOlderComparison();
    ClistExpression ReadRange(ClistExpression value, ClistExpression low);
    ClistExpression ReadSum();
    ClistExpression ReadProduct();
    ClistExpression ReadPower();
    ClistExpression ReadPrimary();
    ClistExpression ReadBracket();
    ClistExpression ReadCastOrBracket();
    ClistExpression ReadNumber();
    ClistExpression ReadCall();
    ClistExpression ReadDatarefUntil(std::string_view ends);
    bool isBooleanBracket() const;
};

void SkipBlanks(std::string_view &text) {
    while (!text.empty() && (text[0] == ' ' || text[0] == '\t')) text.remove_prefix(1);
}

bool ConditionReader::Take(std::string_view token) {
    SkipBlanks(rest);
    if (!rest.starts_with(token)) return false;
    rest.remove_prefix(token.size());
    return true;
}

bool ConditionReader::TakeBar() {
    SkipBlanks(rest);
    return !rest.starts_with("||") && Take("|");
}

ClistExpression ConditionReader::Fail(const std::string &why) {
    if (reason.empty()) reason = why;
    rest = {};
    return {};
}

bool ConditionReader::ReadAll(ClistExpression &condition, std::string &why) {
    condition = ReadAlternatives();
    SkipBlanks(rest);
    if (!hasFailed() && !rest.empty()) Fail("\"" + std::string(rest) + "\" is left over");
    why = reason;
    return !hasFailed();
}

ClistExpression ConditionReader::ReadAlternatives() {
    std::vector<ClistExpression> parts = {ReadConjunction()};
    while (Take("||")) parts.push_back(ReadConjunction());
    return parts.size() == 1 ? std::move(parts[0]) : Make(Kind::Or, "", std::move(parts));
}

ClistExpression ConditionReader::ReadConjunction() {
    std::vector<ClistExpression> parts = {ReadAtom()};
    while (Take("&&")) parts.push_back(ReadAtom());
    return parts.size() == 1 ? std::move(parts[0]) : Make(Kind::And, "", std::move(parts));
}

ClistExpression ConditionReader::ReadAtom() {
    if (++depth > DeepestNesting) return Fail("too many brackets");
    ClistExpression atom;
    if (Take("!"))
        atom = Make(Kind::Not, "", {ReadAtom()});
    else if (isBooleanBracket())
        atom = ReadBracket();
    else
        atom = isNewer ? ReadNewerComparison() : ReadOlderComparison();
    depth--;
    return atom;
}

// Whether the bracket that comes next holds a condition of its own: nothing that goes on with a value stands
// behind it.
bool ConditionReader::isBooleanBracket() const {
    std::string_view text = rest;
    SkipBlanks(text);
    if (!text.starts_with("(")) return false;
    int open = 0;
    size_t end = 0;
    for (; end < text.size(); end++) {
        open += text[end] == '(' ? 1 : text[end] == ')' ? -1 : 0;
        if (open == 0) break;
    }
    if (end >= text.size()) return true; // the missing bracket is told by whoever reads on
    const std::string_view inside = text.substr(1, end - 1);
    text.remove_prefix(end + 1);
    SkipBlanks(text);
    const bool isCast = inside == "int" || inside == "float" || inside == "double";
    return !isCast && (text.empty() || text.starts_with("&&") || text.starts_with("||") || text[0] == ')');
}

ClistExpression ConditionReader::ReadBracket() {
    Take("(");
    ClistExpression inside = ReadAlternatives();
    return Take(")") ? inside : Fail("a closing bracket is missing");
}

ClistExpression ConditionReader::ReadNewerComparison() {
    ClistExpression left = ReadSum();
    for (const char *oper : {"==", "!=", ">=", "<=", ">", "<"}) {
        if (!Take(oper)) continue;
        ClistExpression right = ReadSum();
        return Make(Kind::Compare, oper, {std::move(left), std::move(right)});
    }
    return left;
}

ClistExpression ConditionReader::ReadDatarefUntil(std::string_view ends) {
    SkipBlanks(rest);
    const size_t end = rest.find_first_of(ends);
    std::string name(rest.substr(0, end));
    while (!name.empty() && name.back() == ' ') name.pop_back();
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end);
    double number = 0.0;
    if (ParseDouble(name, number)) return {Kind::Number, number, "", {}};
    if (name.empty() || name.find_first_of(" \t,<>=(){}") != std::string::npos)
        return Fail("\"" + name + "\" is no dataref");
    return Make(Kind::Dataref, std::move(name), {});
}

ClistExpression ConditionReader::ReadOlderComparison() {
    ClistExpression value = ReadDatarefUntil(":&|)");
    if (!Take(":")) return Fail("behind \"" + value.text + "\" a value is missing");
    for (const char *moved : {"><", "+>", "-<"}) {
        if (!Take(moved)) continue;
        const std::string way = moved[0] == '>' ? "" : std::string(1, moved[1]);
        return Make(Kind::Moved, way, {std::move(value), ReadSum()});
    }
    const std::pair<const char *, const char *> operators[] = {
        {"!=", "!="}, {"<=", "<="}, {">=", ">="}, {"==", "=="}, {"<", "<"}, {">", ">"}, {"=", "=="},
    };
    for (const auto &[written, oper] : operators)
        if (Take(written)) return Make(Kind::Compare, oper, {std::move(value), ReadSum()});
    if (!Take("!")) return ReadRange(std::move(value), ReadSum());
    ClistExpression inside = ReadRange(std::move(value), ReadSum());
    if (inside.kind == Kind::Compare) {
        inside.text = "!=";
        return inside;
    }
    return Make(Kind::Not, "", {std::move(inside)});
}

// "low", "low|high" or "from:to", of which the first value has been read.
ClistExpression ConditionReader::ReadRange(ClistExpression value, ClistExpression low) {
    if (Take(":")) return Make(Kind::Passed, "", {std::move(value), std::move(low), ReadSum()});
    if (!TakeBar()) return Make(Kind::Compare, "==", {std::move(value), std::move(low)});
    ClistExpression atLeast = Make(Kind::Compare, ">=", {value, std::move(low)});
    ClistExpression atMost = Make(Kind::Compare, "<=", {std::move(value), ReadSum()});
    return Make(Kind::And, "", {std::move(atLeast), std::move(atMost)});
}

ClistExpression ConditionReader::ReadSum() {
    ClistExpression value = ReadProduct();
    while (!hasFailed()) {
        const char *oper = Take("+") ? "+" : Take("-") ? "-" : nullptr;
        if (!oper) break;
        ClistExpression right = ReadProduct();
        value = Make(Kind::Compute, oper, {std::move(value), std::move(right)});
    }
    return value;
}

ClistExpression ConditionReader::ReadProduct() {
    ClistExpression value = ReadPower();
    while (!hasFailed()) {
        const char *oper = Take("*") ? "*" : Take("/") ? "/" : nullptr;
        if (!oper) break;
        ClistExpression right = ReadPower();
        value = Make(Kind::Compute, oper, {std::move(value), std::move(right)});
    }
    return value;
}

ClistExpression ConditionReader::ReadPower() {
    ClistExpression base = ReadPrimary();
    if (!Take("**")) return base;
    ClistExpression exponent = ReadPower(); // from the right: a ** b ** c is a ** (b ** c)
    return Make(Kind::Compute, "**", {std::move(base), std::move(exponent)});
}

ClistExpression ConditionReader::ReadPrimary() {
    if (++depth > DeepestNesting) return Fail("too many brackets");
    ClistExpression value;
    SkipBlanks(rest);
    if (Take("{")) {
        value = ReadDatarefUntil("}");
        if (!Take("}")) Fail("a closing bracket is missing");
    } else if (Take("-")) {
        value = Make(Kind::Negate, "", {ReadPower()});
    } else if (Take("+")) {
        value = ReadPower();
    } else if (rest.starts_with("(")) {
        value = ReadCastOrBracket();
    } else if (!rest.empty() && isLetter(rest[0])) {
        value = ReadCall();
    } else {
        value = ReadNumber();
    }
    depth--;
    return value;
}

ClistExpression ConditionReader::ReadNumber() {
    size_t end = 0;
    const auto skipDigits = [&] {
        while (end < rest.size() && (isDigit(rest[end]) || rest[end] == '.')) end++;
    };
    skipDigits();
    if (end > 0 && end < rest.size() && (rest[end] == 'e' || rest[end] == 'E')) {
        end++;
        if (end < rest.size() && (rest[end] == '+' || rest[end] == '-')) end++;
        skipDigits();
    }
    ClistExpression value;
    if (!ParseDouble(rest.substr(0, end), value.number))
        return Fail(rest.empty() ? "a value is missing" : "\"" + std::string(rest) + "\" is no value");
    rest.remove_prefix(end);
    return value;
}

ClistExpression ConditionReader::ReadCastOrBracket() {
    for (const char *type : {"int", "float", "double"}) {
        const std::string cast = std::string("(") + type + ")";
        if (Take(cast)) return Make(Kind::Call, type, {ReadPrimary()});
    }
    if (isNewer) return ReadBracket();
    Take("(");
    ClistExpression inside = ReadSum();
    return Take(")") ? inside : Fail("a closing bracket is missing");
}

// A function with its arguments.
ClistExpression ConditionReader::ReadCall() {
    size_t end = 0;
    while (end < rest.size() && (isLetter(rest[end]) || isDigit(rest[end]))) end++;
    ClistExpression call = Make(Kind::Call, std::string(rest.substr(0, end)), {});
    rest.remove_prefix(end);
    if (!Take("(")) return Fail("\"" + call.text + "\" is no value");
    do call.parts.push_back(ReadSum());
    while (Take(","));
    return Take(")") ? call : Fail("a closing bracket is missing");
}

} // namespace

bool ReadClistCondition(std::string_view text, ClistExpression &condition, std::string &reason) {
    SkipBlanks(text);
    const bool isNewer = text.starts_with(":");
    if (isNewer) text.remove_prefix(1);
    return ConditionReader(text, isNewer).ReadAll(condition, reason);
}
