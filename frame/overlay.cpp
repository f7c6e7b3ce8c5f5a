// The overlay's draw callback; the texts themselves come with the windows they need.
#include "frame/overlay.h"

#include "frame/main_loop.h"

int DrawScreen(XPLMDrawingPhase, int, void *) {
    if (!isFennicKillDrfWasReaded || isKilled()) return 1;
    return 1;
}
