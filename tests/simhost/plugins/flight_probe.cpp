// A plug-in for the tests of fennic-sim: it has a speech link as the product has, answers what it hears, and
// misbehaves on request. What it is to do it reads from the dataref "probe/do" at each frame.
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include <pthread.h>
#include <unistd.h>

#include "../../text_dataref.h"
#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

namespace {

XPLMDataRef toSpeech, fromSpeech, half, readOnly, pair, published;
std::string sent, heard, told;
int pairOfInts[2] = {4, 5};
XPLMCommandRef pushToTalk;
int frames = 0;
const int idAtLoad = XPLMGetMyID(); // calls of static initialisers are the plug-in's, too

// Under a German locale this is "0,5".
int ReadHalf(void *, void *out, int offset, int most) {
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    std::string value = text;
    return ReadTextDataref(&value, out, offset, most);
}

int ReadSeven(void *) {
    return 7;
}

int ReadPair(void *, int *out, int offset, int most) {
    if (out == nullptr) return 2;
    int count = 0;
    for (; count < most && offset + count < 2; ++count) out[count] = pairOfInts[offset + count];
    return count;
}

void WritePair(void *, int *in, int offset, int count) {
    for (int i = 0; i < count && offset + i < 2; ++i) pairOfInts[offset + i] = in[i];
}

void Send(const std::string &message) {
    std::string copy = message;
    XPLMSetDatab(toSpeech, copy.data(), 0, static_cast<int>(copy.size()) + 1);
}

void Log(const std::string &text) {
    XPLMDebugString(("KV FENNIC Plugin: 0 SEC TFT " + text + "\n").c_str());
}

// As the product publishes what its log tells.
void Tell(const std::string &kind, const std::string &subject, const std::string &words) {
    std::string text = kind + "\t" + subject + "\t" + words;
    XPLMSetDatab(published, text.data(), 0, static_cast<int>(text.size()) + 1);
}

int Number(const char *name) {
    return XPLMGetDatai(XPLMFindDataRef(name));
}

// One frame of a checklist item, each in the way in which the product does and tells it.
void Answer(const std::string &text) {
    XPLMDataRef beacon = XPLMFindDataRef("probe/beacon");
    XPLMCommandRef lights = XPLMFindCommand("probe/lights_on");
    if (text == "beacon") {
        Tell("dataref", "probe/beacon", "sets probe/beacon to 1");
        XPLMSetDatai(beacon, 1);
        XPLMSetDatai(XPLMFindDataRef("probe/other"), frames); // the model's own traffic: not told
    } else if (text == "fuel") {
        Tell("dataref", "probe/fuel[1]", "sets probe/fuel[1] to 2.5");
        float value = 2.5f;
        XPLMSetDatavf(XPLMFindDataRef("probe/fuel"), &value, 1, 1);
    } else if (text == "lights") {
        Tell("command", "probe/lights_on", "presses probe/lights_on");
        XPLMCommandOnce(lights);
    } else if (text == "hold") {
        Tell("command", "probe/lights_on", "holds probe/lights_on");
        XPLMCommandBegin(lights);
    } else if (text == "let go") {
        XPLMCommandEnd(lights);
    } else if (text == "nothing there") {
        Tell("command", "probe/no_such", "presses probe/no_such");
    } else if (text == "move") {
        Tell("position", "REST", "moves to REST");
    } else if (text == "ask") {
        Tell("answers", "", "CHECKED\tNOT CHECKED");
    } else if (text == "answered") {
        Tell("answers", "", "");
    } else if (text == "fail") {
        Tell("error", "", "Error in script - cant find dataref: nowhere");
        Tell("error", "systems/x.txt", "systems/x.txt line 7: no comparison - line dropped: flaps");
        XPLMDebugString("Probe: Error 7\n");
        Log("Just Get Recognition: Error mirrors adjusted"); // no problem, whatever is in it
    } else {
        Send("say>" + text);
        Send("volume>80");
    }
}

void Hang() {
    for (volatile bool forever = true; forever;) {
    }
}

// Half of the menus go again, the others stay behind for the simulator to drop.
void HangMenus(int count) {
    std::vector<XPLMMenuID> menus;
    for (int i = 0; i < count; ++i) menus.push_back(XPLMCreateMenu("Many", nullptr, 0, nullptr, nullptr));
    for (int i = 0; i < count; i += 2) XPLMDestroyMenu(menus[static_cast<size_t>(i)]);
}

void Misbehave() {
    switch (Number("probe/do")) {
    case 1: *static_cast<volatile int *>(nullptr) = 1; break;
    case 2: Hang(); break;
    case 3: std::abort();
    case 4: throw std::runtime_error("no oil");
    case 5: std::exit(0);
    case 6: _exit(0);
    case 7: std::quick_exit(0);
    case 8: pthread_exit(nullptr);
    case 9:
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, nullptr);
        Hang();
        break;
    case 10: std::raise(SIGKILL); break;
    case 11: std::raise(SIGSTOP); break;
    case 12: std::raise(SIGTERM); break;
    case 13: HangMenus(100'000); break;
    default: break;
    }
}

float OnFrame(float, float, int, void *) {
    ++frames;
    if (!heard.empty()) {
        const std::string text = heard;
        heard.clear();
        Answer(text);
    }
    Misbehave();
    return -1;
}

int OnPushToTalk(XPLMCommandRef, XPLMCommandPhase phase, void *) {
    int texture = 0;
    if (Number("probe/do") == 20) XPLMGenerateTextureNumbers(&texture, 1);
    if (phase == xplm_CommandBegin) Send("CmdRecStart");
    if (phase == xplm_CommandEnd) Send("CmdRecStop");
    return 0;
}

int OnDraw(XPLMDrawingPhase, int, void *) {
    float blue[] = {0.25f, 0.5f, 1};
    char nothing[] = "", text[] = "p\xFFrobe";
    XPLMDrawString(blue, 10, 20, nothing, nullptr, xplmFont_Basic);
    XPLMDrawString(blue, 30, 40, text, nullptr, xplmFont_Basic);
    return 1;
}

// A window and a menu that tell in the log what the pilot does to them.
XPLMWindowID window;

int OnClick(XPLMWindowID, int x, int y, XPLMMouseStatus status, void *button) {
    const char *names[] = {"", " down", " drag", " up"};
    Log(static_cast<const char *>(button) + std::string(names[status]) + " at " + std::to_string(x) + ", "
        + std::to_string(y));
    if (status == xplm_MouseDown) XPLMTakeKeyboardFocus(window);
    return 1;
}

int OnLeftClick(XPLMWindowID id, int x, int y, XPLMMouseStatus status, void *) {
    return OnClick(id, x, y, status, const_cast<char *>("left"));
}

int OnRightClick(XPLMWindowID id, int x, int y, XPLMMouseStatus status, void *) {
    return OnClick(id, x, y, status, const_cast<char *>("right"));
}

int OnWheel(XPLMWindowID, int, int, int, int clicks, void *) {
    Log("wheel " + std::to_string(clicks));
    return 1;
}

void OnKey(XPLMWindowID, char character, XPLMKeyFlags flags, char virtualKey, void *, int losing) {
    if (losing != 0)
        Log("focus lost");
    else
        Log("key " + std::to_string(character) + " " + std::to_string(flags) + " "
            + std::to_string(static_cast<unsigned char>(virtualKey)));
}

void OpenWindow() {
    XPLMCreateWindow_t parameters{};
    parameters.structSize = sizeof parameters;
    parameters.left = 100;
    parameters.top = 400;
    parameters.right = 300;
    parameters.bottom = 200;
    parameters.visible = 1;
    parameters.handleMouseClickFunc = OnLeftClick;
    parameters.handleRightClickFunc = OnRightClick;
    parameters.handleMouseWheelFunc = OnWheel;
    parameters.handleKeyFunc = OnKey;
    parameters.decorateAsFloatingWindow = xplm_WindowDecorationRoundRectangle;
    parameters.layer = xplm_WindowLayerFloatingWindows;
    window = XPLMCreateWindowEx(&parameters);
    XPLMSetWindowTitle(window, "Probe's window");
    XPLMSetWindowPositioningMode(window, xplm_WindowVR, -1);
}

void OnMenu(void *, void *item) {
    Log(static_cast<const char *>(item) + std::string(" chosen"));
}

void HangMenu() {
    const XPLMMenuID aircraft = XPLMFindAircraftMenu();
    const XPLMMenuID menu =
        XPLMCreateMenu("Probe", aircraft, XPLMAppendMenuItem(aircraft, "Probe", nullptr, 0), OnMenu, nullptr);
    const auto add = [&](const char *text) {
        return XPLMAppendMenuItem(menu, text, const_cast<char *>(text), 0);
    };
    XPLMCheckMenuItem(menu, add("On"), xplm_Menu_Checked);
    XPLMCheckMenuItem(menu, add("Off"), xplm_Menu_Unchecked);
    XPLMAppendMenuSeparator(menu);
    XPLMEnableMenuItem(menu, add("Never"), 0);
    const XPLMMenuID more = XPLMCreateMenu("More", menu, add("More"), OnMenu, nullptr);
    XPLMAppendMenuItem(more, "Even/more", const_cast<char *>("even more"), 0);
}

} // namespace

