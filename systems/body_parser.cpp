// What body lines say becomes records at work: links are resolved, phrases told. A line that cannot be read
// is logged and kept at its place; the items before and after it stand.
#include "systems/body_parser.h"
#include "systems/dataref_binding.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "figure/positions.h"
#include "systems/kept_lines.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/notation.h"
#include "util/find_dataref.h"
#include "util/log.h"
#include "util/make_fresh.h"

BodyParserState bodyParserState;

namespace {

class BodyParser {
public:
    explicit BodyParser(const ParameterAddress &place) : place(place) {}

    void Parse();

private:
    const ParameterAddress place;
    system_class &system = *SystemAt(place);
    device_struct &device = *DeviceAt(place);
    out_parameter_struct &parameter = *ParameterAt(place);
    size_t lineIndex = 0;
    int joinOp = 0;
    kept_line_struct join;            // the last join line, until a comparison uses it
    int lastList = ListOfComparisons; // of the block, that the last line added to

    void ParseLine();
    void Add(BlockBegin item);
    void Add(JoinLine item);
    void Add(compare_block_class &&comparison);
    void Add(CalculationLine &&item);
    void Add(structExecute &&action);
    void Add(graf_struct &&point);
    void Add(const UnreadableLine &item);
    kept_line_struct HereKept(const std::string &reason);
    KeptLines &KeptHere();
    void KeepUnusedJoin();
    void ResolveLink(sysLink_struct &link) const;

    logicblock_struct &Block() { return parameter.logic.back(); }
    const std::string &Line() const { return parameter.lines[lineIndex]; }
    int LineNumber() const { return parameter.lineNumbers[lineIndex]; }
    template <typename Record> void Append(int list, std::vector<Record> &records, Record &&record) {
        lastList = list;
        record.line = LineNumber();
        records.push_back(std::move(record));
    }
};

// Offers a phrase to the menu, under the name of the device. Of a checklist only the first step's phrases
// are offered, which start it.
void OfferToMenu(const system_class &system, const device_struct &device, int out,
                 const std::string &phrase) {
    const bool isSameEntry = !commandsMenuVector.empty() && commandsMenuVector.back().title == device.name;
    if (isSameEntry && system.name == "CHECKLIST" && out != 0) return;
    if (!isSameEntry) {
        commandsMenuVector.push_back({device.name, {}});
        bodyParserState.offered.clear();
    }
    if (bodyParserState.offered.insert(phrase).second) commandsMenuVector.back().phrases.push_back(phrase);
}

void BodyParser::Parse() {
    for (; lineIndex < parameter.lines.size(); lineIndex++) ParseLine();
    KeepUnusedJoin();
    parameter.lines = {};
    parameter.lineNumbers = {};
}

void BodyParser::ParseLine() {
    LineRemarks remarks;
    BodyItem item = ReadBodyLine(Line(), remarks);
    ReportRemarks(remarks, parameter.fileName, LineNumber());
    const bool isOutside =
        parameter.logic.empty() && !std::get_if<BlockBegin>(&item) && !std::get_if<JoinLine>(&item);
    if (isOutside) item = UnreadableLine{"stands before the first \"logic:\"", true};
    KeepAsWritten(Line(), remarks.isWhole, item);
    std::visit([this](auto &read) { Add(std::move(read)); }, item);
}

void BodyParser::Add(BlockBegin) {
    KeepUnusedJoin();
    parameter.logic.emplace_back().line = LineNumber();
    joinOp = 0;
    lastList = ListOfComparisons;
}

void BodyParser::Add(JoinLine item) {
    KeepUnusedJoin();
    joinOp = item.joinOp;
    join = HereKept("joins no comparison");
}

void BodyParser::Add(compare_block_class &&comparison) {
    join = {};
    comparison.joinOp = joinOp;
    comparison.joinText = JoinKeys[joinOp];
    if (comparison.a.kind == LinkSpeech) {
        comparison.phraseStroka = MakeStrokaFromText(comparison.phrase, AddToContext);
        OfferToMenu(system, device, place.out, comparison.phrase);
    }
    ResolveLink(comparison.a);
    ResolveLink(comparison.b);
    Append(ListOfComparisons, Block().compares, std::move(comparison));
}

void BodyParser::Add(CalculationLine &&item) {
    for (calcStack_class &element : item.calculation.stack) ResolveLink(element.link);
    Block().constant = item.constant;
    Append(ListOfCalculations, Block().calcs, std::move(item.calculation));
}

void BodyParser::Add(structExecute &&action) {
    action.notFound = isMissing(action) ? 1 : 0;
    ReadSpokenLinks(action, place);
    Append(ListOfActions, Block().executes, std::move(action));
}

void BodyParser::Add(graf_struct &&point) {
    Append(ListOfPoints, Block().graph, std::move(point));
}

void BodyParser::Add(const UnreadableLine &item) {
    Report({.file = parameter.fileName,
            .line = LineNumber(),
            .reason = item.reason,
            .text = Line(),
            .isMisplaced = item.isMisplaced});
    KeepUnusedJoin();
    KeptHere().push_back(HereKept(item.reason));
}

// This line, behind what the one before added to.
kept_line_struct BodyParser::HereKept(const std::string &reason) {
    const size_t behind = parameter.logic.empty() ? 0 : CountOf(Block(), lastList);
    return {.text = Line(),
            .reason = reason,
            .line = LineNumber(),
            .list = lastList,
            .behind = static_cast<int>(behind)};
}

KeptLines &BodyParser::KeptHere() {
    return parameter.logic.empty() ? parameter.kept : Block().kept;
}

// A join that no comparison follows may belong to one that was not understood.
void BodyParser::KeepUnusedJoin() {
    if (!join.text.empty()) KeptHere().push_back(std::move(join));
    join = {};
}

void BodyParser::ResolveLink(sysLink_struct &link) const {
    if (isLink(link)) link = String2sysLinkSDO(place, std::string(link.name));
}

} // namespace

bool isMissing(const structExecute &action) {
    switch (TextOfAction(action.type)) {
    case ActionText::Position: return !mapPos.contains(action.text);
    case ActionText::Command: return !XPLMFindCommand(action.text.c_str());
    case ActionText::Dataref: return !FindDataref(DatarefName(action.text).name.c_str());
    default: return false;
    }
}

void LogicAndCalcForOutputParce() {
    ForEachAddress([](const ParameterAddress &place) { BodyParser(place).Parse(); });
}

void ResetBodyParser() {
    MakeFresh(bodyParserState);
}
