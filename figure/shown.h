// What is seen of the figure: "kv/fo/shown/" + channel + axis for body, head, arms and fingers, and
// "kv/fo/shown/eyes_x" and "_y". Each is what "kv/fo/…" of the same name holds, and what is alive in her on
// top of it (liveliness.h). The figure's object turns by these; the channels themselves stay what positions,
// idle motion and whoever else writes them make of them.
#pragma once

#include "figure/channels.h"

const int ShownChannels = LegsFirst; // legs and the whole figure are seen as their channels say
const int EyeAxes = 2;               // up, to the left

// One number that is shown.
struct ShownAxis {
    const float *published = nullptr; // the channel's; null: 0
    float living = 0.0F;              // degrees on top of it
};

struct ShownState {
    ShownAxis channels[ShownChannels][AxisCount];
    ShownAxis eyes[EyeAxes];
};
extern ShownState shown;

// Publishes them for the channels of the table. Called once, at start.
void PublishShown();

// Everything as when the program starts.
void ResetShown();
