// What the simulator's log received, for tests that expect a message, or none.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "simhost/simulator.h"

// The number of lines that contain every one of the parts.
inline long CountLines(const std::vector<std::string> &lines, const std::vector<std::string> &parts) {
    return std::count_if(lines.begin(), lines.end(), [&](const std::string &line) {
        return std::all_of(parts.begin(), parts.end(),
                           [&](const std::string &part) { return line.find(part) != std::string::npos; });
    });
}

// The same of the lines since the last call of either kind.
inline long CountNewLines(const std::vector<std::string> &parts) {
    return CountLines(simhost::TakeLogLines(), parts);
}
