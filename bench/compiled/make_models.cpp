// Writes the models of the benchmarks as C++: make_models FOLDER [PARAMETERS...]
//
// What blocks say becomes "if", "else if" and expressions with their constants, over one array of values.
// What the models do not use, which is all that talks, is refused.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "bench/changing_model.h"
#include "bench/made_model.h"
#include "systems/links.h"
#include "systems/model_end.h"
#include "systems/operators.h"
#include "systems/program.h"
#include "systems/reader.h"

namespace {

const int ParametersPerFile = 1000;
const int ParametersPerFunction = 50;

std::string Number(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "(%a)", value);
    return text;
}

std::string Value(uint32_t index) {
    return "v[" + std::to_string(index) + "]";
}

std::string Operand(const sysLink_struct &link, double constant) {
    return link.kind == LinkNone ? Number(constant) : ParameterAt(link) ? Value(ValueIndex(link)) : "0.0";
}

std::string Comparison(const compare_block_class &comparison) {
    if (comparison.a.kind == LinkSpeech) throw std::runtime_error("a comparison of speech");
    const std::string a = Operand(comparison.a, comparison.aValue);
    if (comparison.bList.empty() || !isEquality(comparison.cmpOp))
        return a + comparison.cmpText + Operand(comparison.b, comparison.bValue);
    std::string isListed;
    for (const int number : comparison.bList)
        isListed += (isListed.empty() ? "" : " || ") + a + " == " + std::to_string(number);
    return (comparison.cmpOp == CompareEqual ? "" : "!") + ("(" + isListed + ")");
}

std::string Chain(const logicblock_struct &block) {
    std::string chain = "true";
    for (const compare_block_class &comparison : block.compares)
        chain =
            "(" + chain + (comparison.joinOp == 1 ? " || " : " && ") + "(" + Comparison(comparison) + "))";
    return chain;
}

std::string Calculation(const logicblock_struct &block) {
    if (!block.executes.empty() || !block.graph.empty() || block.calcs.size() != 1)
        throw std::runtime_error("a block with more than one calculation");
    std::string result = "x";
    for (const calcStack_class &element : block.calcs.front().stack) {
        const std::string operand = Operand(element.link, element.constant);
        if (element.operType > OperatorMultiply || element.blockIndex != -1)
            throw std::runtime_error("an operator: " + element.oper);
        result = element.operType == OperatorLoad ? operand : "(" + result + element.oper + operand + ")";
    }
    return result;
}

struct Maker {
    int datarefs = 0;

    std::string Parameter(const ParameterAddress &place) {
        const out_parameter_struct &parameter = *ParameterAt(place);
        if (DeviceAt(place)->serialStack) throw std::runtime_error("a sequence");
        const std::string value = Value(ValueIndex(place));
        std::string text = "    {\n        double x = " + value + ";\n";
        if (parameter.inDataref.handle)
            text += "        " + value + " = x = XPLMGetDataf(d[" + std::to_string(datarefs++) + "]);\n";
        const char *key = "        if (";
        for (const logicblock_struct &block : parameter.logic) {
            text += key + Chain(block) + ") x = " + Calculation(block) + ";\n";
            key = "        else if (";
        }
        if (parameter.hasMin)
            text += "        if (x < " + Number(parameter.minLimit) + ") x = " + Number(parameter.minLimit)
                    + ";\n";
        if (parameter.hasMax)
            text += "        if (x > " + Number(parameter.maxLimit) + ") x = " + Number(parameter.maxLimit)
                    + ";\n";
        text += "        " + value + " = x;\n";
        if (parameter.outDataref.handle)
            text += "        XPLMSetDataf(d[" + std::to_string(datarefs++) + "], float(x));\n";
        return text + "    }\n";
    }
};

const char *const Arguments = "(double *v, const XPLMDataRef *d)";

// The model that is loaded, in files name_0.cpp and so on; with the text of a function that calls them all.
std::string WriteModel(const std::string &folder, const std::string &name, int files) {
    CurrentProgram();
    Maker maker;
    std::vector<std::string> functions;
    ForEachAddress([&](const ParameterAddress &place) {
        const uint32_t index = ValueIndex(place);
        if (index % ParametersPerFunction == 0) functions.emplace_back();
        functions.back() += maker.Parameter(place);
    });
    const size_t perFile = (functions.size() + static_cast<size_t>(files) - 1) / static_cast<size_t>(files);
    std::string whole = "static void " + name + Arguments + " {\n", declarations;
    for (int file = 0; file < files; file++) {
        std::ofstream source(folder + "/" + name + "_" + std::to_string(file) + ".cpp");
        source << "#include \"XPLMDataAccess.h\"\n";
        for (size_t i = perFile * static_cast<size_t>(file);
             i < functions.size() && i < perFile * (static_cast<size_t>(file) + 1); i++) {
            const std::string function = name + "_part" + std::to_string(i);
            source << "void " << function << Arguments << ";\nvoid " << function << Arguments << " {\n"
                   << "    (void)d;\n"
                   << functions[i] << "}\n";
            declarations += "void " + function + Arguments + ";\n";
            whole += "    " + function + "(v, d);\n";
        }
    }
    return declarations + whole + "}\n";
}

void WriteModels(const std::string &folder, const std::vector<int> &sizes) {
    std::string text = "#include \"bench/compiled/compiled_models.h\"\n", table;
    for (const int parameters : sizes) {
        for (const bool hasMore : {false, true}) {
            BenchFolder plugin;
            plugin.Write("sys.txt", ChangingModel(parameters, hasMore));
            CreateSystemsFromFile();
            const std::string name = (hasMore ? "more_" : "plain_") + std::to_string(parameters);
            text += WriteModel(folder, name, std::max(1, parameters / ParametersPerFile));
            table +=
                "    {" + std::to_string(parameters) + (hasMore ? ", true, " : ", false, ") + name + "},\n";
            ForgetModel();
        }
    }
    std::ofstream(folder + "/models.cpp") << text << "const CompiledModel CompiledModels[] = {\n"
                                          << table << "    {0, false, nullptr},\n};\n";
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) return 2;
    std::vector<int> sizes;
    for (int i = 2; i < argc; i++) sizes.push_back(std::atoi(argv[i]));
    try {
        WriteModels(argv[1], sizes);
    } catch (const std::exception &problem) {
        std::cerr << "make_models: cannot write " << problem.what() << " as C++\n";
        return 1;
    }
}
