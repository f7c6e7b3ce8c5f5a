// The figure that an aircraft came with, in the types that have one of ours' name: kept in the plug-in's
// folder "data/obj/original/" when the setup replaces it, so that the removal can bring it back. What the
// package puts there is a stand-in, and comes again with each update of the plug-in; so the aircraft's own
// files are kept under names of their own as well, with ".aircraft" behind, which no package holds.
#pragma once

#include <string>
#include <vector>

// The files of a figure, in the order in which they are kept: the object, which says whose figure it is,
// comes last.
inline const char *const FigureFiles[] = {"kvfennic_nml.png", "kvfennic.png", "kvfennic.obj"};

// Keeps the loaded aircraft's figure, object and pictures, unless the object is ours or there is none. False,
// with lines in the log, when something of it could not be kept, or could not be read: then nothing of it
// may be replaced.
bool KeepOwnFigure();

// Whether a file of the aircraft's own figure was kept: one of FigureFiles.
bool isOwnFileKept(const std::string &name);

// Puts a file that was kept in the place of its stand-in in "original/". True when it is there, or when none
// was kept; false, with lines in the log, when it could not be put there.
bool PutInPlaceOfStandIn(const std::string &name);

// Where a file is kept, relative to the plug-in's data/obj/.
std::string KeptPath(const std::string &name);
