// The simulator in a window, by GLFW. Its events come between frames, one at a time; each that may reach a
// plug-in is a SimulatorCall like every other.
#include "simhost/flights/window_frontend.h"

#include <algorithm>
#include <cmath>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include "simhost/drawing/screen.h"
#include "simhost/drawing/system_libraries.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/windows/keyboard.h"
#include "simhost/windows/menu_bar.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constexpr Tint LineTint = {0.10F, 0.11F, 0.13F, 0.85F};
constexpr Tint ActiveLineTint = {0.08F, 0.16F, 0.24F, 0.95F};
constexpr Tint TextTint = {0.95F, 0.96F, 0.98F, 1.0F};
constexpr Tint HintTint = {0.62F, 0.64F, 0.67F, 1.0F};

constexpr int LineHeight = 24;
constexpr int LeastScreen = 100;           // boxels, as sim.screen allows
constexpr double MostSecondsBehind = 0.25; // seconds; a window that was held up goes on from now

GLFWwindow *window = nullptr;
double nextPicture = 0; // seconds of GLFW's clock
int mouseX = 0, mouseY = 0;
int heldButton = -1;    // of GLFW's
double wheelTurned = 0; // less than a click yet

// What the pilot says, being typed. The keyboard is the line's, or the simulator's.
std::string line;
bool isLineActive = true;

// A key that went down, until the system tells which character it makes.
struct PressedKey {
    bool isWaiting = false;
    XPLMKeyFlags flags = 0;
    char virtualKey = 0;
    int systemKey = 0;
};
PressedKey pressed;

// What plug-ins have been told of a key. What goes down in the line does not come up elsewhere.
struct DownKey {
    bool isDown = false;
    char character = 0;
};
DownKey downKeys[GLFW_KEY_LAST + 1];

std::string lastError;

void KeepError(int, const char *description) {
    lastError = description;
}

XPLMKeyFlags FlagsOf(int modifiers) {
    return ((modifiers & GLFW_MOD_SHIFT) != 0 ? xplm_ShiftFlag : 0)
           | ((modifiers & GLFW_MOD_CONTROL) != 0 ? xplm_ControlFlag : 0)
           | ((modifiers & GLFW_MOD_ALT) != 0 ? xplm_OptionAltFlag : 0);
}

// 0 for keys that plug-ins do not know.
int VirtualKeyOf(int key) {
    if (key >= GLFW_KEY_A && key <= GLFW_KEY_Z) return XPLM_VK_A + key - GLFW_KEY_A;
    if (key >= GLFW_KEY_0 && key <= GLFW_KEY_9) return XPLM_VK_0 + key - GLFW_KEY_0;
    if (key >= GLFW_KEY_F1 && key <= GLFW_KEY_F12) return XPLM_VK_F1 + key - GLFW_KEY_F1;
    switch (key) {
    case GLFW_KEY_BACKSPACE: return XPLM_VK_BACK;
    case GLFW_KEY_TAB: return XPLM_VK_TAB;
    case GLFW_KEY_ENTER:
    case GLFW_KEY_KP_ENTER: return XPLM_VK_RETURN;
    case GLFW_KEY_ESCAPE: return XPLM_VK_ESCAPE;
    case GLFW_KEY_SPACE: return XPLM_VK_SPACE;
    case GLFW_KEY_END: return XPLM_VK_END;
    case GLFW_KEY_HOME: return XPLM_VK_HOME;
    case GLFW_KEY_LEFT: return XPLM_VK_LEFT;
    case GLFW_KEY_UP: return XPLM_VK_UP;
    case GLFW_KEY_RIGHT: return XPLM_VK_RIGHT;
    case GLFW_KEY_DOWN: return XPLM_VK_DOWN;
    case GLFW_KEY_DELETE: return XPLM_VK_DELETE;
    default: return 0;
    }
}

bool MakesCharacter(int key, int modifiers) {
    const bool isPrintable = key >= GLFW_KEY_SPACE && key <= GLFW_KEY_WORLD_2;
    const bool isKeypad = key >= GLFW_KEY_KP_0 && key <= GLFW_KEY_KP_EQUAL && key != GLFW_KEY_KP_ENTER;
    return (isPrintable || isKeypad) && (modifiers & (GLFW_MOD_CONTROL | GLFW_MOD_ALT)) == 0;
}

