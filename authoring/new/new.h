// A new aircraft for an author to begin with: the plug-in, systems files that work, and a flight.
#pragma once

#include <string>

namespace simhost {

struct NewOptions {
    std::string folder;       // to be made, or empty
    std::string name;         // what the aircraft's description begins with; empty: the folder's name
    std::string sourcePlugin; // the folder of a plug-in, whose library, data and positions the new one gets
    bool isEmpty = false;     // without systems files and flight
};

// Makes the folder and tells what can be done with it. Returns the exit status: 0, or 1 with the reason on
// stderr when the folder holds files, the name cannot be a description, or something cannot be written.
int MakeNewAircraft(const NewOptions &options);

} // namespace simhost
