// What the checker has to say about a folder: collected by the checks, printed at the end in the order of
// files and lines.
#pragma once

#include <string>

#include "util/log.h"

namespace simhost {

// file is a path in the plug-in's folder, relative to it or absolute; line counts from 1, 0: the whole file.
void AddFinding(Severity severity, const std::string &file, int line, const std::string &text);

// The same for an error that explains whatever else is found in the line (0: in the file), so that one
// mistake is told once.
void AddCause(const std::string &file, int line, const std::string &text);

// The same for what is likely to follow from another mistake in the lines around: it is told when nothing
// else is found from line - 1 to lastLine.
void AddSymptom(Severity severity, const std::string &file, int line, int lastLine, const std::string &text);

// Prints the findings as "file:line: severity: text" and a summary, with every path that begins with folder
// beginning with shownFolder instead. True when there is neither an error nor a warning.
bool PrintFindings(const std::string &pluginFolder, const std::string &folder,
                   const std::string &shownFolder);

} // namespace simhost
