// A line for each module that has globals. What the simulator was given is not touched: the stop before has
// taken it back.
#include "frame/fresh_start.h"

#include "figure/animation.h"
#include "figure/channels.h"
#include "figure/flight_computations.h"
#include "figure/installation.h"
#include "figure/liveliness.h"
#include "figure/position_creator.h"
#include "figure/positions.h"
#include "figure/seat.h"
#include "figure/setup_dialogs.h"
#include "figure/shown.h"
#include "figure/switch_places.h"
#include "frame/aircraft.h"
#include "frame/commands.h"
#include "frame/datarefs.h"
#include "frame/kill_switch.h"
#include "frame/main_loop.h"
#include "frame/menu_actions.h"
#include "frame/menus.h"
#include "frame/overlay.h"
#include "frame/settings.h"
#include "gfx/fonts.h"
#include "gfx/offscreen.h"
#include "gfx/textures.h"
#include "systems/editor/window.h"
#include "systems/model.h"
#include "systems/model_end.h"
#include "util/clock.h"
#include "util/files.h"
#include "util/guard.h"
#include "util/log.h"
#include "voice/executer.h"
#include "voice/expected_phrases.h"
#include "voice/phrases.h"
#include "voice/published_log.h"
#include "voice/recognition.h"
#include "voice/selection.h"
#include "voice/selection_window.h"
#include "voice/speech_link.h"

void ResetEverything() {
    ResetLog();
    ResetClock();
    ResetFiles();
    ResetGuards();

    ResetFonts();
    ResetTextures();
    ResetOffscreen();

    ResetAnimation();
    ResetChannels();
    ResetFlightComputations();
    ResetPositions();
    ResetSwitchPlaces();
    ResetLiveliness();
    ResetShown();
    ResetPositionCreator();
    ResetInstallation();
    ResetSeat();
    ResetSetupDialogs();

    ResetExecuter();
    ResetPhrases();
    ResetSelection();
    ResetSelectionWindow();
    ResetSpeechLink();
    ResetPublishedLog();
    ResetExpectedPhrases();

    ForgetModel();
    ResetEditor();

    ResetAircraft();
    ResetCommands();
    ResetPublishedDatarefs();
    ResetKillSwitch();
    ResetMainLoop();
    ResetMenuActions();
    ResetMenus();
    ResetOverlay();
    ResetSettings();
}