void SendPressedKey(char character) {
    pressed.isWaiting = false;
    downKeys[pressed.systemKey] = {true, character};
    SimulatorCall inside;
    SendKey(character, pressed.flags | xplm_DownFlag, pressed.virtualKey);
}

// A key that made no character after all, such as a dead one.
void SendWaitingKey() {
    if (pressed.isWaiting)
        SendPressedKey(KeyOfVirtualKey(static_cast<unsigned char>(pressed.virtualKey)).character);
}

void EraseLastLetter(std::string &text) {
    while (!text.empty() && (text.back() & 0xC0) == 0x80) text.pop_back();
    if (!text.empty()) text.pop_back();
}

void KeyToLine(int key) {
    if (key == GLFW_KEY_BACKSPACE) {
        EraseLastLetter(line);
    } else if (key == GLFW_KEY_ENTER || key == GLFW_KEY_KP_ENTER) {
        TypeSpeech(line);
        line.clear();
    } else if (key == GLFW_KEY_ESCAPE) {
        line.clear();
        isLineActive = false;
    }
}

void OnKey(GLFWwindow *, int key, int, int action, int modifiers) {
    if (key < 0 || key > GLFW_KEY_LAST) return;
    SendWaitingKey();
    if (action == GLFW_RELEASE) {
        const DownKey down = downKeys[key];
        downKeys[key] = {};
        if (!down.isDown) return;
        SimulatorCall inside;
        SendKey(down.character, FlagsOf(modifiers) | xplm_UpFlag, static_cast<char>(VirtualKeyOf(key)));
        return;
    }
    if (key == GLFW_KEY_ESCAPE && isMenuBarOpen()) {
        CloseMenuBar();
        return;
    }
    if (isLineActive) {
        KeyToLine(key);
        return;
    }
    if (key >= GLFW_KEY_LEFT_SHIFT && key <= GLFW_KEY_RIGHT_SUPER) return;
    pressed = {true, FlagsOf(modifiers), static_cast<char>(VirtualKeyOf(key)), key};
    if (!MakesCharacter(key, modifiers)) SendWaitingKey();
}

void AppendUtf8(std::string &text, unsigned code) {
    const auto add = [&](unsigned byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6);
        add(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12);
        add(0x80 | (code >> 6 & 0x3F));
        add(0x80 | (code & 0x3F));
    } else {
        add(0xF0 | code >> 18);
        add(0x80 | (code >> 12 & 0x3F));
        add(0x80 | (code >> 6 & 0x3F));
        add(0x80 | (code & 0x3F));
    }
}

void OnCharacter(GLFWwindow *, unsigned code) {
    if (isLineActive) {
        AppendUtf8(line, code);
        return;
    }
    // Plug-ins get one byte.
    if (pressed.isWaiting) SendPressedKey(code < 0x80 ? static_cast<char>(code) : 0);
}

void OnMove(GLFWwindow *, double x, double y) {
    int width = 0, height = 0;
    glfwGetWindowSize(window, &width, &height);
    if (width <= 0 || height <= 0) return;
    mouseX = static_cast<int>(std::floor(x * ScreenWidth() / width));
    mouseY = ScreenHeight() - 1 - static_cast<int>(std::floor(y * ScreenHeight() / height));
    if (!isMouseHeld() && MoveOverMenuBar(mouseX, mouseY)) return;
    SimulatorCall inside;
    MoveMouse(mouseX, mouseY);
    const bool isHidden = MouseCursor() == xplm_CursorHidden;
    glfwSetInputMode(window, GLFW_CURSOR, isHidden ? GLFW_CURSOR_HIDDEN : GLFW_CURSOR_NORMAL);
}

void Press(MouseButton button) {
    MenuPlace chosen;
    if (PressMenuBar(mouseX, mouseY, chosen)) {
        if (chosen.empty()) return;
        TranscribeAct("chooses " + MenuPath(chosen));
        SimulatorCall inside;
        ChooseMenuItem(chosen);
        return;
    }
    isLineActive = mouseY < LineHeight;
    if (isLineActive) return;
    SimulatorCall inside;
    PressMouse(mouseX, mouseY, button);
}

