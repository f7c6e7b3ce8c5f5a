// What actions and bindings name outside the model: positions, commands, datarefs, and what their texts say.
#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"
#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "figure/positions.h"
#include "frame/datarefs.h"
#include "frame/settings.h"
#include "systems/dataref_binding.h"
#include "systems/links.h"
#include "util/find_dataref.h"
#include "util/numbers.h"
#include "util/text.h"

namespace simhost {

namespace {

constexpr std::string_view OfTheSimulator = "sim/";

bool hasSimulatorLists = false;
std::set<std::string> uncheckedNames;
std::map<std::string, std::set<std::string>> positionsOf; // by folder, such as "positions-w/"

// Names of the simulator are known when its lists were read; those of the aircraft and of other plug-ins
// never are, before the aircraft flies.
void ReportMissing(const char *what, const std::string &name, const std::string &file, int line) {
    if (!name.starts_with(OfTheSimulator))
        AddFinding(Severity::Note, file, line,
                   std::string("this ") + what + " must come from the aircraft or another plug-in: " + name);
    else if (hasSimulatorLists)
        AddFinding(Severity::Error, file, line,
                   std::string("the simulator has no ") + what + " " + name
                       + (FindDataref(name.c_str())       ? "; it is a dataref"
                          : XPLMFindCommand(name.c_str()) ? "; it is a command"
                                                          : ""));
    else
        uncheckedNames.insert(name);
}

int ElementsOf(XPLMDataRef dataref) {
    const XPLMDataTypeID types = XPLMGetDataRefTypes(dataref);
    if (types & xplmType_FloatArray) return XPLMGetDatavf(dataref, nullptr, 0, 0);
    if (types & xplmType_IntArray) return XPLMGetDatavi(dataref, nullptr, 0, 0);
    return 0;
}

void CheckElement(const std::string &fullName, XPLMDataRef dataref, const std::string &file, int line) {
    const DatarefName parts(fullName);
    if (dataref && XPLMGetDataRefTypes(dataref) == xplmType_Data) {
        AddFinding(Severity::Error, file, line, "the dataref is a text, not a number: " + fullName);
        return;
    }
    if (!parts.hasIndex) {
        if (ElementsOf(dataref) > 0)
            AddFinding(Severity::Error, file, line, "an array needs an index, such as [0]: " + fullName);
        else if (fullName.find_first_of("()") != std::string::npos)
            AddFinding(Severity::Error, file, line, "an index stands in square brackets: " + fullName);
        return;
    }
    if (!parts.isClosed)
        AddFinding(Severity::Error, file, line, "\"[\" without \"]\": " + fullName);
    else if (!parts.isReachable())
        AddFinding(Severity::Error, file, line,
                   "the index of an array is a number from 0 to " + int2string(ReachableElements - 1) + ": "
                       + fullName);
    else if (dataref && ElementsOf(dataref) == 0)
        AddFinding(Severity::Error, file, line, "no array, so it takes no index: " + fullName);
    else if (dataref && *parts.index >= ElementsOf(dataref))
        AddFinding(Severity::Error, file, line,
                   "the array has " + int2string(ElementsOf(dataref)) + " elements: " + fullName);
}

enum class Use { Read, Write };

void CheckDataref(const std::string &fullName, Use use, const std::string &file, int line) {
    const std::string name = DatarefName(fullName).name;
    const XPLMDataRef dataref = FindDataref(name.c_str());
    if (!dataref) ReportMissing("dataref", name, file, line);
    CheckElement(fullName, dataref, file, line);
    if (dataref && use == Use::Write && !XPLMCanWriteDataRef(dataref))
        AddFinding(Severity::Error, file, line, "the dataref cannot be written: " + name);
}

void CheckBinding(const dataref_class &binding, Use use, const ParameterPlace &place) {
    const std::string &file = place.parameter.fileName;
    const int line = place.parameter.line;
    if (binding.fullName.empty()) return;
    if (binding.mode == BindingNone)
        AddFinding(Severity::Error, file, line,
                   "the mode of a dataref is \"exist\" or \"new\": " + binding.fullName);
    else if (binding.mode == BindingExist)
        CheckDataref(binding.fullName, use, file, line);
    else if (!binding.handle)
        AddFinding(Severity::Error, file, line, "this dataref is published already: " + binding.fullName);
    else if (binding.name != binding.fullName)
        AddFinding(Severity::Error, file, line, "a new dataref is no array: " + binding.fullName);
}

void CheckPosition(const std::string &name, const std::string &file, int line) {
    std::string folders;
    for (const auto &[folder, names] : positionsOf)
        if (!names.contains(name)) folders += (folders.empty() ? "custom/" : " and custom/") + folder;
    if (!folders.empty())
        AddFinding(Severity::Error, file, line, "there is no position " + name + " in " + folders);
}

// Of each word the first one in a text is replaced; of the runways only one.
void CheckPlaceholdersOnce(const std::string &text, const std::string &file, int line) {
    const char *runway = nullptr;
    for (const Placeholder &spoken : Placeholders) {
        const std::string word = spoken.word;
        const size_t first = text.find(word);
        if (first == std::string::npos) continue;
        if (text.find(word, first + 1) != std::string::npos)
            AddFinding(Severity::Error, file, line,
                       "only the first " + word + " is replaced, the second is spoken as it stands: " + text);
        if (runway)
            AddFinding(Severity::Error, file, line,
                       std::string("beside ") + runway + " a " + word
                           + " is not replaced, it is spoken as it stands: " + text);
        if (spoken.isRunway) runway = spoken.word;
    }
}

// Placeholders: links that do not end, and words between brackets. The links themselves are checked with all
// others.
void CheckText(const structExecute &action, const std::string &file) {
    const std::string &text = action.text;
    const int line = action.line;
    if (text.empty()) AddFinding(Severity::Warning, file, line, "nothing to say");
    const char alternatives = action.type == ScriptSayWait ? '#' : '\n'; // which is in no line
    for (const std::string &alternative : StringToWordsArray(text, alternatives)) {
        size_t done = 0;
        for (SpokenLink link; FindSpokenLink(alternative, done, link);) done = link.end;
        if (alternative.find('<', done) != std::string::npos)
            AddFinding(Severity::Error, file, line, "\"<\" without \">\": " + alternative);
        CheckPlaceholdersOnce(alternative, file, line);
    }
    for (size_t open = text.find('['); open != std::string::npos; open = text.find('[', open + 1)) {
        const std::string word = text.substr(open, text.find(']', open) - open + 1);
        if (std::none_of(std::begin(Placeholders), std::end(Placeholders),
                         [&](const Placeholder &known) { return known.word == word; }))
            AddFinding(Severity::Warning, file, line, "unknown placeholder, spoken as it stands: " + word);
    }
}

void CheckAction(const structExecute &action, const ParameterPlace &place) {
    const std::string &file = place.parameter.fileName;
    switch (TextOfAction(action.type)) {
    case ActionText::Spoken: CheckText(action, file); break;
    case ActionText::Position: CheckPosition(action.text, file, action.line); break;
    case ActionText::Command:
        if (!XPLMFindCommand(action.text.c_str())) ReportMissing("command", action.text, file, action.line);
        break;
    case ActionText::Dataref:
        if (Contains(action.text, "="))
            AddFinding(Severity::Error, file, action.line, "the name of a dataref contains no \"=\"");
        else
            CheckDataref(action.text, Use::Write, file, action.line);
        break;
    case ActionText::Phrase:
    case ActionText::None: break;
    }
    if (action.type == ScriptPause && action.value <= 0.0)
        AddFinding(Severity::Warning, file, action.line, "a pause of no time");
    if (!ActionKindOf(action.type))
        AddFinding(Severity::Error, file, action.line, "there is no action " + int2string(action.type));
}

// A break drops what is queued behind it, also by its own block.
void CheckBehindBreak(const logicblock_struct &block, const ParameterPlace &place) {
    bool isBroken = false;
    for (const structExecute &action : block.executes) {
        const ActionKind *kind = ActionKindOf(action.type);
        if (isBroken && (!kind || kind->when == ActionTime::Queued)) {
            AddFinding(Severity::Error, place.parameter.fileName, action.line,
                       "never done: the break above drops what stands behind it");
            return;
        }
        isBroken = isBroken || action.type == ScriptBreak;
    }
}

// A command that is begun and never ended stays held for the rest of the flight.
void CheckHeldCommands() {
    std::set<std::string> ended;
    ForEachParameter([&](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic)
            for (const structExecute &action : block.executes)
                if (action.type == ScriptCommandEnd || action.type == ScriptCommandEndNow)
                    ended.insert(action.text);
    });
    ForEachParameter([&](const ParameterPlace &place) {
        for (const logicblock_struct &block : place.parameter.logic)
            for (const structExecute &action : block.executes)
                if (action.type == ScriptCommandBegin && !ended.contains(action.text))
                    AddFinding(Severity::Warning, place.parameter.fileName, action.line,
                               "held, and nothing lets go of it: " + action.text);
    });
}

void ReadPositionNames() {
    for (const char *folder : {"positions-w/", "positions-m/"}) {
        globalPosFolder = folder;
        ReadPositionFolder();
        if (!positionList.empty())
            positionsOf[folder] = std::set<std::string>(positionList.begin(), positionList.end());
    }
    if (positionsOf.empty())
        AddFinding(Severity::Note, "custom/", 0, "no positions here, so their names are not checked");
}

} // namespace

void CheckActions(bool hasLists) {
    hasSimulatorLists = hasLists;
    positionsOf.clear();
    uncheckedNames.clear();
    ReadPositionNames();
    ForEachParameter([](const ParameterPlace &place) {
        CheckBinding(place.parameter.inDataref, Use::Read, place);
        CheckBinding(place.parameter.outDataref, Use::Write, place);
        for (const logicblock_struct &block : place.parameter.logic) {
            for (const structExecute &action : block.executes) CheckAction(action, place);
            CheckBehindBreak(block, place);
        }
    });
    CheckHeldCommands();
    if (!uncheckedNames.empty())
        AddFinding(Severity::Note, "systems/", 0,
                   "not checked, which takes --xplane DIR, a simulator with its lists: "
                       + *uncheckedNames.begin()
                       + (uncheckedNames.size() == 1
                              ? ""
                              : " and " + int2string(static_cast<int>(uncheckedNames.size()) - 1)
                                    + " more names of datarefs and commands"));
}

} // namespace simhost
