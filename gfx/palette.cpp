// The palette's table.
#include "gfx/palette.h"

const RGB_Col Palette[PaletteSize] = {
    {1.0F, 1.0F, 1.0F}, {0.0F, 0.9F, 1.0F},  {0.0F, 0.8F, 0.0F},  {1.0F, 0.0F, 1.0F}, {1.0F, 1.0F, 0.0F},
    {1.0F, 0.6F, 0.3F}, {1.0F, 0.0F, 0.0F},  {0.7F, 0.7F, 0.7F},  {0.6F, 0.6F, 0.6F}, {0.5F, 0.5F, 0.5F},
    {0.4F, 0.4F, 0.4F}, {0.0F, 0.35F, 0.0F}, {0.5F, 0.3F, 0.15F}, {0.0F, 0.9F, 1.0F}, {0.0F, 0.0F, 0.0F},
    {0.8F, 1.0F, 0.8F}, {0.8F, 1.0F, 1.0F},
};

const RGB_Col &PaletteColour(int index) {
    return Palette[index < 0 || index >= PaletteSize ? ColourWhite : index];
}