void OnButton(GLFWwindow *, int button, int action, int) {
    if (button != GLFW_MOUSE_BUTTON_LEFT && button != GLFW_MOUSE_BUTTON_RIGHT) return;
    if (action == GLFW_PRESS) {
        if (isMouseHeld()) return;
        heldButton = button;
        Press(button == GLFW_MOUSE_BUTTON_LEFT ? MouseButton::Left : MouseButton::Right);
        return;
    }
    if (button != heldButton) return;
    SimulatorCall inside;
    ReleaseMouse(mouseX, mouseY);
}

void OnWheel(GLFWwindow *, double, double clicks) {
    wheelTurned += clicks;
    const int whole = static_cast<int>(wheelTurned);
    if (whole == 0) return;
    wheelTurned -= whole;
    if (TurnWheelOverMenuBar(mouseX, mouseY, whole)) return;
    SimulatorCall inside;
    TurnWheel(mouseX, mouseY, whole);
}

void OnResize(GLFWwindow *, int width, int height) {
    if (width <= 0 || height <= 0) return; // an icon
    SetScreenSize(std::max(width, LeastScreen), std::max(height, LeastScreen));
}

// The flight may have chosen another screen.
void FollowScreenSize() {
    int width = 0, height = 0;
    glfwGetFramebufferSize(window, &width, &height);
    if (std::max(width, LeastScreen) == ScreenWidth() && std::max(height, LeastScreen) == ScreenHeight())
        return;
    glfwSetWindowSize(window, ScreenWidth(), ScreenHeight());
}

void DrawLine() {
    FillRectangle(0, LineHeight, ScreenWidth(), 0, isLineActive ? ActiveLineTint : LineTint);
    constexpr int left = 10, baseline = 8;
    if (!isLineActive && line.empty()) {
        DrawSimulatorText("Click here and type what the pilot says", left, baseline, HintTint, true);
        return;
    }
    DrawSimulatorText("Pilot says:", left, baseline, HintTint, true);
    const int textLeft = left + TextWidth("Pilot says: ");
    // The end is what one looks at while typing.
    std::string shown = line;
    while (!shown.empty() && textLeft + TextWidth(shown) > ScreenWidth() - left) {
        shown.erase(0, 1);
        while (!shown.empty() && (shown.front() & 0xC0) == 0x80) shown.erase(0, 1);
    }
    DrawSimulatorText(shown + (isLineActive ? "_" : ""), textLeft, baseline, TextTint, true);
}

// Real time passes until the frame is over, and the pilot acts meanwhile.
void WaitForNextFrame(double frameSeconds) {
    nextPicture = std::max(nextPicture + frameSeconds, glfwGetTime() - MostSecondsBehind);
    glfwPollEvents();
    for (double left = nextPicture - glfwGetTime(); left > 0; left = nextPicture - glfwGetTime())
        glfwWaitEventsTimeout(left);
    SendWaitingKey();
}

} // namespace

bool OpenFrontend(int screenWidth, int screenHeight, std::string &error) {
    error = LoadOpenGl();
    if (error.empty()) error = LoadSystemLibrary("libglfw.so.3");
    if (!error.empty()) return false;
    glfwSetErrorCallback(KeepError);
    if (glfwInit() == GLFW_FALSE) {
        error = lastError;
        return false;
    }
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 2);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 1);
    window = glfwCreateWindow(screenWidth, screenHeight, "fennic-sim", nullptr, nullptr);
    if (!window) {
        error = lastError;
        glfwTerminate();
        return false;
    }
    glfwMakeContextCurrent(window);
    glfwSwapInterval(0); // the pace is kept here
    UseCurrentContext();
    glfwSetKeyCallback(window, OnKey);
    glfwSetCharCallback(window, OnCharacter);
    glfwSetCursorPosCallback(window, OnMove);
    glfwSetMouseButtonCallback(window, OnButton);
    glfwSetScrollCallback(window, OnWheel);
    glfwSetFramebufferSizeCallback(window, OnResize);
    nextPicture = glfwGetTime();
    return true;
}

bool ShowFrontend(double frameSeconds) {
    FollowScreenSize();
    DrawMenuBar();
    DrawLine();
    ShowScreen();
    glfwSwapBuffers(window);
    WaitForNextFrame(frameSeconds);
    return glfwWindowShouldClose(window) == GLFW_FALSE;
}

// GLFW itself stays until the process ends: closing the drivers early would make what they keep a leak.
void CloseFrontend() {
    glfwDestroyWindow(window);
    window = nullptr;
}

} // namespace simhost
