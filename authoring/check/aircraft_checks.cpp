// She looks at an aircraft's description and at the name of its model file before she reads anything else.
#include <filesystem>
#include <string>
#include <vector>

#include "authoring/check/checks.h"
#include "authoring/check/findings.h"
#include "frame/aircraft.h"
#include "simhost/world/aircraft_folder.h"

namespace simhost {

void CheckAircraft(const std::string &pluginFolder) {
    // <aircraft>/plugins/<folder>/64/
    const std::filesystem::path folder =
        std::filesystem::path(pluginFolder).parent_path().parent_path().parent_path().parent_path() / "";
    const AircraftFile found = FindAircraftFile(folder.string());
    if (found.name.empty()) return; // the plug-in's folder alone
    const AircraftRow *const served = ServedAircraft(found.description);
    if (!served)
        AddFinding(Severity::Error, folder / found.name, 0,
                   found.hasDescription
                       ? "she does not serve this aircraft, so nothing here is read; its description is \""
                             + found.description + "\""
                       : "without a description she does not know the aircraft, so nothing here is read");
    else if (!std::filesystem::exists(folder / served->modelFile))
        AddFinding(Severity::Error, folder / found.name, 0,
                   "the file of this aircraft must be named " + served->modelFile
                       + ", else none of the systems files is read");
}

} // namespace simhost
