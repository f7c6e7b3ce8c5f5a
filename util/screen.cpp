// The bounds are far outside every screen: they change no place that a user can see.
#include "util/screen.h"

#include <algorithm>

#include "XPLMDisplay.h"

int PlaceOnScreen(int boxel) {
    return std::clamp(boxel, -FarthestBoxel, FarthestBoxel);
}

void ReadScreenSize(int &width, int &height) {
    width = height = 0;
    XPLMGetScreenSize(&width, &height);
    width = std::clamp(width, 0, FarthestBoxel);
    height = std::clamp(height, 0, FarthestBoxel);
}