#define ENTRY extern "C" __attribute__((visibility("default")))

ENTRY int XPluginStart(char *name, char *signature, char *description) {
    std::strcpy(name, "Probe");
    std::strcpy(signature, "fennic.test.probe");
    std::strcpy(description, "Answers and misbehaves");
    if (Number("probe/refuse_start") != 0 || idAtLoad != XPLMGetMyID()) return 0;
    toSpeech = PublishTextDataref("kv/to_speech", sent);
    published = PublishTextDataref("kv/diagnost/log", told);
    fromSpeech = PublishTextDataref("kv/fr_speech", heard);
    half = XPLMRegisterDataAccessor("probe/half", xplmType_Data, 0, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, ReadHalf, nullptr,
                                    nullptr, nullptr);
    readOnly = XPLMRegisterDataAccessor("probe/seven", xplmType_Int, 0, ReadSeven, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, nullptr);
    pair = XPLMRegisterDataAccessor("probe/pair", xplmType_IntArray, 1, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, ReadPair, WritePair, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr);
    pushToTalk = XPLMCreateCommand("kv/fennic/rec", "push to talk");
    XPLMRegisterCommandHandler(pushToTalk, OnPushToTalk, 1, nullptr);
    XPLMRegisterFlightLoopCallback(OnFrame, -1, nullptr);
    if (Number("probe/window") != 0) OpenWindow();
    if (Number("probe/window") != 0) HangMenu();
    if (Number("probe/draws") != 0) XPLMRegisterDrawCallback(OnDraw, xplm_Phase_Window, 0, nullptr);
    return 1;
}

ENTRY void XPluginStop(void) {
    if (Number("probe/hang_in_stop") != 0) Hang();
    XPLMDebugString("Probe stops");
    XPLMUnregisterCommandHandler(pushToTalk, OnPushToTalk, 1, nullptr);
    if (Number("probe/leave_behind") != 0) return;
    XPLMUnregisterFlightLoopCallback(OnFrame, nullptr);
    XPLMUnregisterDrawCallback(OnDraw, xplm_Phase_Window, 0, nullptr);
    for (XPLMDataRef dataref : {toSpeech, fromSpeech, half, readOnly, pair, published})
        XPLMUnregisterDataAccessor(dataref);
}

ENTRY int XPluginEnable(void) {
    return Number("probe/refuse_enable") == 0 ? 1 : 0;
}

ENTRY void XPluginDisable(void) {
    Send("exit>");
}

ENTRY void XPluginReceiveMessage(XPLMPluginID, int message, void *) {
    Log(message == 109 ? "headset on" : message == 110 ? "headset off" : "another message");
}
