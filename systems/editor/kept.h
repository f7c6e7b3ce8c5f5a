// The lines that were not understood, as the systems editor shows them: a mark with their number at what they
// stand in, and a list of them.
#pragma once

#include <string>
#include <vector>

#include "systems/editor/blocks.h"
#include "systems/editor/canvas.h"

// One of them: what it stands in, as deep as it goes; sys -1 for what stands before the first system or in
// the list of files.
struct KeptPlace {
    BlockPlace place;
    int line = 0;
    std::string text, reason;
};

// All of the model, in its order; what is deleted left out. Collected again when the model has changed.
const std::vector<KeptPlace> &KeptPlaces();
void ForgetKeptPlaces(); // of another model

// "2?" in orange, ending at right, when that many lines stand in the place or below it. Returns the width
// that it takes, else 0.
int DrawKeptMark(const BlockPlace &place, int right, int top);

// The list, each line with the reason; a click goes there.
void DrawKept(const Area &area);
