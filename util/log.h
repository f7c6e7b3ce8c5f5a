// The plug-in's lines in the simulator's log. A message is printed only at level 1.
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

// Says that a line of a file was dropped, and why: "<file> line <line>: <reason> - line dropped: <text>".
void LogDroppedLine(std::string_view file, int line, std::string_view reason, std::string_view text);

// The reason for LogDroppedLine when a field should hold a number and does not.
std::string NoNumber(std::string_view field, std::string_view value);
