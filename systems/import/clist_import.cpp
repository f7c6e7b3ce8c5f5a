// Three systems: what is read and whether conditions are met; the checklists, each with a device beside it
// that says what she does not see; and the menu, with what she offers to read next. A step waits for the
// answer to what the step before it has asked.
#include "systems/import/clist_import.h"

#include <utility>

#include "systems/import/condition.h"
#include "systems/import/condition_writer.h"
#include "systems/import/parameters.h"
#include "systems/import/spoken.h"
#include "systems/spoken_links.h"
#include "systems/writer.h"
#include "util/numbers.h"
#include "util/text.h"

namespace {

const char *const DataSystem = ImportedSystemNames[0];
const char *const ListSystem = ImportedSystemNames[1];
const char *const MenuSystem = ImportedSystemNames[2];
const char *const OfferDataref = "kv/fennic/checklist/offer";
const char *const TimeDataref = "sim/time/total_flight_time_sec";
const char *const Overrule = "continue";
const double SecondsToAccept = 25.0;
const double SecondsBeforeShow = 5.0; // until the aircraft's datarefs are there
const double SecondsToLetGo = 0.5;    // of the button, behind a question that takes silence for an answer

// One step: what she says when its turn comes, and what ends it.
struct Step {
    std::string name;
    std::vector<std::string> texts;
    std::vector<std::string> phrases; // empty: any answer
    std::string met;                  // the link of its condition; empty: none
    bool isTickedByCondition = false;

    bool TakesAnything() const { return phrases.empty() && !isTickedByCondition; }
};

struct Sequence {
    const Clist *clist = nullptr;
    std::string name; // of the device
    std::string phrase;
    std::vector<Step> steps;         // behind the first, which is called
    std::vector<std::string> ending; // texts behind the last item
    bool isOffered = false;          // by another, or by itself
    size_t number = 0;               // from 1
};

std::string LinkTo(const std::string &system, const std::string &device, const std::string &parameter) {
    return system + "." + device + "." + parameter;
}

out_parameter_struct Parameter(const std::string &name, std::vector<logicblock_struct> blocks = {}) {
    out_parameter_struct parameter;
    parameter.name = name;
    parameter.logic = std::move(blocks);
    return parameter;
}

// Any of the answers; none at all stands for whatever is said.
void JoinAnswers(std::vector<compare_block_class> &chain, const std::vector<std::string> &phrases) {
    if (phrases.empty()) JoinByOr(chain, Heard(AnyPhrase));
    for (const std::string &phrase : phrases) JoinByOr(chain, Heard(phrase));
}

class ClistImporter {
public:
    ClistImporter(std::string_view text, const ClistImportOptions &options)
        : options(options), conditions(DataSystem, options.isWhole), clists(ReadClist(text, result.notes)) {}

    ClistImport Import();

private:
    const ClistImportOptions &options;
    ClistImport result;
    ConditionWriter conditions;
    const std::vector<Clist> clists;
    std::vector<Sequence> sequences;
    bool areOffersUsed = false;

