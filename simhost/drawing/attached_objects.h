// The objects that an aircraft file attaches to the aircraft.
#pragma once

#include <string>
#include <vector>

#include "simhost/drawing/object_animation.h"

namespace simhost {

struct AttachedObject {
    std::string file; // in the aircraft's folder "objects"
    Matrix place;     // from the object's coordinates to the aircraft's, metres
};

// In the order of their numbers; empty for a file that cannot be read. Numbers from the count on do not
// count.
std::vector<AttachedObject> ReadAttachedObjects(const std::string &aircraftFile);

} // namespace simhost
