// Command handlers run between frames, on the simulator's thread.
#include "frame/commands.h"

#include "util/clock.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "voice/action_queue.h"
#include "voice/link_words.h"
#include "voice/recognition.h"
#include "voice/selection.h"
#include "voice/speech_link.h"

CommandsState commandsState;

namespace {

// Push to talk.
int CommandRecHandler(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    if (phase == xplm_CommandBegin) needCmdRecStart = 1;
    if (phase == xplm_CommandEnd) needCmdRecStop = 1;
    return 0;
}

int CommandStepHandler(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    if (phase == xplm_CommandEnd) lockStep = 0;
    return 0;
}

int CommandWidgetHandler(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    if (phase == xplm_CommandEnd) ShowWidget = ShowWidget ? 0 : 1;
    return 0;
}

int CommandSelectHandler(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    if (phase == xplm_CommandBegin) SelectPressed();
    if (phase == xplm_CommandEnd) SelectReleased();
    return 0;
}

void CommandAbort() {
    Hear(link_words::Abort, HeardFrom::StopCommand);
}

int CommandStopHandler(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    if (phase == xplm_CommandEnd) CommandAbort();
    return 0;
}

XPLMCommandRef Create(const char *name, const char *description, XPLMCommandCallback_f handler) {
    const XPLMCommandRef command = XPLMCreateCommand(name, description);
    XPLMRegisterCommandHandler(command, handler, 1, nullptr);
    return command;
}

} // namespace

void CustCommInit() {
    CommandRec = Create("kv/fennic/rec", "CommandRec", Guarded<"push to talk", CommandRecHandler>);
    CommandStep = Create("kv/fennic/step", "CommandStep", Guarded<"the command step", CommandStepHandler>);
    CommandWidget =
        Create("kv/fennic/widget", "CommandWidgetOnOff", Guarded<"the command widget", CommandWidgetHandler>);
    CommandSelect =
        Create("kv/fennic/select", "CommandSelect", Guarded<"the command select", CommandSelectHandler>);
    CommandStop = Create("kv/fennic/stop", "CommandStop", Guarded<"the command stop", CommandStopHandler>);
}

// These calls match no registration (another flag, another handler) and so take nothing back: the simulator
// drops a plug-in's handlers itself when it unloads it.
void CustCommExit() {
    XPLMUnregisterCommandHandler(CommandRec, CommandRecHandler, 0, nullptr);
    XPLMUnregisterCommandHandler(CommandStep, CommandStepHandler, 0, nullptr);
    XPLMUnregisterCommandHandler(CommandWidget, CommandWidgetHandler, 0, nullptr);
    XPLMUnregisterCommandHandler(CommandSelect, CommandWidgetHandler, 0, nullptr);
    XPLMUnregisterCommandHandler(CommandStop, CommandWidgetHandler, 0, nullptr);
}

void ResetCommands() {
    MakeFresh(commandsState);
}
