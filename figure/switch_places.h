// Where in the cockpit things are: for words of a command's, a dataref's or a spoken text's, the position in
// which she reaches for them or looks at them. The aircraft's own table, "systems/_places.txt", comes before
// the shipped one, "custom/places.txt"; both may be missing.
//
// A line is "words = position". Empty lines and those that begin with "#" do not count.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct SwitchPlace {
    std::string words;    // small letters and digits, one blank between words
    std::string position; // empty: "none", she stays as she is
};

struct SwitchPlacesState {
    std::vector<SwitchPlace> lines; // the first that fits counts
};
extern SwitchPlacesState switchPlaces;

// Reads both tables; the positions must have been read. A line that is wrong, or names a position that is not
// listed, is dropped with a line in the log.
void ReadSwitchPlaces();

// The position for a name or a text: that of the first line whose words stand in it, beginning with the
// beginning of a word, whatever their letters' case and whatever is between them. Empty when there is none.
std::string PlaceOf(std::string_view name);

// Everything as when the program starts.
void ResetSwitchPlaces();
