// The single checks of a folder. Each adds its findings; all but the first look at the systems model that
// the plug-in's own reader has made of the folder.
#pragma once

#include <string>

#include "systems/model.h"

namespace simhost {

// The letters of each systems file, and the list of files against the folder. What the lines say, the reader
// reports itself.
void CheckSystemsFiles(const std::string &pluginFolder);

// Names of systems, devices and parameters; links; numbers; graphs.
void CheckNames();
void CheckLinks();
void CheckGraphs();

// Positions, commands, datarefs and texts of actions, and the datarefs that parameters are bound to.
// hasLists: the simulator's lists were read, so that its names are known.
void CheckActions(bool hasLists);

// What is said again and again while a condition holds.
void CheckRepeats();

// Values with fractions that are compared with == or !=.
void CheckFractions();

// Blocks that never fire, steps that are never done, actions that never end.
void CheckBlocks();

// What the pilot can say: phrases that cannot be heard, that two listeners claim, that nobody waits for.
// speechFolder: the speech companion's, for words whose pronunciation its dictionaries lack; empty: none.
void CheckPhrases(const std::string &speechFolder);

// Parameters that depend on each other in a circle.
void CheckLinkCycles();

// Whether she serves the aircraft whose folder the plug-in's folder is in.
void CheckAircraft(const std::string &pluginFolder);

// The files beside the systems files: channels, positions, presets, places, settings, voices, fonts.
void CheckFigureFiles(const std::string &pluginFolder);
void CheckSettings(const std::string &pluginFolder);
void CheckFonts(const std::string &pluginFolder);

// Whether the file is text of single bytes; else, as of a file with a byte order mark, this is told as the
// cause of whatever is found in it.
bool isPlainText(const std::string &file);

// Turns what the plug-in's readers have reported of their files since the last call into findings. True when
// there was anything.
bool TellReaderRecords();

// ---- Shared by the checks of the model ----

// Where a parameter stands, and what it is called.
struct ParameterPlace {
    const system_class &system;
    const device_struct &device;
    const out_parameter_struct &parameter;
    int out = 0; // its index in the device

    int LastLine() const; // of its blocks, or a little behind
    bool isFirstStep() const { return device.serialStack && out == 0; }
    std::string Name() const { return system.name + "." + device.name + "." + parameter.name; }
    std::string Place(int line) const; // "systems/CREW.txt:12"
};

// Whether a file that is listed twice has brought the system a second time: its mistakes are told once.
bool isRepeated(const system_class &system);

template <typename Visit> void ForEachParameter(Visit visit) {
    for (const system_class &system : systems_vector)
        for (const device_struct &device : system.devices)
            for (size_t out = 0; out < device.outs.size() && !isRepeated(system); out++)
                visit(ParameterPlace{system, device, device.outs[out], static_cast<int>(out)});
}

} // namespace simhost