    void NameSequences();
    void MakeSteps(Sequence &sequence);
    Step MakeStep(const ClistItem &item, const std::string &name, const std::string &before);
    std::string ConditionLink(const std::string &text, int line, const std::string &name,
                              const std::string &before, const std::string &instead);
    Sequence *FindTarget(const Sequence &from, const std::string &name);
    std::vector<logicblock_struct> ContinuationBlocks(Sequence &sequence);
    std::vector<structExecute> Offer(Sequence &target, const std::string &text);
    device_struct SequenceDevice(Sequence &sequence);
    device_struct DoubtsDevice(const Sequence &sequence) const;
    device_struct OfferDevice();
    void AddShow(Sequence &sequence, device_struct &offers);
    device_struct MenuDevice() const;
    void Put(const system_class &system);
};

std::string Announced(const std::string &phrase) {
    return LowerToUpperCase(phrase.substr(0, 1)) + phrase.substr(1);
}

// The devices' names, and the phrases that call them: no two are alike.
void ClistImporter::NameSequences() {
    std::vector<std::string> names, phrases;
    for (const Clist &clist : clists) {
        Sequence sequence;
        sequence.clist = &clist;
        sequence.number = sequences.size() + 1;
        sequence.phrase = UpperToLowerCase(UniqueName(ChecklistPhrase(clist.name), phrases));
        sequence.name = UniqueName(ReplaceString(sequence.phrase, " checklist", ""), names);
        sequences.push_back(std::move(sequence));
    }
}

// The link of a condition's parameter. Empty, with a note that says what is done instead, when there is none.
std::string ClistImporter::ConditionLink(const std::string &text, int line, const std::string &name,
                                         const std::string &before, const std::string &instead) {
    ClistExpression expression;
    std::string reason, link;
    result.conditions++;
    if (ReadClistCondition(text, expression, reason))
        link = conditions.Write(expression, name, before, reason);
    if (link.empty())
        result.notes.push_back({line, "condition \"" + text + "\": " + reason + "; " + instead});
    else
        result.conditionsTaken++;
    return link;
}

Step ClistImporter::MakeStep(const ClistItem &item, const std::string &name, const std::string &before) {
    Step step;
    step.name = name;
    step.phrases = AnswerPhrases(item.answer);
    if (!item.condition.empty())
        step.met = ConditionLink(item.condition, item.line, name, before, "asked as a plain question");
    step.isTickedByCondition = item.kind == ClistItem::Information && !step.met.empty();
    const std::string label = SpokenText(item.label);
    step.texts.push_back(step.isTickedByCondition
                             ? label + ", " + UpperToLowerCase(SpokenText(item.answer)) + "."
                             : label + "?");
    return step;
}

// Headings and remarks are said with what follows them.
void ClistImporter::MakeSteps(Sequence &sequence) {
    std::vector<std::string> used = {"CALL", "NEXT"}, pending;
    conditions.BeginList(sequence.name);
    std::string before = LinkTo(ListSystem, sequence.name, "CALL");
    for (const ClistItem &item : sequence.clist->items) {
        const std::string label = SpokenText(item.label);
        if (item.kind == ClistItem::Heading || item.kind == ClistItem::Remark) {
            if (item.isSpoken && !label.empty()) pending.push_back(label + ".");
            continue;
        }
        result.items++;
        if (label.empty() || !item.isSpoken) {
            const char *why = label.empty() ? "has no words" : "is not to be spoken";
            result.notes.push_back({item.line, "the item \"" + item.label + "\" " + why + "; left out"});
            continue;
        }
        Step step = MakeStep(item, UniqueName(label, used), before);
        before = LinkTo(ListSystem, sequence.name, step.name);
        step.texts.insert(step.texts.begin(), pending.begin(), pending.end());
        pending.clear();
        sequence.steps.push_back(std::move(step));
    }
    sequence.ending = pending;
    sequence.ending.push_back(Announced(sequence.phrase) + " complete" + Placeholders[SkippedItems].word
                              + ".");
}

Sequence *ClistImporter::FindTarget(const Sequence &from, const std::string &name) {
    if (name.empty()) return from.number < sequences.size() ? &sequences[from.number] : nullptr;
    for (Sequence &sequence : sequences)
        if (FoldCase(sequence.clist->name) == FoldCase(name)) return &sequence;
    return nullptr;
}

std::vector<structExecute> ClistImporter::Offer(Sequence &target, const std::string &text) {
    areOffersUsed = target.isOffered = true;
    return {Action(ScriptSet, OfferDataref, static_cast<double>(target.number)),
            Action(ScriptAnswer, "yes", SecondsToAccept), Action(ScriptAnswer, "no", SecondsToAccept),
            Action(ScriptSayWait, text)};
}

// The first continuation whose condition holds; the last block ends the sequence where none does.
std::vector<logicblock_struct> ClistImporter::ContinuationBlocks(Sequence &sequence) {
    std::vector<logicblock_struct> blocks;
    for (const ClistContinuation &continuation : sequence.clist->continuations) {
        Sequence *target = FindTarget(sequence, continuation.name);
        if (!target) {
            const std::string name = continuation.name.empty() ? "behind the last" : continuation.name;
            result.notes.push_back({continuation.line, "there is no checklist " + name + " to go on with"});
            continue;
        }
        logicblock_struct block;
        if (!continuation.condition.empty()) {
            const std::string met = ConditionLink(continuation.condition, continuation.line, "NEXT", "",
                                                  "the checklist is not offered");
            if (met.empty()) continue;
            block.compares = {Comparison({met}, "==", {"", 1.0})};
        }
        block.executes = Offer(*target, "Next is the " + target->phrase + ". Shall I read it?");
        blocks.push_back(std::move(block));
        if (blocks.back().compares.empty()) return blocks;
    }
    if (blocks.empty()) return blocks;
    blocks.emplace_back();
    blocks.back().executes = {Action(ScriptPass, "")};
    return blocks;
}

// What is said in a step: headings and remarks, also when the step is skipped, and the question.
std::vector<structExecute> Sayings(const std::vector<std::string> &texts) {
    std::vector<structExecute> actions;
    for (const std::string &text : texts)
        actions.push_back(Action(ScriptSayWait, text, &text == &texts.back() ? 0.0 : 1.0));
    return actions;
}

// What ends the step, with what she says then: the texts of the step behind it.
std::vector<logicblock_struct> StepBlocks(const Step &step, const std::vector<std::string> &texts,
                                          bool isAnyNext) {
    std::vector<structExecute> actions = Sayings(texts);
    if (isAnyNext) actions.push_back(Action(ScriptPause, "", SecondsToLetGo));
    std::vector<logicblock_struct> blocks(1);
    std::vector<compare_block_class> &chain = blocks[0].compares;
    if (!step.isTickedByCondition) JoinAnswers(chain, step.phrases);
    if (!step.met.empty()) chain.push_back(Comparison({step.met}, "==", {"", 1.0}));
    blocks[0].executes = actions;
    if (step.met.empty()) return blocks;
    blocks.emplace_back();
    blocks[1].compares = {Heard(Overrule)};
    blocks[1].executes = std::move(actions);
    return blocks;
}

device_struct ClistImporter::SequenceDevice(Sequence &sequence) {
    device_struct device;
    device.name = sequence.name;
    device.serialStack = true;
    std::vector<logicblock_struct> called(1);
    JoinByOr(called[0].compares, Heard(sequence.phrase));
    if (sequence.isOffered) {
        JoinByOr(called[0].compares, Comparison({LinkTo(MenuSystem, "OFFER", "ACCEPTED")},
                                                "==", {"", static_cast<double>(sequence.number)}));
        called[0].executes = {Action(ScriptSet, OfferDataref), Action(ScriptAnswer, "yes"),
                              Action(ScriptAnswer, "no")};
    }
    if (sequence.clist->isSpoken)
        called[0].executes.push_back(Action(ScriptSayWait, Announced(sequence.phrase) + "."));
    const auto textsAt = [&](size_t i) {
        return i < sequence.steps.size() ? sequence.steps[i].texts : sequence.ending;
    };
    const auto takesAnything = [&](size_t i) {
        return i < sequence.steps.size() && sequence.steps[i].TakesAnything();
    };
    for (const std::string &text : textsAt(0)) called[0].executes.push_back(Action(ScriptSayWait, text));
    if (takesAnything(0)) called[0].executes.push_back(Action(ScriptPause, "", SecondsToLetGo));
    device.outs.push_back(Parameter("CALL", std::move(called)));
    for (size_t i = 0; i < sequence.steps.size(); i++)
        device.outs.push_back(Parameter(sequence.steps[i].name,
                                        StepBlocks(sequence.steps[i], textsAt(i + 1), takesAnything(i + 1))));
    return device;
}

// What she says to an answer while the condition is not met; the step keeps waiting.
device_struct ClistImporter::DoubtsDevice(const Sequence &sequence) const {
    device_struct device;
    device.name = sequence.name + " DOUBTS";
    std::string before = LinkTo(ListSystem, sequence.name, "CALL");
    for (const Step &step : sequence.steps) {
        const std::string own = LinkTo(ListSystem, sequence.name, step.name);
        if (!step.met.empty()) {
            std::vector<logicblock_struct> doubt(1);
            std::vector<compare_block_class> &chain = doubt[0].compares;
            JoinAnswers(chain, step.phrases);
            chain.push_back(Comparison({before}, ">", {"", 0.0}));
            chain.push_back(Comparison({own}, "==", {"", 0.0}));
            chain.push_back(Comparison({step.met}, "==", {"", 0.0}));
            doubt[0].executes = {
                Action(ScriptSay, std::string("I do not see it, [SIR]. Say ") + Overrule + " to go on.")};
            device.outs.push_back(Parameter(step.name, std::move(doubt)));
        }
        before = own;
    }
    return device;
}

// The list that is offered, as a number, until the pilot says yes or no, or some time has passed.
device_struct ClistImporter::OfferDevice() {
    const Operand offered = {LinkTo(MenuSystem, "OFFER", "OFFERED")}, zero;
    const Operand since = {LinkTo(MenuSystem, "OFFER", "SINCE")};
    const Operand before = {LinkTo(MenuSystem, "OFFER", "BEFORE")};
    const Operand waited = {LinkTo(MenuSystem, "OFFER", "WAITED")};
    std::string reason;
    const Operand time = {conditions.Dataref(TimeDataref, reason)};
    const auto block = [](std::vector<compare_block_class> chain, const Operand &value,
                          std::vector<structExecute> actions = {}) {
        logicblock_struct made;
        made.compares = std::move(chain);
        made.calcs = {Calculation(value)};
        made.executes = std::move(actions);
        return made;
    };
    std::vector<structExecute> answered = {Action(ScriptAnswer, "yes"), Action(ScriptAnswer, "no")};
    std::vector<structExecute> refused = answered;
    answered.push_back(Action(ScriptHold, ""));
    refused.push_back(Action(ScriptSay, "Standing by, [SIR]."));
    const compare_block_class isOpen = Comparison(offered, ">", zero),
                              isNone = Comparison(offered, "==", zero);
    std::vector<compare_block_class> isNoneOrOther = {isNone};
    JoinByOr(isNoneOrOther, Comparison(offered, "!=", before));

    device_struct device;
    device.name = "OFFER";
    out_parameter_struct number =
        Parameter("OFFERED", {block({Heard("no"), isOpen}, zero, refused),
                              block({Comparison(waited, ">", {"", SecondsToAccept})}, zero)});
    number.inDataref.fullName = number.outDataref.fullName = OfferDataref;
    number.inDataref.mode = BindingNew;
    number.outDataref.mode = BindingExist;
    device.outs.push_back(std::move(number));
    device.outs.push_back(
        Parameter("ACCEPTED", {block({isNone}, zero), block({Heard("yes"), isOpen}, offered, answered)}));
    device.outs.push_back(Parameter("SINCE", {block(isNoneOrOther, time)}));
    device.outs.push_back(Parameter("BEFORE", {block({}, offered)}));
    logicblock_struct elapsed = block({}, time);
    elapsed.calcs[0].stack.push_back(Element("-", since));
    device.outs.push_back(Parameter("WAITED", {std::move(elapsed)}));
    for (size_t i : {2U, 4U}) device.outs[i].type = TypeDouble;
    return device;
}

// Offers the list once when its conditions become true; again only after they were false.
void ClistImporter::AddShow(Sequence &sequence, device_struct &offers) {
    std::vector<std::string> met;
    for (const std::string &text : sequence.clist->showConditions) {
        if (text.empty()) continue;
        met.push_back(ConditionLink(text, sequence.clist->line, "SHOW", "",
                                    "the checklist does not come up by itself"));
        if (met.back().empty()) return;
    }
    if (met.empty()) return;
    const Operand zero, one = {"", 1.0};
    std::string reason;
    std::vector<logicblock_struct> blocks(2);
    std::vector<compare_block_class> &shows = blocks[0].compares;
    for (const std::string &link : met) {
        shows.push_back(Comparison({link}, "==", one));
        JoinByOr(blocks[1].compares, Comparison({link}, "==", zero));
    }
    for (const std::string &link :
         {LinkTo(MenuSystem, "SHOW", sequence.name), LinkTo(MenuSystem, "OFFER", "OFFERED"),
          LinkTo(ListSystem, sequence.name, "CALL")})
        shows.push_back(Comparison({link}, "==", zero));
    shows.push_back(Comparison({conditions.Dataref(TimeDataref, reason)}, ">", {"", SecondsBeforeShow}));
    blocks[0].calcs = {Calculation(one)};
    blocks[0].executes = Offer(sequence, "Shall I read the " + sequence.phrase + "?");
    blocks[1].calcs = {Calculation(zero)};
    offers.outs.push_back(Parameter(sequence.name, std::move(blocks)));
}

out_parameter_struct ReadFrom(const std::string &name, const char *dataref) {
    out_parameter_struct parameter = Parameter(name);
    parameter.inDataref.fullName = dataref;
    parameter.inDataref.mode = BindingExist;
    return parameter;
}

// The words of any crew. They stand in front of the checklists: an item may wait for whatever is said.
device_struct WordsDevice() {
    const Operand running = {LinkTo(DataSystem, "WORDS", "RUNNING")}, zero, one = {"", 1.0};
    const auto block = [](std::vector<compare_block_class> chain, std::vector<structExecute> actions) {
        logicblock_struct made;
        made.compares = std::move(chain);
        made.executes = std::move(actions);
        return made;
    };
    const structExecute none = Action(ScriptSay, "No checklist is running, [SIR].");
    device_struct device;
    device.name = "WORDS";
    device.outs = {
        ReadFrom("RUNNING", "kv/fo/checklist"),
        ReadFrom("HELD", "kv/fo/stand_by"),
        Parameter("SAY AGAIN",
                  {block({Heard("say again")}, {Action(ScriptSayWait, Placeholders[LastText].word)})}),
        Parameter("STAND BY", {block({Heard("stand by")}, {Action(ScriptHold, "", 1.0),
                                                           Action(ScriptSay, "Standing by, [SIR].")})}),
        Parameter("GO AHEAD",
                  {block({Heard("go ahead"), Comparison({LinkTo(DataSystem, "WORDS", "HELD")}, "==", one)},
                         {Action(ScriptHold, "")})}),
        Parameter("NEXT ITEM", {block({Heard("next item"), Comparison(running, "==", zero)}, {none}),
                                block({Heard("next item")}, {Action(ScriptSkip, "")})}),
        Parameter("CHECKLIST",
                  {block({Heard("checklist"), Comparison(running, "==", zero)}, {none}),
                   block({Heard("checklist")},
                         {Action(ScriptSayWait, std::string(Placeholders[WhereInChecklist].word) + ".")})}),
    };
    return device;
}

// What of them is on the screen, and within reach of the select button while it makes sense.
device_struct OfferedWordsDevice() {
    const auto whileOne = [](const char *parameter) {
        logicblock_struct block;
        block.compares = {Comparison({LinkTo(DataSystem, "WORDS", parameter)}, "==", {"", 1.0})};
        return block;
    };
    std::vector<logicblock_struct> held = {whileOne("HELD")}, words = {whileOne("RUNNING"), {}};
    held[0].executes = {Action(ScriptInput, "go ahead", 1.0)};
    for (const char *word : {"next item", "say again", "stand by", "checklist"})
        words[0].executes.push_back(Action(ScriptInput, word, 1.0));
    words[1].executes = {Action(ScriptInput, "say again"), Action(ScriptInput, "stand by")};
    device_struct device;
    device.name = "WORDS";
    device.outs = {Parameter("GO AHEAD", std::move(held)), Parameter("WORDS", std::move(words))};
    return device;
}

device_struct ClistImporter::MenuDevice() const {
    device_struct device;
    device.name = "CHECKLISTS";
    std::vector<logicblock_struct> blocks(1);
    for (const Sequence &sequence : sequences)
        blocks[0].executes.push_back(Action(ScriptInput, sequence.phrase));
    device.outs.push_back(Parameter("ALL", std::move(blocks)));
    return device;
}

void ClistImporter::Put(const system_class &system) {
    ImportedSystem imported;
    imported.name = system.name;
    std::string reason;
    if (!WriteSystem(system, imported.content, reason)) result.notes.push_back({0, reason});
    result.systems.push_back(std::move(imported));
}

ClistImport ClistImporter::Import() {
    NameSequences();
    result.lists = sequences.size();
    if (sequences.empty()) return std::move(result);
    std::vector<std::vector<logicblock_struct>> continuations;
    device_struct shows;
    shows.name = "SHOW";
    for (Sequence &sequence : sequences) {
        MakeSteps(sequence);
        continuations.push_back(ContinuationBlocks(sequence));
        AddShow(sequence, shows);
    }
    system_class lists, menu;
    lists.name = ListSystem;
    menu.name = MenuSystem;
    for (Sequence &sequence : sequences) { // now that it is known which of them are offered
        device_struct device = SequenceDevice(sequence);
        std::vector<logicblock_struct> &next = continuations[sequence.number - 1];
        if (!next.empty()) device.outs.push_back(Parameter("NEXT", std::move(next)));
        lists.devices.push_back(std::move(device));
        device_struct doubts = DoubtsDevice(sequence);
        if (!doubts.outs.empty()) lists.devices.push_back(std::move(doubts));
    }
    menu.devices.push_back(MenuDevice());
    if (options.bringsWords) menu.devices.push_back(OfferedWordsDevice());
    if (areOffersUsed) menu.devices.push_back(OfferDevice());
    if (!shows.outs.empty()) menu.devices.push_back(std::move(shows));
    if (options.publishesButton) {
        device_struct button;
        button.name = "BUTTON";
        out_parameter_struct click = Parameter("CLICK");
        click.inDataref.fullName = "kv/fennic/click_snd";
        click.inDataref.mode = BindingNew;
        button.outs.push_back(std::move(click));
        menu.devices.push_back(std::move(button));
    }
    system_class data = conditions.System(); // behind all that reads datarefs
    if (options.bringsWords) data.devices.push_back(WordsDevice());
    for (const system_class &system : {data, lists, menu})
        if (!system.devices.empty()) Put(system);
    return std::move(result);
}

} // namespace

ClistImport ImportClist(std::string_view text, const ClistImportOptions &options) {
    return ClistImporter(text, options).Import();
}
