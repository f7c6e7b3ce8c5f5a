// The files of the plug-in's folder beside the systems files, read by the plug-in's own readers, whose
// messages become findings; and what the readers accept that cannot be meant.
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "XPLMUtilities.h"
#include "figure/channels.h"
#include "figure/positions.h"
#include "frame/settings.h"
#include "gfx/fonts.h"
#include "simhost/check/checks.h"
#include "simhost/check/findings.h"
#include "simhost/simulator.h"
#include "util/files.h"
#include "util/numbers.h"
#include "util/text.h"
#include "voice/speech_link.h"

namespace simhost {

namespace {

constexpr size_t CHANNELS = 47;

void CheckChannels(const std::string &file) {
    LoadAnimationFile(file);
    CollectReaderMessages();
    if (anim.empty()) return;
    if (anim.size() != CHANNELS)
        AddFinding(Severity::Error, file, 0,
                   "the figure has 47 channels, and here are " + int2string(static_cast<int>(anim.size())));
    else if (anim[FigureOffsetChannel].name != FigureOffsetName)
        AddFinding(Severity::Error, file, 0,
                   std::string("channel 46 is called \"") + FigureOffsetName + "\", not \""
                       + anim[FigureOffsetChannel].name + "\"");
    std::set<std::string> names;
    for (const structAnim &channel : anim)
        if (!names.insert(channel.name).second)
            AddFinding(Severity::Error, file, 0, "two channels have the name " + channel.name);
}

// The loader goes by the index of a line; the name is for the reader, and should be that channel's.
void CheckChannelNames(const std::string &file) {
    std::set<std::string> seen;
    for (const FileLine &line : ReadFileLines(file)) {
        const std::vector<std::string> fields = StringToWordsArray(RemoveNRS(line.text), ',');
        int index = -1;
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
        if (!names.insert(name).second) {
            AddFinding(Severity::Warning, file, 0,
                       "another group has a position " + name + " too; only this one is ever loaded");
            continue;
        }
        LoadPositionFastFromFile(name);
        CollectReaderMessages();
        CheckChannelNames(file);
    }
    if (!positionList.empty() && positionRestList.empty())
        AddFinding(Severity::Warning, base, 0,
                   "no position has \"rest\" in its name, so she never moves by herself");
}

} // namespace

void CheckFigureFiles(const std::string &pluginFolder) {
    const std::string channels = pluginFolder + "data/obj/fennic.txt";
    if (!isFileExistString(channels)) {
        AddFinding(Severity::Note, channels, 0, "not here, so positions are not checked");
        return;
    }
    CheckChannels(channels);
    for (const char *folder : {"positions-w/", "positions-m/"}) CheckPositionsOf(pluginFolder, folder);
    for (const std::string &preset : presetList) {
        if (!preset.ends_with(".txt")) continue;
        LoadPresetFromFile(preset);
        CollectReaderMessages();
        CheckChannelNames(pluginFolder + "custom/presets/" + preset);
    }
}

void CheckSettings(const std::string &pluginFolder) {
    if (!isFileExistString(pluginFolder + "data/settings_mac.txt")) return;
    ReadSettings();
    ReadVoiceList();
    CollectReaderMessages();
    const std::string voices = pluginFolder + "data/voicelist_mac.txt";
    for (const std::string *voice : {&globalVoiceW, &globalVoiceM})
        if (!voice->empty() && std::find(voiceList.begin(), voiceList.end(), *voice) == voiceList.end())
            AddFinding(Severity::Warning, voices, 0,
                       "the voice of the settings is not in this list: " + *voice);
}

void CheckFonts(const std::string &pluginFolder) {
    const std::string folder = pluginFolder + "data/fnt/";
    for (const std::string &file : ReadFileListFromFolder(folder)) {
        if (!file.ends_with(".fnt")) continue;
        font_class font;
        std::ifstream stream(folder + file);
        font.ParseFont(stream);
        CollectReaderMessages();
        if (font.charset.lineHeight == 0) AddFinding(Severity::Error, folder + file, 0, "no line height");
        if (!isFileExistString(folder + font.atlasFile))
            AddFinding(Severity::Error, folder + file, 0, "there is no picture " + font.atlasFile);
        std::string missing;
        for (char c = ' '; c <= '~'; c++)
            if (font.charset.chars[static_cast<size_t>(c)].xadvance == 0.0F) missing += c;
        if (!missing.empty())
            AddFinding(Severity::Note, folder + file, 0, "no glyphs for these characters: " + missing);
    }
}

} // namespace simhost
