// An aircraft file (.acf): attaching one more object to it. It is read and written in pieces and may be
// larger than the memory.
#pragma once

#include <string>
#include <vector>

#include "frame/aircraft.h"
#include "util/files.h"

// What one pass over an aircraft file finds.
struct AircraftFileFacts {
    Reading reading = Reading::Absent; // all else says something only when it was read
    bool hasLines = false;             // other than empty ones
    int figureLines = 0;               // that name the figure's object; 0 when it is not attached
    int objects = 0;                   // as the line "P _obja/count N" states
    std::string reason;                // why nothing can be attached: not exactly one such line with a number
};

// One line in the log when it cannot be read.
AircraftFileFacts ExamineAircraftFile(const std::string &acf);

// The lines of one object, number counted from 0, from its properties. Each is a line such as
// "P _obja/0/_v10_att_file_stl kvfennic.obj"; its index, the second part between slashes, becomes the number.
// False with the reason when a property has no index.
bool NumberObject(const std::vector<FileLine> &properties, int number, std::string &object,
                  std::string &reason);

// The properties of an object with its place at the seat; those of the place that it lacks come behind.
std::vector<FileLine> PlaceObject(std::vector<FileLine> properties, const SeatPlace &seat);

// Puts the lines of an object in front of the line that states the number of objects, and one more there.
// Every other line, empty ones too, stays as it is, but all lines end in "\r\n". False, with one line in the
// log and the file as it was, when it cannot be replaced or is not any more what the facts say.
bool AttachObject(const std::string &acf, const AircraftFileFacts &facts, const std::string &object);

// The object in an aircraft file that is the figure's.
struct AttachedFigure {
    int number = -1; // of the object
    SeatPlace seat = {};
    std::string reason = {}; // why it cannot be told: not attached, attached twice, turned, without a place
};

// One line in the log when the file cannot be read.
AttachedFigure FindAttachedFigure(const std::string &acf);

// Moves an object to the seat; all else in the file stays as it is. False, with one line in the log and the
// file as it was, when it cannot be replaced or the object has no place there.
bool MoveObject(const std::string &acf, int number, const SeatPlace &seat);
