// Flies a flight: the scratch aircraft, the Lua state with the table "sim", the script, and the tidying up
// afterwards, which happens in every case. Lua leaves C++ functions by longjmp when it raises an error;
// no function here lets it do so past an object with a destructor.
#include "simhost/flights/flight.h"

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "simhost/drawing/graphics_state.h"
#include "simhost/events.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/flights/watchdog.h"
#include "simhost/flights/window_frontend.h"
#include "simhost/world/simulator_lists.h"

namespace simhost {

FlightState flight;

namespace {

using std::chrono::steady_clock;

steady_clock::time_point startOfFlight, nextFrame; // nextFrame: in real time alone

constexpr std::chrono::milliseconds MostBehind{250}; // a flight that was held up goes on from now

// Where we are: going there at each call would take longer than the call.
bool isInSimulatorFolder = false;

void GoTo(bool isSimulatorFolder) {
    if (isSimulatorFolder == isInSimulatorFolder) return;
    std::error_code failed; // a folder that is gone is found to be so by whoever opens a file in it
    std::filesystem::current_path(isSimulatorFolder ? flight.scratch.root : flight.startFolder, failed);
    isInSimulatorFolder = isSimulatorFolder;
}

// "flight.lua:12:" at the start of a message, by the name under which Lua knows the file.
bool StartsWithPlace(const char *message, const char *source) {
    const size_t length = std::strlen(source);
    return std::strncmp(message, source, length) == 0 && message[length] == ':';
}

// Lua's message handler. Puts the line in front of a message that has none, such as assert's, and the lines
// that led there behind it when it happened inside a function.
int ExplainError(lua_State *lua) {
    const char *message = lua_tostring(lua, 1);
    if (!message) {
        if (luaL_callmeta(lua, 1, "__tostring") != 0 && lua_type(lua, -1) == LUA_TSTRING)
            message = lua_tostring(lua, -1);
        else
            message = lua_pushfstring(lua, "(the error is a %s value)", luaL_typename(lua, 1));
    }
    luaL_Buffer text;
    luaL_buffinit(lua, &text);
    bool isFirst = true;
    lua_Debug frame;
    for (int level = 1; lua_getstack(lua, level, &frame) != 0; ++level) {
        lua_getinfo(lua, "Sl", &frame);
        if (frame.currentline <= 0) continue;
        if (isFirst) {
            if (!StartsWithPlace(message, frame.short_src)) {
                lua_pushfstring(lua, "%s:%d: ", frame.short_src, frame.currentline);
                luaL_addvalue(&text);
            }
            luaL_addstring(&text, message);
        } else {
            lua_pushfstring(lua, "\n    called from %s:%d", frame.short_src, frame.currentline);
            luaL_addvalue(&text);
        }
        isFirst = false;
    }
    if (isFirst) luaL_addstring(&text, message);
    luaL_pushresult(&text);
    return 1;
}

// The flight's own end, with its exit status.
int Leave(int status) {
    EndFlight(status);
    if (flight.options.alone) TidyScratch(flight.scratch.root, flight.options.keep, status);
    return status;
}

int RefuseToFly(const std::string &why) {
    std::fprintf(stderr, "fennic-sim: %s\n", why.c_str());
    return Leave(ExitUsage);
}

// Stops what still runs and ends the transcript.
int FinishFlight(int status) {
    EndPlugins();
    if (!EndSound()) status = ExitFailed;
    if (flight.options.window) CloseFrontend();
    const std::chrono::duration<double> took = steady_clock::now() - startOfFlight;
    CloseTranscript(static_cast<double>(flight.frames) * flight.frameSeconds, took.count());
    std::fflush(stdout);
    SetEventListener(nullptr);
    const bool wasMisplaced = MisplacedOpenGlObjects() > 0;
    if (wasMisplaced)
        std::fprintf(stderr,
                     "fennic-sim: OpenGL objects were made outside draw callbacks and flight loops\n");
    const bool hasFailed = flight.wasAnythingLeftBehind || wasMisplaced;
    return Leave(status == ExitFlown && hasFailed ? ExitFailed : status);
}

// os.exit of a flight: the same end as that of the script.
int Exit(lua_State *lua) {
    int status = ExitFlown;
    if (lua_isboolean(lua, 1))
        status = lua_toboolean(lua, 1) != 0 ? ExitFlown : ExitFailed;
    else
        status = static_cast<int>(luaL_optinteger(lua, 1, ExitFlown));
    RememberCaller(lua);
    std::exit(FinishFlight(status));
}

// What Lua's own calls name is meant from where the script was started. The first upvalue is that of the
// call.
int CallFromStart(lua_State *lua) {
    GoTo(false);
    return lua_tocfunction(lua, lua_upvalueindex(2))(lua);
}

void LeadFileCalls(lua_State *lua) {
    const std::pair<const char *, const char *> calls[] = {
        {"_G", "dofile"},  {"_G", "loadfile"}, {"_G", "require"}, {"io", "input"},
        {"io", "lines"},   {"io", "open"},     {"io", "output"},  {"io", "popen"},
        {"os", "execute"}, {"os", "remove"},   {"os", "rename"}};
    for (const auto &[library, name] : calls) {
        lua_getglobal(lua, library);
        lua_getfield(lua, -1, name);
        if (!lua_getupvalue(lua, -1, 1)) lua_pushnil(lua);
        lua_insert(lua, -2);
        lua_pushcclosure(lua, CallFromStart, 2);
        lua_setfield(lua, -2, name);
        lua_pop(lua, 1);
    }
}

// The path by which "require" finds files beside the flight.
void AddSearchPath(lua_State *lua, const char *script) {
    const char *slash = std::strrchr(script, '/');
    if (!slash) return;
    lua_getglobal(lua, "package");
    lua_pushlstring(lua, script, static_cast<size_t>(slash - script) + 1);
    lua_pushstring(lua, "?.lua;");
    lua_getfield(lua, -3, "path");
    lua_concat(lua, 3);
    lua_setfield(lua, -2, "path");
    lua_pop(lua, 1);
}

void AddArguments(lua_State *lua, const FlightOptions &options) {
    lua_createtable(lua, static_cast<int>(options.arguments.size()), 1);
    lua_pushstring(lua, options.script.c_str());
    lua_rawseti(lua, -2, 0);
    lua_Integer place = 0;
    for (const std::string &argument : options.arguments) {
        lua_pushlstring(lua, argument.data(), argument.size());
        lua_rawseti(lua, -2, ++place);
    }
    lua_setglobal(lua, "arg");
}

void PrepareLua(lua_State *lua, const FlightOptions &options) {
    luaL_openlibs(lua);
    LeadFileCalls(lua);
    lua_newtable(lua);
    AddPluginCalls(lua);
    AddFileCalls(lua);
    AddTimeCalls(lua);
    AddDatarefCalls(lua);
    AddCockpitCalls(lua);
    AddSoundCalls(lua);
    AddScreenCalls(lua);
    AddMouseCalls(lua);
    AddWindowCalls(lua);
    AddWidgetCalls(lua);
    lua_setglobal(lua, "sim");
    lua_getglobal(lua, "os");
    lua_pushcfunction(lua, Exit);
    lua_setfield(lua, -2, "exit");
    lua_pop(lua, 1);
    AddSearchPath(lua, options.script.c_str());
    AddArguments(lua, options);
}

// Lua cuts long file names; the author gets the name that was given. An empty chunk of the flight's name
// shows how it was cut.
std::string WithWholeName(lua_State *lua, const std::string &message) {
    const std::string source = "@" + flight.options.script;
    lua_Debug frame;
    if (luaL_loadbuffer(lua, "", 0, source.c_str()) != LUA_OK) return message;
    lua_getinfo(lua, ">S", &frame);
    if (std::strncmp(frame.short_src, "...", 3) != 0) return message;
    std::string whole = message;
    const std::string cut = frame.short_src;
    for (size_t at = whole.find(cut); at != std::string::npos;
         at = whole.find(cut, at + flight.options.script.size()))
        whole.replace(at, cut.size(), flight.options.script);
    return whole;
}

int RunScript() {
    lua_State *lua = luaL_newstate();
    if (!lua) {
        std::fprintf(stderr, "fennic-sim: no memory for Lua\n");
        return ExitFailed;
    }
    PrepareLua(lua, flight.options);
    lua_pushcfunction(lua, ExplainError);
    GoTo(false);
    int failed = luaL_loadfile(lua, flight.options.script.c_str());
    if (failed == LUA_OK) {
        luaL_checkstack(lua, static_cast<int>(flight.options.arguments.size()) + 10, "too many arguments");
        for (const std::string &argument : flight.options.arguments)
            lua_pushlstring(lua, argument.data(), argument.size());
        failed = lua_pcall(lua, static_cast<int>(flight.options.arguments.size()), 0, 1);
    }
    if (failed != LUA_OK) {
        std::fflush(stdout);
        const char *message = lua_tostring(lua, -1);
        std::fprintf(stderr, "%s\n", WithWholeName(lua, message ? message : "error").c_str());
    }
    RememberCaller(nullptr);
    lua_close(lua);
    return failed == LUA_OK ? ExitFlown : ExitFailed;
}

bool PrepareSimulator(std::string &error) {
    const FlightOptions &options = flight.options;
    if (!MakeScratchAircraft(options.aircraftFolder, flight.scratch, error)) return false;
    for (const std::string &folder : options.pluginFolders)
        if (!AddGlobalPlugin(folder, flight.scratch.root, error)) return false;
    ResetSimulator();
    if (!options.xplaneFolder.empty() && !ReadSimulatorLists(options.xplaneFolder, error)) return false;
    SetScreenSize(options.screenWidth, options.screenHeight);
    SetFolders(flight.scratch.root, flight.scratch.aircraft, FindAircraftFile(flight.scratch.aircraft).name);
    flight.frameSeconds = 1 / options.framesPerSecond;
    SetEventListener([](const Event &event) {
        NoteUnderstood(event);
        TranscribeEvent(event);
    });
    return StartSound(error);
}

void WaitForClock() {
    const auto frame = std::chrono::duration_cast<steady_clock::duration>(
        std::chrono::duration<double>(flight.frameSeconds));
    nextFrame = std::max(nextFrame + frame, steady_clock::now() - MostBehind);
    std::this_thread::sleep_until(nextFrame);
}

} // namespace

std::string PathFromStart(const std::string &path) {
    return (std::filesystem::path(flight.startFolder) / path).generic_string();
}

SimulatorCall::SimulatorCall() {
    GoTo(true);
    if (!flight.locale.empty()) std::setlocale(LC_ALL, flight.locale.c_str());
}

SimulatorCall::~SimulatorCall() {
    if (!flight.locale.empty()) std::setlocale(LC_ALL, "C");
}

void StepFrames(long long count) {
    for (long long i = 0; i < count; ++i) {
        BeginFrameOfSpeech();
        {
            SimulatorCall inside;
            StepFrame(flight.frameSeconds, flight.options.window);
        }
        RunFrameOfSound();
        EndFrameOfSpeech();
        TranscribeFrameEnd();
        ++flight.frames;
        if (flight.options.window && !ShowFrontend(flight.frameSeconds))
            std::exit(FinishFlight(flight.statusWhenClosed));
        if (flight.options.realTime && !flight.options.window) WaitForClock();
    }
}

int FlyFlight(const FlightOptions &options) {
    startOfFlight = steady_clock::now();
    flight.options = options;
    std::error_code failed;
    flight.startFolder = std::filesystem::current_path(failed).generic_string();
    std::string error;
    flight.scratch.root = MakeScratchRoot(error);
    if (flight.scratch.root.empty()) return RefuseToFly(error);
    if (!options.alone && !FlyUnderWatch(flight.scratch.root, options.keep, error)) {
        flight.options.alone = true; // there is nobody else to remove the folder
        return RefuseToFly(error);
    }
    if (options.window && !OpenFrontend(options.screenWidth, options.screenHeight, error))
        return RefuseToFly("no window: " + error);
    if (!PrepareSimulator(error)) return RefuseToFly(error);
    OpenTranscript(!options.quiet, flight.scratch.root);
    nextFrame = steady_clock::now();
    const int status = RunScript();
    flight.statusWhenClosed = status;
    while (options.window) StepFrames(1); // until the pilot closes the window
    return FinishFlight(status);
}

} // namespace simhost
