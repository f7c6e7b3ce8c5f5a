// Which lines of the log tell of a problem. They are known by how they begin, never by a word in them: what
// the pilot said, and names that users gave, stand in the log, too.
#pragma once

#include <string_view>

namespace simhost {

// The message without the plug-in's name and the flight time before it.
std::string_view WithoutLogPrefix(std::string_view line);

// What is wrong with a line of a file, "<file> line <line>: <reason> - line dropped: <text>", in pieces; a
// font's line is put right instead, "Font <name> line <line>: <reason>".
struct LineProblem {
    std::string_view file;
    int line = 0;
    std::string_view reason; // with the text
};

// False when the message, given without its prefix, tells of something else.
bool ReadLineProblem(std::string_view message, LineProblem &problem);

// The message, given without its prefix, says that something is wrong.
bool TellsOfProblem(std::string_view message);

} // namespace simhost
