// The text of an aircraft file (.acf): attaching one more object to it. No file is touched here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "util/files.h"

// The number of lines that name the figure's object: 0 when the figure is not attached.
int CountFigureLines(std::string_view acf);

// Adds the properties of one object to the text of an aircraft file. Each property is a line such as
// "P _obja/0/_v10_att_file_stl kvfennic.obj"; its index, the second part between slashes, becomes the number
// of objects so far. They go in front of the line "P _obja/count N", which then says N + 1. Every other line,
// empty ones too, stays as it is, but all lines end in "\r\n". False, with changed untouched and the reason
// in reason, when the text has not exactly one such line with a whole number, or when a property has no
// index.
bool AttachObject(std::string_view acf, const std::vector<FileLine> &properties, std::string &changed,
                  std::string &reason);
