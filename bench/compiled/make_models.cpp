// Writes the models of the benchmarks as C++: make_models FOLDER SYSTEMS [PARAMETERS...]
//
// What blocks say becomes "if", "else if" and expressions with their constants, over one array of values. Of
// the made models what they do not use is refused; the aircraft with the folder SYSTEMS talks, by
// talking_model.h.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
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

// The blocks of a model that talks.
class TalkingMaker {
public:
    std::string Text() {
        for (ParameterAddress place{0, 0, 0}; SystemAt(place); place = {place.sys + 1, 0, 0})
            for (; DeviceAt(place); place = {place.sys, place.dev + 1, 0})
                if (ParameterAt(place)) DeviceAt(place)->serialStack ? AddSequence(place) : AddDevice(place);
        return text;
    }

private:
    std::string text;
    int datarefs = 0;
    bool isSerial = false;

    void Line(const std::string &line) { text += "    " + line + "\n"; }

    void AddDevice(ParameterAddress place) {
        isSerial = false;
        for (; ParameterAt(place); place.out++) AddParameter(place);
    }

    void AddSequence(const ParameterAddress &first) {
        const auto isOfFirst = [&](const ProgramRun &run) { return run.firstParameter == ValueIndex(first); };
        const std::vector<ProgramRun> &runs = systemsProgram.runs;
        const auto run = std::find_if(runs.begin(), runs.end(), isOfFirst);
        const std::string start = Value(ValueIndex(first));
        isSerial = true;
        Line("{ StepContext step; bool rewinds = false; step.isSerial = true;");
        Line("step.called = p.runs[" + std::to_string(run - runs.begin()) + "].called;");
        if (run->isChecklist) Line("if (" + start + " > 0.0) NoteChecklistRuns();");
        for (ParameterAddress place = first; ParameterAt(place); place.out++) {
            const bool isFirst = place.out == 0, isLast = ValueIndex(place) + 1 == run->endParameter;
            const std::string value = Value(ValueIndex(place));
            Line("if (!rewinds && " + value + " > 0.0) { rewinds = PassStep()" + (isLast ? " | true" : "")
                 + "; }");
            Line("else if (!rewinds && isStepOpen(&" + value + (isFirst ? ", true" : ", false")
                 + ")) { step.isFirst = " + (isFirst ? "true;" : "false;"));
            AddParameter(place);
            Line("}");
        }
        Line("if (rewinds) Rewind(&" + start + ", " + std::to_string(run->endParameter - run->firstParameter)
             + ", step); }");
    }

    void AddParameter(const ParameterAddress &place) {
        const out_parameter_struct &parameter = *ParameterAt(place);
        const uint32_t index = ValueIndex(place);
        Line(std::string("{ ") + (isSerial ? "" : "StepContext step; ") + "double x = " + Value(index) + ";");
        if (parameter.inDataref.mode != BindingNone) {
            const std::string input = "d[" + std::to_string(datarefs++) + "]";
            Line("if (" + input + ".handle) " + Value(index) + " = x = " + input + ".Get();");
        }
        const uint32_t first = systemsProgram.parameters[index].firstBlock;
        const bool talks = systemsProgram.parameters[index].traits & HasSpeech;
        if (talks) Line("bool hasFired = false;");
        for (size_t i = 0; i < parameter.logic.size(); i++)
            AddBlock(parameter.logic[i], first + static_cast<uint32_t>(i), talks, i == 0 ? "" : "else ");
        if (parameter.hasMin)
            Line("x = x < " + Number(parameter.minLimit) + " ? " + Number(parameter.minLimit) + " : x;");
        if (parameter.hasMax)
            Line("x = x > " + Number(parameter.maxLimit) + " ? " + Number(parameter.maxLimit) + " : x;");
        Line(Value(index) + " = x;");
        if (parameter.outDataref.mode != BindingNone) {
            const std::string output = "d[" + std::to_string(datarefs++) + "]";
            Line("if (" + output + ".handle) " + output + ".Set(x);");
        }
        Line("(void)step; }");
    }

