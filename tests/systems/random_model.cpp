// Names are S<n>.D<n>.P<n> with few numbers, so that most links resolve, some name nothing, and some name
// the parameter itself.
#include "tests/systems/random_model.h"

#include <sstream>

#include "XPLMDataAccess.h"

const std::vector<ModelDataref> ModelDatarefs = {
    {"t/int", xplmType_Int, 1},        {"t/float", xplmType_Float, 1},
    {"t/double", xplmType_Double, 1},  {"t/any", xplmType_Int | xplmType_Float | xplmType_Double, 1},
    {"t/ints", xplmType_IntArray, 20}, {"t/floats", xplmType_FloatArray, 4},
};

std::string RandomModel::Number() {
    if (Chance(2)) return "1" + std::string(200, '0'); // whose square is infinite
    return OneOf(
        {"0", "1", "-1", "2", "0.5", "3", "5", "10", "101", "1100", "-12.75", "100", "0.000001", "2.0"});
}

std::string RandomModel::Link() {
    if (Chance(3)) return OneOf({"S0.D0", "S0..P0", "", "NO.SUCH.PARAMETER", "S0.D0.P0.X"});
    if (Chance(hasInput ? 40 : 5)) return own;
    return "S" + std::to_string(Below(2)) + ".D" + std::to_string(Below(3)) + ".P" + std::to_string(Below(4));
}

std::string RandomModel::Comparison(bool isSerial) {
    if (Chance(isSerial ? 50 : 10)) return std::string("instring=") + OneOf({"go", "next", "ready", "any"});
    if (hasInput && !moving.empty() && Chance(50)) // an input is compared while another one changes
        return "[" + own + "]" + OneOf({">", "<", ">=", "<="}) + "["
               + moving[Below(static_cast<unsigned>(moving.size()))] + "]";
    if (Chance(10))
        return "[" + Link() + "]" + OneOf({"==", "!=", ">"}) + "[" + OneOf({"1;2;x;5", ";", "0;"}) + "]";
    return "[" + Operand() + "]" + OneOf({"==", "!=", ">", "<", ">=", "<="}) + "[" + Operand() + "]";
}

std::string RandomModel::Calculation() {
    if (Chance(5)) return "calc=" + Number();
    std::string text = "calc=";
    for (unsigned i = 0, count = 1 + Below(4); i < count; i++) {
        if (i > 0 || Chance(20)) text += OneOf({"+", "-", "*", "/", "+", "*", "b2i", "flr", "?", ""});
        text += "[" + (Chance(20) ? "CBLOCK" + std::to_string(Below(4)) : Operand()) + "]";
    }
    return text;
}

std::string RandomModel::Action() {
    std::string text = OneOf({"yes", "no", "t/command", "t/int", "a; b", "rest"});
    if (Chance(30)) text += "<" + Link() + "> #or <&" + Link() + ">; < no";
    const unsigned unknown = 99, kind = Below(14); // 13 and 14 are more than the reference knows
    return "execute=" + std::to_string(kind == 13 ? unknown : kind) + "," + text + ","
           + OneOf({"0", "1", "2.5", "-1"});
}

std::string RandomModel::Block(bool isSerial) {
    std::string text = "logic:\n";
    for (unsigned i = 0, count = Below(isSerial ? 3 : 4); i < count; i++) {
        if (Chance(30)) text += Chance(50) ? "||\n" : "&&\n";
        text += Comparison(isSerial) + "\n";
    }
    const unsigned calculations = Below(4);
    for (unsigned i = 0; i < calculations; i++) text += Calculation() + "\n";
    if (Chance(isSerial ? 70 : 15))
        for (unsigned i = 0, count = 1 + Below(3); i < count; i++) text += Action() + "\n";
    if (Chance(20))
        for (unsigned i = 0, count = Below(5); i < count; i++)
            text += "graf=" + (Chance(90) ? std::to_string(i * 5) : Number()) + "," + Number() + "\n";
    return text;
}

std::string RandomModel::Parameter(unsigned index, bool isSerial) {
    std::string text = "out=P" + std::to_string(Chance(3) ? 0 : index) + ",";
    text += std::string(OneOf({"int", "double", "integer", "double", "odd"})) + ",,"
            + (isSerial ? "0" : Number());
    text += "," + (Chance(15) ? OneOf({"0", "-5", "1"}) : std::string());
    text += "," + (Chance(15) ? OneOf({"10", "1", "0.5"}) : std::string());
    hasInput = Chance(30);
    if (hasInput)
        text += std::string(",")
                + OneOf({"t/int", "t/any", "t/ints[3]", "t/floats[2]", "t/missing", "t/new0"}) + ",exist";
    else
        text += ",,";
    if (Chance(10))
        text += ",t/new" + std::to_string(published++) + ",new";
    else if (Chance(10))
        text += std::string(",")
                + OneOf({"t/float", "t/double", "t/int", "t/ints[3]", "t/floats[9]", "t/ints[99]"})
                + ",exist";
    else
        text += ",,";
    text += std::string(",text,") + OneOf({"0", "0", "1", "2", ""}) + "\n";
    for (unsigned i = 0, count = Below(4); i < count; i++) text += Block(isSerial);
    if (hasInput) moving.push_back(own);
    return text;
}

std::string RandomModel::Text() {
    std::string text;
    for (unsigned sys = 0, systems = 1 + Below(3); sys < systems; sys++) {
        text += "sys=S" + std::to_string(sys) + "\n";
        for (unsigned dev = 0, devices = Below(4); dev < devices; dev++) {
            const bool isSerial = Chance(45);
            text += (isSerial ? "devstack=D" : "dev=D") + std::to_string(dev) + "\n";
            for (unsigned out = 0, outs = Below(6); out < outs; out++) {
                own = "S" + std::to_string(sys) + ".D" + std::to_string(dev) + ".P" + std::to_string(out);
                text += Parameter(out, isSerial);
            }
        }
    }
    return text;
}

std::string RandomModel::WithMistakes(const std::string &text) {
    std::istringstream lines(text);
    std::string broken;
    for (std::string line; std::getline(lines, line);) {
        while (Chance(20)) {
            const unsigned place = Below(static_cast<unsigned>(line.size()) + 1);
            switch (Below(5)) {
            case 0: line.erase(place, 1); break;
            case 1: line += OneOf({" ", "]", "-", ",0", ",one,two", "||", "[3", "*2"}); break;
            case 2: line = OneOf({"&&", "||", "logic:", "# a comment", "calc=S0.D0.P0", "calc=-[-5]"}); break;
            default:
                line.insert(place, OneOf({"[",
                                          "]",
                                          "=",
                                          "==",
                                          ",",
                                          ";",
                                          "-",
                                          "!",
                                          "<",
                                          ">=",
                                          "sys=",
                                          "dev=",
                                          "devstack=",
                                          "out=",
                                          "calc=",
                                          "execute=",
                                          "instring=",
                                          "graf=",
                                          "s[ys=",
                                          "ca]lc=",
                                          "=[=",
                                          "execalc=ute=",
                                          "grainstring=f=",
                                          "0.0000001",
                                          "e-9",
                                          "CBLOCK-1",
                                          "--5",
                                          "\t"}));
            }
        }
        if (Chance(3)) continue;
        broken += line + "\n";
        if (Chance(3)) broken += line + "\n";
    }
    return broken;
}
