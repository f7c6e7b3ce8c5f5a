// The plug-in's lines in the simulator's log. A message is printed only at level 1.
//
// Of each kind at most 20 lines are written in a second; behind it one says how many were left out. The kind
// is the text a; of a dropped line it is the file, so that every bad file is named.
#pragma once

#include <string>
#include <string_view>

// "KV FENNIC Plugin: " + whole seconds of flight time + " SEC TFT " + a + b.
void string2debugString(const std::string &a, const std::string &b, int level);

// "KV FENNIC Plugin: " + a + the number.
void int2debugString(const std::string &a, int n, int level);
void float2debugString(const std::string &a, double x, int level);

// "PASS - " + n, whatever the level: a trace aid.
void Pass(int n);

// As string2debugString, about a file: each file's lines are a kind of their own, so that none stays unnamed.
void LogFile(const std::string &what, const std::string &path);

// As string2debugString, a line of a list that the user asked for: never left out.
void LogListed(const std::string &a, const std::string &b);

// Says that a line of a file was dropped, and why: "<file> line <line>: <reason> - line dropped: <text>".
void LogDroppedLine(std::string_view file, int line, std::string_view reason, std::string_view text);

// The reason for LogDroppedLine when a field should hold a number and does not.
std::string NoNumber(std::string_view field, std::string_view value);

// Once a frame: tells what was left out in a second that is over.
void ReportLeftOutLines();

// When the plug-in stops: tells what was left out.
void EndLog();

// Counts anew.
void ResetLog();

// Leaves no line out until ResetLog: for the checker, to which each is a finding.
void LogEverything();