    // Where a phrase is compared, whatever fired before.
    void AddBlock(const logicblock_struct &block, uint32_t number, bool talks, const std::string &orElse) {
        if (talks) {
            Line("{ bool chain = true;");
            for (size_t i = 0; i < block.compares.size(); i++)
                Line(std::string("chain = chain ") + (block.compares[i].joinOp == 1 ? "| " : "& ") + "("
                     + SpokenComparison(block.compares[i], number, i) + ");");
            Line("if (chain) {");
        } else {
            Line(orElse + "if (" + Chain(block) + ") {");
        }
        const uint32_t firing = systemsProgram.blocks[number].firing;
        if (firing != NoIndex && systemsProgram.firings[firing].hasSpeech)
            Line("ConsumeRecognition(p, " + std::to_string(number) + ", step);");
        if (talks) Line("if (!hasFired) {");
        AddFiring(block, firing);
        Line(talks ? "} hasFired = true; } }" : "}");
    }

    static std::string SpokenComparison(const compare_block_class &comparison, uint32_t block, size_t index) {
        if (comparison.a.kind != LinkSpeech) return Comparison(comparison);
        const size_t number = systemsProgram.blocks[block].firstComparison + index;
        return "CompareSpeech(p, p.special[" + std::to_string(systemsProgram.comparisons[number].first)
               + "], step)";
    }

    void AddFiring(const logicblock_struct &block, uint32_t firing) {
        const bool acts = !block.executes.empty();
        if (acts) Line("Act(p, " + std::to_string(firing) + ", step);");
        if (isSerial) Line("if (step.isBrokenOff) x = StepBrokenOff;");
        if (isSerial && acts) Line("else x = StepDone;");
        if (isSerial && acts) return;
        if (isSerial) Line("else {");
        AddCalculations(block);
        if (firing != NoIndex && systemsProgram.firings[firing].graph != NoIndex)
            Line("x = LookUp(p, p.graphs[" + std::to_string(systemsProgram.firings[firing].graph) + "], x);");
        if (isSerial) Line("}");
    }

    void AddCalculations(const logicblock_struct &block) {
        if (block.calcs.size() > 1) throw std::runtime_error("several calculations");
        for (const calcBlock_struct &calculation : block.calcs) {
            std::string result = calculation.stack.empty() ? Number(block.constant) : "x";
            for (const calcStack_class &element : calculation.stack) {
                if (element.blockIndex != -1) throw std::runtime_error("the result of a calculation");
                result = Applied(element, result, Operand(element.link, element.constant));
            }
            Line("x = " + result + ";");
        }
    }

    static std::string Applied(const calcStack_class &element, const std::string &result,
                               const std::string &operand) {
        switch (element.operType) {
        case OperatorLoad: return operand;
        case OperatorDivide: return "Quotient(" + result + ", " + operand + ")";
        case OperatorBinaryToInteger: return "BinaryToInteger(" + result + ")";
        case OperatorFloor: return "std::floor(" + result + ")";
        default: return "(" + result + element.oper + operand + ")";
        }
    }
};

void WriteAircraft(const std::string &folder, const std::string &systems) {
    BenchFolder plugin;
    std::filesystem::copy(systems, plugin.plugin + "systems", std::filesystem::copy_options::recursive);
    CreateSystemsFromFile();
    CurrentProgram();
    if (systemsProgram.firedBlocks.empty()) throw std::runtime_error("the aircraft of " + systems);
    std::ofstream(folder + "/aircraft.cpp")
        << "#include \"bench/compiled/compiled_models.h\"\n#include \"bench/compiled/talking_model.h\"\n"
        << "void LargestAircraftFrame(double *v, const DatarefAccess *d, SystemsProgram &p) {\n"
        << TalkingMaker().Text() << "}\n";
    ForgetModel();
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 3) return 2;
    std::vector<int> sizes;
    for (int i = 3; i < argc; i++) sizes.push_back(std::atoi(argv[i]));
    try {
        WriteAircraft(argv[1], argv[2]);
        WriteModels(argv[1], sizes);
    } catch (const std::exception &problem) {
        std::cerr << "make_models: cannot write " << problem.what() << " as C++\n";
        return 1;
    }
}
