// What a pilot can say in an aircraft, and what the first officer answers, as a page in Markdown.
#pragma once

#include <string>
#include <vector>

namespace simhost {

// Reads the folders, each an aircraft's or the plug-in's inside it, and prints the page. What several
// aircraft have in common stands there once, with their names. Returns the exit status: 0 printed, 2 no such
// folder.
int PrintPhrases(const std::vector<std::string> &folders);

} // namespace simhost
