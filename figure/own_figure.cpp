// The object decides for the pictures, too: once it is replaced, all are ours. So nothing may be replaced
// before all is kept, and what was kept is kept anew only for another object of the aircraft's, as an update
// of the aircraft brings it: beside the same object a picture may be ours already, when a removal was broken
// off.
#include "figure/own_figure.h"

#include <algorithm>

#include "util/files.h"
#include "util/log.h"
#include "util/paths.h"
#include "util/text.h"

namespace {

// What tells our objects from others: the comment that our maker writes, and what version 1.0.0 had in its
// place, in the figure and in the stand-in.
const char *const OurMarks[] = {"# Made for Fennic", "ANIM_hide -1000 1000 kv/fo/_show",
                                "TEXTURE kvfennic.png\nPOINT_COUNTS 216 0 0 924"};

std::string InAircraft(const std::string &name) {
    return WhatThisAircraftPath() + "objects/" + name;
}

std::string InPlugin(const std::string &relative) {
    return WhatPluginPath() + "data/obj/" + relative;
}

bool isOurs(const std::string &object, const std::string &shipped) {
    const auto isIn = [&](const char *mark) { return Contains(object, mark); };
    return object == shipped || std::any_of(std::begin(OurMarks), std::end(OurMarks), isIn);
}

// The text of a file that must not be taken for an empty one because it cannot be read.
bool ReadWhole(const std::string &path, std::string &text) {
    text = ReadFileToString(path, ObjectFile);
    return !text.empty();
}

// Copies the aircraft's file, when it has one that is not ours: an update of the aircraft may bring an object
// and leave the picture that the setup put there.
bool Keep(const std::string &name) {
    if (WhatIsAt(InAircraft(name)) == Presence::Absent) return true;
    std::string own, shipped;
    if (!ReadWhole(InAircraft(name), own) || !ReadWhole(InPlugin(name), shipped)) return false;
    return own == shipped || copyFile(InAircraft(name), InPlugin(KeptPath(name)));
}

} // namespace

std::string KeptPath(const std::string &name) {
    return "original/" + name + ".aircraft";
}

bool isOwnFileKept(const std::string &name) {
    return WhatIsAt(InPlugin(KeptPath(name))) != Presence::Absent;
}

bool KeepOwnFigure() {
    const std::string object = "kvfennic.obj";
    std::string own, shipped, kept;
    if (WhatIsAt(InAircraft(object)) == Presence::Absent) return true;
    if (!ReadWhole(InAircraft(object), own) || !ReadWhole(InPlugin(object), shipped)) return false;
    if (isOurs(own, shipped)) return true;
    if (isOwnFileKept(object) && !ReadWhole(InPlugin(KeptPath(object)), kept)) return false;
    if (own == kept) return true;
    return std::all_of(std::begin(FigureFiles), std::end(FigureFiles), Keep);
}

bool PutInPlaceOfStandIn(const std::string &name) {
    return !isOwnFileKept(name) || copyFile(InPlugin(KeptPath(name)), InPlugin("original/" + name));
}
