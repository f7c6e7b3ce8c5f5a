// The lists of datarefs and commands that a real simulator ships.
#pragma once

#include <string>

namespace simhost {

// Publishes every name of <xplaneFolder>/Resources/plugins/DataRefs.txt with its type and of Commands.txt
// with its description. Names that exist already keep their values. False with the reason in error when
// there is no such list; lines that are not understood are left out.
bool PublishNameLists(const std::string &xplaneFolder, std::string &error);

} // namespace simhost
