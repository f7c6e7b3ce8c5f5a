// What both kinds of parent say of a flight that did not come to its own end.
#pragma once

#include <string>

#include "simhost/interface/plugins.h"

namespace simhost {

// "fennic-sim: Probe crashed in its flight loop (SIGABRT, …), flight time 00:12.3, at demo.lua:12"
void ReportEnd(const Running &running, const std::string &verb, const std::string &detail);

} // namespace simhost
