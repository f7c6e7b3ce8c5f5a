// The simulator goes on showing the .acf as it was loaded, so her place is reckoned from what that file said
// when it was first looked at: whoever saves twice, having moved her a little more, means what he sees.
#include "figure/seat.h"

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "figure/acf_file.h"
#include "figure/channels.h"
#include "frame/aircraft.h"
#include "frame/aircraft_list.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"

namespace {

const double MetresPerFoot = 0.3048;
const char *const ObjectProperties = "data/obj/acf.txt";

struct SeatState {
    std::optional<SeatPlace> loaded; // as the .acf had it
};
SeatState seatState;

bool Fail(const std::string &reason) {
    LogProblem("Seat not saved: ", reason);
    return false;
}

// A place on an axis with what the channel of the whole figure adds to it: feet, to a ten-thousandth, which
// is less than anybody sees.
double Moved(double feet, int axis) {
    feet += anim[FigureOffsetChannel].Shown(axis) / MetresPerFoot;
    return std::round(feet * 1e4) / 1e4;
}

std::string InFeet(const SeatPlace &seat) {
    return double2string(seat.x) + ", " + double2string(seat.y) + ", " + double2string(seat.z) + " feet";
}

bool WriteObject(const SeatPlace &seat) {
    const std::string file = WhatPluginPath() + ObjectProperties;
    const std::vector<FileLine> properties = ReadFileLines(file);
    if (properties.empty()) return false; // which is in the log
    std::string text;
    for (const FileLine &line : PlaceObject(properties, seat)) text += line.text + "\r\n";
    return WriteWholeFile(file, text);
}

bool WriteList(const SeatPlace &seat) {
    if (!ThisAircraft().seat) return true;
    const std::string file = WhatPluginPath() + AircraftListFile;
    std::vector<AircraftRow> rows;
    std::string text;
    bool isThere = false; // the line, as it was when the aircraft was loaded
    if (ReadAircraftList(WhatPluginPath(), rows) && ReadWholeFile(file, text) == Reading::Read)
        for (const AircraftRow &row : rows)
            isThere |= row.traits.seat && row.traits.seatLine == ThisAircraft().seatLine;
    if (!isThere) {
        LogFileProblem("Seat not saved in ", file, "it has changed since the aircraft was loaded");
        return false;
    }
    return WriteWholeFile(file, WithSeat(text, ThisAircraft().seatLine, seat));
}

} // namespace

bool SaveSeat() {
    const std::string acf = WhatThisAircraftAcfPath();
    if (ThisAircraft().setup != FigureSetup::Attached)
        return Fail("the setup of this aircraft does not put her into its file");
    if (anim.size() <= FigureOffsetChannel) return Fail("she has no channel of the whole figure");
    const AttachedFigure figure = FindAttachedFigure(acf);
    if (!figure.reason.empty()) {
        LogFileProblem("Seat not saved: ", acf, figure.reason);
        return false;
    }
    if (!seatState.loaded) seatState.loaded = figure.seat;
    const SeatPlace &loaded = *seatState.loaded;
    const SeatPlace seat = {Moved(loaded.x, 0), Moved(loaded.y, 1), Moved(loaded.z, 2)};
    // The .acf comes last: while it is the old one, saving again comes to the same place.
    const bool isSaved = WriteObject(seat) && WriteList(seat) && MoveObject(acf, figure.number, seat);
    const std::string place = InFeet(seat);
    if (!isSaved) return Fail("the lines above say which file failed; it is " + place);
    string2debugString("Seat saved: ", place + ", was " + InFeet(loaded), 1);
    return true;
}

void ResetSeat() {
    MakeFresh(seatState);
}
