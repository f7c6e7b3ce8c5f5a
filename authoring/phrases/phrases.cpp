// Each system that listens or talks is a section. Sections that read the same in several aircraft are printed
// once. In a sequence the questions of a step stand beside the answers of the step after it.
#include "authoring/phrases/phrases.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "authoring/check/folder.h"
#include "systems/links.h"
#include "systems/model.h"
#include "systems/reader.h"
#include "util/text.h"

namespace simhost {

namespace {

using Texts = std::vector<std::string>;

struct Section {
    std::string text;
    Texts aircraft;
};

// As she says it: alternatives apart, values and names that are filled in as an ellipsis.
std::string Spoken(std::string text) {
    for (size_t begin = 0; (begin = text.find('<', begin)) != std::string::npos;) {
        const size_t end = text.find('>', begin);
        if (end == std::string::npos) break;
        text.replace(begin, end - begin + 1, "…");
    }
    for (const Placeholder &spoken : Placeholders)
        text = ReplaceStringAll(std::move(text), spoken.word, spoken.onPage);
    return ReplaceStringAll(std::move(text), "#", " / ");
}

void AddOnce(Texts &texts, const std::string &text) {
    if (std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(text);
}

// What a block says, without announcements; or what it does for a word that every crew uses.
Texts Sayings(const logicblock_struct &block) {
    Texts said;
    for (const structExecute &action : block.executes)
        if (TextOfAction(action.type) == ActionText::Spoken && !action.text.starts_with('#'))
            said.push_back(Spoken(action.text));
    if (block.executes.size() != 1) return said;
    const structExecute &action = block.executes.front();
    if (action.type == ScriptHold || action.type == ScriptSkip)
        said.push_back("*" + DeedOf(*ActionKindOf(action.type), action.text, action.value) + "*");
    return said;
}

Texts Phrases(const logicblock_struct &block) {
    Texts phrases;
    for (const compare_block_class &comparison : block.compares)
        if (comparison.a.kind == LinkSpeech)
            AddOnce(phrases, comparison.phrase == AnyPhrase ? "*anything*" : "**" + comparison.phrase + "**");
    return phrases;
}

std::string Joined(const Texts &texts, const char *between) {
    std::string joined;
    for (const std::string &text : texts) joined += (joined.empty() ? "" : between) + text;
    return joined;
}

// One line for each thing to say, with all that she may answer.
std::string DescribeReactions(const device_struct &device) {
    std::vector<std::pair<Texts, Texts>> rows; // phrases, answers
    Texts calls;
    for (const out_parameter_struct &parameter : device.outs) {
        for (const logicblock_struct &block : parameter.logic) {
            const Texts phrases = Phrases(block);
            const std::string said = Joined(Sayings(block), " ");
            if (phrases.empty()) {
                if (!said.empty()) AddOnce(calls, said);
                continue;
            }
            if (rows.empty() || rows.back().first != phrases) rows.push_back({phrases, {}});
            if (!said.empty()) AddOnce(rows.back().second, said);
        }
    }
    std::string text;
    if (!rows.empty()) text += "\n| You say | She says |\n|---|---|\n";
    for (const auto &[phrases, answers] : rows)
        text += "| " + Joined(phrases, ", ") + " | " + Joined(answers, " — or: ") + " |\n";
    if (!calls.empty()) text += "\nShe calls by herself:\n\n";
    for (const std::string &call : calls) text += "- " + call + "\n";
    return text;
}

// A table of questions and answers; where nothing is answered, a list.
std::string DescribeSequence(const device_struct &device) {
    Texts phrases, instead, said, all;
    std::string rows, text;
    const auto addRow = [&](const Texts &answers) {
        rows += "| " + Joined(said, "<br>") + " | " + Joined(answers, ", ") + " |\n";
        said.clear();
    };
    for (const out_parameter_struct &step : device.outs) {
        Texts answers, next;
        for (const logicblock_struct &block : step.logic) {
            const bool isFirst = &step == &device.outs.front();
            for (const std::string &phrase : Phrases(block)) AddOnce(isFirst ? phrases : answers, phrase);
            const bool breaksOff =
                std::any_of(block.executes.begin(), block.executes.end(),
                            [](const structExecute &action) { return action.type == ScriptBreak; });
            const Texts sayings = Sayings(block);
            if (!breaksOff)
                next.insert(next.end(), sayings.begin(), sayings.end());
            else if (!sayings.empty())
                AddOnce(instead, Joined(sayings, " "));
        }
        if (!answers.empty()) addRow(answers);
        said.insert(said.end(), next.begin(), next.end());
        for (const std::string &saying : next) AddOnce(all, saying);
    }
    if (!phrases.empty()) text += "\nSay " + Joined(phrases, " or ") + ".\n";
    if (!rows.empty()) {
        if (!said.empty()) addRow({});
        text += "\n| She says | You answer |\n|---|---|\n" + rows;
    } else if (!all.empty()) {
        text += "\nShe says:\n\n- " + Joined(all, "\n- ") + "\n";
    }
    if (!instead.empty()) text += "\nShe may stop there and say:\n\n- " + Joined(instead, "\n- ") + "\n";
    return text;
}

std::string DescribeSystem(const system_class &system) {
    std::string text;
    for (const device_struct &device : system.devices) {
        const std::string described =
            device.serialStack ? DescribeSequence(device) : DescribeReactions(device);
        if (!described.empty()) text += "\n### " + device.name + "\n" + described;
    }
    return text.empty() ? text : "\n## " + system.name + "\n%\n" + text;
}

} // namespace

int PrintPhrases(const std::vector<std::string> &folders) {
    std::vector<Section> sections;
    for (const std::string &folder : folders) {
        systems_vector.clear();
        RemapAll();
        if (EnterFolder(folder).empty()) return 2;
        CreateSystemsFromFile();
        const std::string name = std::filesystem::path(folder + "/").parent_path().filename().string();
        for (const system_class &system : systems_vector) {
            const std::string text = DescribeSystem(system);
            if (text.empty()) continue;
            const auto known = std::find_if(sections.begin(), sections.end(),
                                            [&](const Section &section) { return section.text == text; });
            if (known != sections.end())
                known->aircraft.push_back(name);
            else
                sections.push_back({text, {name}});
        }
    }
    std::cout
        << "# What you can say, and what she says\n\n"
           "Made from the systems files by `fennic-sim phrases`; do not edit. **Bold** is what the first "
           "officer listens for, \"…\" stands for a value or a name. **abort** breaks everything off, "
           "always. Where **continue** is an answer, it overrules her: she goes on although what she sees "
           "is not as it should be.\n";
    for (const Section &section : sections)
        std::cout << ReplaceString(section.text, "%", "\nIn " + Joined(section.aircraft, ", ") + ".");
    return 0;
}

} // namespace simhost
