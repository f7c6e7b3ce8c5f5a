// The files of a new aircraft, from the folder template/ of the sources. The tutorial makes the same ones,
// step by step.
#pragma once

#include <span>

namespace simhost {

struct TemplateFile {
    const char *name; // "systems/PANEL.txt"
    const char *text; // "<NAME>" stands for the aircraft's description
};

std::span<const TemplateFile> TemplateFiles();

} // namespace simhost
