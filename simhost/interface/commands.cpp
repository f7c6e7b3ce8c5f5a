// Commands: handlers before and after the simulator's own action, and who holds them down. Like datarefs,
// a command's record lives as long as the program, so that a handle is never dangling.
#include <algorithm>
#include <functional>
#include <unordered_map>

#include "simhost/events.h"
#include "simhost/interface/callback_list.h"
#include "simhost/interface/name_hash.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"
#include "simhost/world/builtin_commands.h"

namespace simhost {

namespace {

struct Handler {
    XPLMCommandCallback_f callback = nullptr;
    void *refcon = nullptr;
    bool before = false;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Command {
    std::string name;
    bool exists = false;
    CallbackList<Handler> handlers;
    std::vector<XPLMPluginID>
        holders; // who began it and has not ended it; the simulator stands for the pilot
    CommandCount count;
    const BuiltinAction *action = nullptr;
};

using CommandTable = std::unordered_map<std::string, Command, NameHash, std::equal_to<>>;

constinit std::vector<Command *> heldCommands; // in the order in which they were begun

// Made on first use and never destroyed, as the table of datarefs.
CommandTable &Commands() {
    static CommandTable *table = nullptr;
    if (!table) {
        table = new CommandTable;
        for (const std::string &name : BuiltinCommands()) AddCommand(name, "");
    }
    return *table;
}

Command *FindExisting(std::string_view name) {
    CommandTable &commands = Commands();
    const auto found = commands.find(name);
    return found != commands.end() && found->second.exists ? &found->second : nullptr;
}

Command &MakeExisting(const std::string &name) {
    const auto [element, isNew] = Commands().try_emplace(name);
    Command &command = element->second;
    if (isNew) command.name = name;
    if (!command.exists) {
        command.exists = true;
        command.count = {};
        command.action = FindBuiltinAction(name);
    }
    return command;
}

// False when a "before" handler ended it.
bool RunHandlers(CallbackList<Handler>::Round &round, Command &command, XPLMCommandPhase phase, bool before) {
    return round.Run([&](const Handler &handler, std::size_t) {
        if (handler.before != before) return true;
        RunningScope scope(handler.owner, "command handler");
        const int goesOn = handler.callback(&command, phase, handler.refcon);
        return !before || goesOn != 0;
    });
}

void Dispatch(Command &command, XPLMCommandPhase phase) {
    CallbackList<Handler>::Round round(command.handlers);
    if (!RunHandlers(round, command, phase, true)) return;
    if (phase == xplm_CommandBegin && command.action) RunBuiltinActions(*command.action);
    RunHandlers(round, command, phase, false);
}

void Report(EventKind kind, const Command &command) {
    if (!hasEventListener()) return;
    ReportEvent({kind, command.name, currentRunning.plugin == XPLM_PLUGIN_XPLANE ? "pilot" : "plug-in"});
}

void Begin(Command &command, XPLMPluginID holder) {
    command.holders.push_back(holder);
    if (command.holders.size() > 1) return;
    heldCommands.push_back(&command);
    command.count.begun++;
    Report(EventKind::CommandBegun, command);
    Dispatch(command, xplm_CommandBegin);
}

void End(Command &command, XPLMPluginID holder) {
    const auto held = std::find(command.holders.begin(), command.holders.end(), holder);
    if (held == command.holders.end()) return;
    command.holders.erase(held);
    if (!command.holders.empty()) return;
    std::erase(heldCommands, &command);
    command.count.ended++;
    Report(EventKind::CommandEnded, command);
    Dispatch(command, xplm_CommandEnd);
}

Command *Existing(XPLMCommandRef handle) {
    auto *command = static_cast<Command *>(handle);
    return command && command->exists ? command : nullptr;
}

} // namespace

void AddCommand(const std::string &name, const std::string &) {
    MakeExisting(name);
}

CommandCount CountCommand(const std::string &name) {
    const Command *command = FindExisting(name);
    return command ? command->count : CommandCount();
}

bool HoldCommand(const std::string &name) {
    Command *command = FindExisting(name);
    if (!command) return false;
    const auto &holders = command->holders;
    if (std::find(holders.begin(), holders.end(), XPLM_PLUGIN_XPLANE) != holders.end()) return true;
    RunningScope scope(XPLM_PLUGIN_XPLANE, "command");
    Begin(*command, XPLM_PLUGIN_XPLANE);
    return true;
}

bool ReleaseCommand(const std::string &name) {
    Command *command = FindExisting(name);
    if (!command) return false;
    RunningScope scope(XPLM_PLUGIN_XPLANE, "command");
    End(*command, XPLM_PLUGIN_XPLANE);
    return true;
}

void ContinueHeldCommands() {
    // A handler may begin and end commands: those begun now continue from the next frame.
    const std::vector<Command *> held = heldCommands;
    for (Command *command : held) {
        if (!command->holders.empty()) Dispatch(*command, xplm_CommandContinue);
    }
}

void DropCommandHandlers(XPLMPluginID plugin, LeftBehind &leftBehind) {
    std::vector<std::string> notes;
    for (auto &[name, command] : Commands()) {
        command.handlers.Drop(plugin, [&, &name = name](const Handler &) {
            notes.push_back("command handler of \"" + name + "\"");
        });
    }
    const std::vector<Command *> held = heldCommands;
    for (Command *command : held) {
        while (std::find(command->holders.begin(), command->holders.end(), plugin)
               != command->holders.end()) {
            notes.push_back("command \"" + command->name + "\" held down");
            End(*command, plugin);
        }
    }
    std::sort(notes.begin(), notes.end());
    leftBehind.notes.insert(leftBehind.notes.end(), notes.begin(), notes.end());
}

void ResetCommands() {
    heldCommands.clear();
    for (auto &[name, command] : Commands()) {
        command.exists = false;
        command.handlers.Clear();
        command.holders.clear();
    }
    for (const std::string &name : BuiltinCommands()) AddCommand(name, "");
}

} // namespace simhost

using namespace simhost;

XPLMCommandRef XPLMFindCommand(const char *inName) {
    return inName ? FindExisting(inName) : nullptr;
}

XPLMCommandRef XPLMCreateCommand(const char *inName, const char *) {
    if (!inName || *inName == '\0') {
        ReportMisuse("XPLMCreateCommand without a name");
        return nullptr;
    }
    return &MakeExisting(inName);
}

void XPLMCommandBegin(XPLMCommandRef inCommand) {
    if (Command *command = Existing(inCommand)) Begin(*command, currentRunning.plugin);
}

void XPLMCommandEnd(XPLMCommandRef inCommand) {
    if (Command *command = Existing(inCommand)) End(*command, currentRunning.plugin);
}

void XPLMCommandOnce(XPLMCommandRef inCommand) {
    Command *command = Existing(inCommand);
    // One that is held down is on already: a tap in between is not felt.
    if (!command || !command->holders.empty()) return;
    command->count.begun++;
    command->count.ended++;
    Report(EventKind::CommandOnce, *command);
    Dispatch(*command, xplm_CommandBegin);
    Dispatch(*command, xplm_CommandEnd);
}

void XPLMRegisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                void *inRefcon) {
    Command *command = Existing(inComand);
    if (!command) return;
    if (!inHandler) {
        ReportMisuse("XPLMRegisterCommandHandler without a handler");
        return;
    }
    command->handlers.Add({inHandler, inRefcon, inBefore != 0, currentRunning.plugin});
}

void XPLMUnregisterCommandHandler(XPLMCommandRef inComand, XPLMCommandCallback_f inHandler, int inBefore,
                                  void *inRefcon) {
    Command *command = Existing(inComand);
    if (!command) return;
    command->handlers.Remove(inHandler, inRefcon,
                             [&](const Handler &handler) { return handler.before == (inBefore != 0); });
}
