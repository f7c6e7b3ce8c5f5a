// The view of the right-hand seat: the first officer's figure, as the aircraft's files have it, in a frame
// with pixels. Frames without pixels know nothing of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simhost {

// What can be shown, for messages: "cockpit", "front", "side".
extern const char *const CockpitViews;

// Reads the objects and shows them from the frame that comes next, from one of those viewpoints; "none" takes
// the picture away. An aircraft without the figure gets the one from otherFigure, the path of an object, if
// there is one. notes: what a user should know of it. What is wrong with an object is told on stderr.
// False for an unknown view.
bool ShowCockpit(std::string_view view, const std::string &aircraftFolder, const std::string &aircraftFile,
                 const std::string &otherFigure, std::vector<std::string> &notes);

bool isCockpitShown();

// While a frame with pixels is drawn, before everything else.
void DrawCockpit();

void ResetCockpitView();

} // namespace simhost
