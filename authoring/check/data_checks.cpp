// The files of the plug-in's folder beside the systems files, read by the plug-in's own readers, whose
// messages become findings; and what the readers accept that cannot be meant.
#include <fstream>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "XPLMUtilities.h"
#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "figure/channels.h"
#include "figure/positions.h"
#include "figure/switch_places.h"
#include "frame/settings.h"
#include "gfx/fonts.h"
#include "simhost/simulator.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/text.h"
#include "voice/speech_link.h"

namespace simhost {

namespace {

constexpr size_t LineFields = 5; // of a position: the channel's number and name, x, y and z

// False when the positions, which go by the numbers of channels, cannot be looked at.
bool CheckChannels(const std::string &file) {
    if (!isPlainText(file)) return false;
    LoadAnimationFile(file);
    TellReaderRecords();
    int number = 0;
    for (const FileLine &line : ReadFileLines(file)) {
        int index = -1;
        if (!ParseInt(line.text.substr(0, line.text.find(',')), index) || index != number)
            AddFinding(Severity::Warning, file, line.number,
                       "this is channel " + int2string(number) + ", since the order of the lines counts");
        number++;
    }
    const int channels = static_cast<int>(anim.size());
    if (channels != FigureChannels)
        AddFinding(Severity::Error, file, 0,
                   "the figure has " + int2string(FigureChannels) + " channels, and here are "
                       + int2string(channels));
    else if (anim[FigureOffsetChannel].name != FigureOffsetName)
        AddFinding(Severity::Error, file, 0,
                   "channel " + int2string(FigureOffsetChannel) + " is called \"" + FigureOffsetName
                       + "\", not \"" + anim[FigureOffsetChannel].name + "\"");
    std::set<std::string> names;
    for (const structAnim &channel : anim)
        if (!names.insert(channel.name).second)
            AddFinding(Severity::Error, file, 0, "two channels have the name " + channel.name);
    return channels == FigureChannels;
}

// The loader goes by the index of a line; the name is for the reader, and should be that channel's.
void CheckChannelNames(const std::string &file) {
    std::set<std::string> seen;
    if (!isPlainText(file)) return;
    if (FileLineSize(file) == 0) AddFinding(Severity::Warning, file, 0, "no channel in this file");
    for (const FileLine &line : ReadFileLines(file)) {
        const std::vector<std::string> fields = StringToWordsArray(RemoveNRS(line.text), ',');
        int index = -1;
        if (std::any_of(fields.begin() + static_cast<std::ptrdiff_t>(std::min(fields.size(), LineFields)),
                        fields.end(), [](const std::string &field) { return !field.empty(); }))
            AddCause(file, line.number, "three numbers, each with a point, not a comma: " + line.text);
        if (fields.size() < 2 || !ParseInt(fields[0], index)) continue; // the reader says so
        if (index < 0 || static_cast<size_t>(index) >= anim.size()) continue;
        const std::string &name = anim[static_cast<size_t>(index)].name;
        if (fields[1] != name)
            AddFinding(Severity::Warning, file, line.number,
                       "channel " + int2string(index) + " is " + name + ", not " + fields[1]);
        if (!seen.insert(name).second)
            AddFinding(Severity::Warning, file, line.number, "a second line for channel " + name);
    }
}

void CheckPositionsOf(const std::string &pluginFolder, const std::string &folder) {
    globalPosFolder = folder;
    positionRestList.clear();
    ReadPositionFolder();
    const std::string base = pluginFolder + "custom/" + folder;
    std::set<std::string> names;
    for (const std::string &name : positionList) {
        const std::string &group = mapPos.at(name);
        const std::string file = base + (group.empty() ? "" : group + "/") + name + ".txt";
        if (!isFileExistString(file)) {
            for (const std::string &present : ReadFileListFromFolder(base + group))
                if (ReplaceString(present, ".txt", "") == name)
                    AddFinding(Severity::Warning, base + (group.empty() ? "" : group + "/") + present, 0,
                               "taken for a position, for which \".txt\" must be the end of the name");
            continue;
        }
        if (!names.insert(name).second) {
            AddFinding(Severity::Warning, file, 0,
                       "another group has a position " + name + " too; only this one is ever loaded");
            continue;
        }
        LoadPositionFastFromFile(name);
        TellReaderRecords();
        CheckChannelNames(file);
    }
    if (!positionList.empty() && positionRestList.empty())
        AddFinding(Severity::Warning, base, 0,
                   "no position has \"rest\" in its name, so she never moves by herself");
}

// A preset moves the fingers of one hand, and its name says which.
void CheckHand(const std::string &file, const std::string &preset) {
    const bool isLeft = preset.starts_with("l_");
    const int first = isLeft ? LeftFingersFirst : RightFingersFirst,
              last = isLeft ? LeftFingersLast : RightFingersLast;
    const std::vector<FileLine> lines = ReadFileLines(file);
    const bool movesHand = std::any_of(lines.begin(), lines.end(), [&](const FileLine &line) {
        int channel = -1;
        return ParseInt(line.text.substr(0, line.text.find(',')), channel) && channel >= first
               && channel <= last;
    });
    if (!isLeft && !preset.starts_with("r_"))
        AddFinding(Severity::Warning, file, 0,
                   "a preset is for the right hand, unless its name begins with \"l_\"; \"r_\" says so");
    else if (!lines.empty() && !movesHand)
        AddFinding(Severity::Warning, file, 0,
                   std::string("moves nothing: no line is for a finger of the ") + (isLeft ? "left" : "right")
                       + " hand, channels " + int2string(first) + " to " + int2string(last));
}

} // namespace

void CheckFigureFiles(const std::string &pluginFolder) {
    const std::string channels = pluginFolder + "data/obj/fennic.txt";
    if (!isFileExistString(channels)) {
        AddFinding(Severity::Note, channels, 0, "not here, so positions are not checked");
        return;
    }
    if (!CheckChannels(channels)) return;
    bool arePlacesRead = false; // against the positions of the first figure that has some
    for (const char *folder : {"positions-w/", "positions-m/"}) {
        CheckPositionsOf(pluginFolder, folder);
        if (positionList.empty() || arePlacesRead) continue;
        ReadSwitchPlaces();
        TellReaderRecords();
        arePlacesRead = true;
    }
    for (const std::string &preset : presetList) {
        if (!preset.ends_with(".txt")) continue;
        LoadPresetFromFile(preset);
        TellReaderRecords();
        const std::string file = pluginFolder + "custom/presets/" + preset;
        CheckChannelNames(file);
        CheckHand(file, preset);
    }
}

// What the reader of the settings takes without a word.
void CheckSetting(const std::string &file, const FileLine &line, bool areVoicesKnown, bool &hasNames) {
    const std::string key = line.text.substr(0, line.text.find('=') + 1),
                      value = line.text.substr(key.size());
    const std::span<const SettingsKey> keys = SettingsKeys();
    const auto known = std::find_if(keys.begin(), keys.end(),
                                    [&](const SettingsKey &candidate) { return candidate.text == key; });
    const auto warn = [&](const std::string &text) {
        AddFinding(Severity::Warning, file, line.number, text);
    };
    if (key.starts_with("name-")) hasNames = true;
    if (known == keys.end()) { // the reader looks for keys anywhere in a line
        const auto taken = std::find_if(keys.begin(), keys.end(), [&](const SettingsKey &candidate) {
            return Contains(line.text, candidate.text);
        });
        if (taken != keys.end()) warn(std::string("taken for \"") + taken->text + "\": " + line.text);
    } else if (const char *const reason = known->whyNot && known->number ? known->whyNot(value) : nullptr)
        warn(reason + (": " + value));
    else if (key == "gender=" && hasNames)
        warn("the gender must stand before the names, else they are not used");
    else if (areVoicesKnown && key.starts_with("APLvoice-") && !value.empty()
             && std::find(voiceList.begin(), voiceList.end(), value) == voiceList.end())
        warn("this voice is not in voicelist_mac.txt: " + value);
}

void CheckSettings(const std::string &pluginFolder) {
    const std::string file = pluginFolder + "data/settings_mac.txt";
    if (!isFileExistString(file)) return;
    if (!isFileExistString(pluginFolder + "data/settings_win.txt")) {
        AddFinding(Severity::Error, file, 0, "not read, because there is no settings_win.txt beside it");
        return;
    }
    isPlainText(file);
    const std::string voices = pluginFolder + "data/voicelist_mac.txt";
    const bool areVoicesKnown = isFileExistString(voices) && isPlainText(voices);
    ReadSettings();
    ReadVoiceList();
    TellReaderRecords();
    bool hasNames = false;
    for (const FileLine &line : ReadFileLines(file)) CheckSetting(file, line, areVoicesKnown, hasNames);
}

void CheckFonts(const std::string &pluginFolder) {
    const std::string folder = pluginFolder + "data/fnt/";
    for (const std::string &file : ReadFileListFromFolder(folder)) {
        if (!file.ends_with(".fnt")) continue;
        font_class font;
        std::ifstream stream(folder + file);
        font.ParseFont(stream, folder + file);
        if (TellReaderRecords()) continue;
        if (FileLineSize(folder + file) == 0) {
            AddFinding(Severity::Error, folder + file, 0, "an empty file");
            continue;
        }
        if (font.charset.lineHeight == 0) AddFinding(Severity::Error, folder + file, 0, "no line height");
        if (!isFileExistString(folder + font.atlasFile))
            AddFinding(Severity::Error, folder + file, 0, "there is no picture " + font.atlasFile);
        if (file == "led_36.fnt") continue; // for digits: what else it has does not matter
        std::string missing;
        for (unsigned char c = ' '; c <= '~'; c++)
            if (font.charset.chars[c].xadvance == 0.0F) missing += static_cast<char>(c);
        if (!missing.empty())
            AddFinding(Severity::Note, folder + file, 0, "no glyphs for these characters: " + missing);
    }
}

} // namespace simhost
