// A sequence from top to bottom: a box for each step, in it a row for each block that lets it go on. A block
// that breaks the sequence off has an arrow of its own, to the end.
#include <algorithm>

#include "authoring/chart/chart.h"
#include "systems/notation.h"
#include "util/numbers.h"
#include "util/text.h"

namespace simhost {

namespace {

std::string DescribeComparison(const compare_block_class &comparison) {
    if (comparison.a.kind == LinkSpeech)
        return comparison.phrase == AnyPhrase ? "the pilot says anything"
                                              : "the pilot says \"" + comparison.phrase + "\"";
    std::string left, right;
    AddOperand(left, comparison.a, comparison.aValue, ShownNumber);
    AddRightOperand(right, comparison, ShownNumber);
    if (right.ends_with(';')) right.pop_back();
    return left + " " + comparison.cmpText + " " + ReplaceStringAll(right, ";", " or ");
}

std::string DescribeAction(const structExecute &action) {
    const ActionKind *kind = ActionKindOf(action.type);
    return kind ? DeedOf(*kind, action.text, action.value) : "goes on";
}

bool BreaksOff(const logicblock_struct &block) {
    return std::any_of(block.executes.begin(), block.executes.end(),
                       [](const structExecute &action) { return action.type == ScriptBreak; });
}

void DescribeBlock(const logicblock_struct &block, size_t number, std::ostream &dot) {
    const char *const lineEnd = "<br align=\"left\"/>";
    dot << "<tr><td align=\"left\" port=\"b" << number << "\" bgcolor=\""
        << (BreaksOff(block) ? "#fbe3df" : "#ffffff") << "\">";
    for (size_t i = 0; i < block.compares.size(); i++) {
        const char *const join = i == 0 ? "if " : block.compares[i].joinOp == 1 ? "or " : "and ";
        dot << "<i>" << join << Escaped(DescribeComparison(block.compares[i])) << "</i>" << lineEnd;
    }
    for (const structExecute &action : block.executes) dot << Escaped(DescribeAction(action)) << lineEnd;
    if (block.compares.empty() && block.executes.empty()) dot << "goes on" << lineEnd;
    dot << "</td></tr>";
}

} // namespace

void DescribeFlow(const system_class &system, const device_struct &device, std::ostream &dot) {
    dot << "digraph flow {\n  label=" << Quoted(system.name + ": " + device.name)
        << "; labelloc=t; fontname=\"Helvetica\"; fontsize=16;\n"
           "  node [shape=plain, fontname=\"Helvetica\", fontsize=10];\n"
           "  edge [color=\"#4a6785\"];\n";
    bool hasBreak = false;
    for (size_t step = 0; step < device.outs.size(); step++) {
        const out_parameter_struct &parameter = device.outs[step];
        dot << "  s" << step
            << " [label=<<table border=\"0\" cellborder=\"1\" cellspacing=\"0\" cellpadding=\"5\">"
            << "<tr><td bgcolor=\"#dbe6f0\"><b>" << Escaped(parameter.name) << "</b></td></tr>";
        for (size_t block = 0; block < parameter.logic.size(); block++)
            DescribeBlock(parameter.logic[block], block, dot);
        dot << "</table>>];\n";
        const bool isLast = step + 1 == device.outs.size();
        dot << "  s" << step << " -> " << (isLast ? "done" : "s" + std::to_string(step + 1)) << ";\n";
        for (size_t block = 0; block < parameter.logic.size(); block++) {
            if (!BreaksOff(parameter.logic[block])) continue;
            dot << "  s" << step << ":b" << block << " -> broken [style=dashed];\n";
            hasBreak = true;
        }
    }
    dot << "  done [shape=box, style=\"rounded,filled\", fillcolor=\"#e3f1e0\", label=\"done\"];\n";
    if (hasBreak)
        dot << "  broken [shape=box, style=\"rounded,filled\", fillcolor=\"#fbe3df\", label=\"broken off\"];\n";
    dot << "}\n";
}

} // namespace simhost
