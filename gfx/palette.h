// The colours that all drawing of the plug-in chooses from, by index.
#pragma once

struct RGB_Col {
    float r, g, b; // 0 to 1
};

enum { // the places that are named by what they are used for
    ColourWhite = 0,
    ColourCyan = 1,
    ColourGreen = 2,
    ColourMagenta = 3,
    ColourYellow = 4,
    ColourOrange = 5,
    ColourRed = 6,
    ColourLightGrey = 7,
    ColourGrey = 9,
    ColourBlack = 14,
};

const int PaletteSize = 17;
extern const RGB_Col Palette[PaletteSize];

// The colour at an index; white for an index outside the palette.
const RGB_Col &PaletteColour(int index);
