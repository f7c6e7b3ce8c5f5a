// The window: where its panels stand, and which zone a click meets. Clicks go to the zones of the last
// drawing, which are what the author saw. The window is of the simulator's old kind, which hears neither the
// wheel nor the right button; a transparent window of the new kind lies over it while the editor is shown,
// takes these, and lets left clicks through.
#include "systems/editor/window.h"

#include <algorithm>

#include "XPLMProcessing.h"
#include "frame/kill_switch.h"
#include "gfx/fonts.h"
#include "systems/editor/blocks.h"
#include "systems/editor/clicks.h"
#include "systems/editor/edit_box.h"
#include "systems/editor/kept.h"
#include "systems/editor/model.h"
#include "systems/editor/panels.h"
#include "systems/editor/state.h"
#include "systems/editor/undo.h"
#include "systems/editor/usage.h"
#include "systems/links.h"
#include "systems/trace.h"
#include "util/guard.h"
#include "util/make_fresh.h"
#include "util/screen.h"

EditorWindowState editorWindow;

namespace {

const int LeastWidth = 1280, LeastHeight = 800; // what the panels need
const int WindowMargin = 8;
const int LowerHeight = 13 * RowHeight; // usage and value graph
const double TableShare = 0.41;         // of the width
const double LogicShare = 0.46;         // of the height of the two stacks
const double DoubleClickSec = 0.5;
const double Darkness = 0.97;
const int RowsPerClick = 3;           // of the wheel
const int MostClicks = FarthestBoxel; // that a wheel can be turned at once

// The one button that stands for the hidden editor.
void DrawHidden() {
    click_zone_class zone = Zone(ActionShow, "EDITOR");
    AddBoard(parZones, zone, sW - BoardWidth(zone.name) - WindowMargin, sH - 3 * RowHeight);
}

void DrawLeft(const Area &area) {
    const int boards = area.bottom + RowHeight;
    int x = AddBoard(parZones, Zone(ActionShowUsage, "USAGE"), area.left, boards, showUsage && !showKept);
    x = AddBoard(parZones, Zone(ActionShowGraph, "GRAPH"), x, boards, showGraph);
    showKept = showKept && !KeptPlaces().empty();
    if (!KeptPlaces().empty())
        AddBoard(parZones, Zone(ActionShowKept, "NOT UNDERSTOOD"), x, boards, showKept);
    const bool hasList = showUsage || showKept, hasLower = hasList || showGraph;
    const Area lower = {area.left, boards + LowerHeight, area.right, boards + 4};
    const int middle = (area.left + area.right) / 2;
    const Area list = {lower.left, lower.top, showGraph ? middle - 3 : lower.right, lower.bottom};
    if (showKept)
        DrawKept(list);
    else if (showUsage)
        DrawUsage(list);
    if (showGraph) DrawValueGraph({hasList ? middle + 3 : lower.left, lower.top, lower.right, lower.bottom});
    DrawTable({area.left, area.top, area.right, (hasLower ? lower.top : boards) + 4});
}

void DrawRight(const Area &area) {
    DrawDetails({area.left, area.top, area.right, area.top - DetailsHeight});
    const Area stacks = {area.left, area.top - DetailsHeight, area.right, area.bottom};
    const int logicHeight = static_cast<int>((stacks.top - stacks.bottom) * LogicShare);
    DrawLogicStack({stacks.left, stacks.top, stacks.right, stacks.top - logicHeight});
    const int boards = stacks.top - logicHeight - 2;
    click_zone_class calculate = Zone(ActionShowCalc, "CALCULATE"),
                     execute = Zone(ActionShowExecute, "EXECECUTE");
    calculate.place.block = execute.place.block = -1;
    const int x = AddBoard(parZones, calculate, stacks.left, boards, showCalc);
    AddBoard(parZones, execute, x, boards, !showCalc);
    const Area panel = {stacks.left, boards - RowHeight - 4, stacks.right, stacks.bottom};
    if (!showCalc) {
        DrawExecuteStack(panel);
        return;
    }
    const int graphWidth = std::max(210, (panel.right - panel.left) / 4);
    ColumnX_Logic = panel.left;
    ColumnX_Calc = panel.right - graphWidth;
    DrawCalculationStack({panel.left, panel.top, panel.right - graphWidth - 6, panel.bottom});
    DrawLimitsAndGraph({panel.right - graphWidth, panel.top, panel.right, panel.bottom});
}

void DrawShown() {
    const int width = std::max(sW, LeastWidth), height = std::max(sH, LeastHeight);
    const Area all = {0, sH, width, sH - height}; // a smaller screen shows its upper left part
    FillArea(all, ColourBlack, Darkness);
    const int titleTop = all.top - 24; // below the simulator's menu bar
    DrawTitle({WindowMargin, titleTop, sW - WindowMargin,
               titleTop - 2 * RowHeight}); // with the way out, on any screen
    const int top = titleTop - 2 * RowHeight - 6, bottom = all.bottom + WindowMargin;
    ColumnX_Par = static_cast<int>(width * TableShare);
    DrawLeft({WindowMargin, top, ColumnX_Par - WindowMargin, bottom});
    DrawRight({ColumnX_Par, top, width - WindowMargin, bottom});
}

void FollowScreen() {
    int width = 0, height = 0;
    ReadScreenSize(width, height);
    if (width == sW && height == sH) return;
    sW = width;
    sH = height;
    XPLMSetWindowGeometry(SysWindow, 0, sH, sW, 0);
    KeepEditWidgetOnScreen();
}

void CoverScreen(bool covers) {
    if (covers != editorWindow.isCovering) XPLMSetWindowIsVisible(editorWindow.cover, covers ? 1 : 0);
    editorWindow.isCovering = covers;
}

// The aircraft's kill switch: nothing is seen, nothing can be clicked, and no key is taken.
void DrawNothing() {
    BeginZones(-1, -1);
    EditWidgetDestroy();
    editorWindow.pressed = {};
    CoverScreen(false);
}

void SetScroll(int list, int row) {
    scroll[list] = std::max(0, row); // drawing brings it into its range
}

// The bar follows the mouse: as far as that is down its height.
void DragScrollBar(int y) {
    const int height = editorWindow.pressed.area.top - editorWindow.pressed.area.bottom;
    const double share = static_cast<double>(editorWindow.pressed.area.top - y) / std::max(1, height);
    SetScroll(editorWindow.pressed.list,
              static_cast<int>(share * editorWindow.pressed.count) - editorWindow.pressed.rows / 2);
}

// The list under the mouse scrolls; not while a field is being typed in, which would be left behind.
int TurnWheel(XPLMWindowID, int, int, int, int clicks, void *) {
    int x = 0, y = 0;
    XPLMGetMouseLocation(&x, &y);
    const int list = ListAt(PlaceOnScreen(x), PlaceOnScreen(y));
    if (list >= 0 && !isEditWidgetOpen())
        SetScroll(list, scroll[list] - RowsPerClick * std::clamp(clicks, -MostClicks, MostClicks));
    return 1;
}

void DrawCover(XPLMWindowID, void *) {}

int PassLeftClickOn(XPLMWindowID, int, int, XPLMMouseStatus, void *) {
    return 0;
}

int TakeRightClick(XPLMWindowID, int, int, XPLMMouseStatus, void *) {
    return 1;
}

XPLMCursorStatus ShowArrow(XPLMWindowID, int, int, void *) {
    return xplm_CursorArrow; // not that of a switch behind
}

XPLMWindowID CreateCover() {
    XPLMCreateWindow_t wanted{};
    wanted.structSize = sizeof wanted;
    wanted.top = sH;
    wanted.right = sW;
    wanted.drawWindowFunc = Guarded<"drawing the editor's cover", DrawCover>;
    wanted.handleMouseClickFunc = Guarded<"a click on the editor's cover", PassLeftClickOn, 1>;
    wanted.handleRightClickFunc = TakeRightClick;
    wanted.handleKeyFunc = Guarded<"a key in the editor", SysKeyCallback>;
    wanted.handleCursorFunc = ShowArrow;
    wanted.handleMouseWheelFunc = Guarded<"the wheel over the editor", TurnWheel, 1>;
    wanted.layer = xplm_WindowLayerFlightOverlay; // as the editor's window, and not over what floats
    const XPLMWindowID window = XPLMCreateWindowEx(&wanted);
    const int mainMonitor = -1;
    XPLMSetWindowPositioningMode(window, xplm_WindowFullScreenOnMonitor, mainMonitor);
    return window;
}

void DestroyWindow(XPLMWindowID &window) {
    if (window) XPLMDestroyWindow(window);
    window = nullptr;
}

} // namespace

void SysWindowCreate() {
    SysWindowDestroy();
    ResetEditorState();
    ForgetKeptPlaces();
    ReadScreenSize(sW, sH);
    SysWindow = XPLMCreateWindow(0, sH, sW, 0, 1, Guarded<"drawing the editor", SysWindowCallback>,
                                 Guarded<"a key in the editor", SysKeyCallback>,
                                 Guarded<"a click in the editor", SysMouseClickCallback, 1>, nullptr);
    editorWindow.cover = CreateCover();
    areFramesTraced = true;
}

void SysWindowDestroy() {
    EditWidgetDestroy();
    DestroyWindow(editorWindow.cover);
    DestroyWindow(SysWindow);
    editorWindow.isCovering = false;
    areFramesTraced = false;
    ForgetUndo();
}

bool isEditorOverScreen() {
    return editorWindow.isCovering;
}

void SysWindowCallback(XPLMWindowID, void *) {
    if (isAtRest()) {
        DrawNothing();
        return;
    }
    FollowScreen();
    CoverScreen(isEditorShown);
    int x = 0, y = 0;
    XPLMGetMouseLocation(&x, &y);
    BeginZones(PlaceOnScreen(x), PlaceOnScreen(y));
    BeginCanvas();
    KeepSelectionValid();
    TakeGraphValue();
    if (isEditorShown)
        DrawShown();
    else
        DrawHidden();
    EndCanvas();
    BeginCanvas();
    DrawEditWidget(); // over the texts
    EndCanvas();
}

// Never called: the window does not ask for the keyboard.
void SysKeyCallback(XPLMWindowID, char, XPLMKeyFlags, char, void *, int) {}

int SysMouseClickCallback(XPLMWindowID, int mouseX, int mouseY, XPLMMouseStatus mouse, void *) {
    const int x = PlaceOnScreen(mouseX), y = PlaceOnScreen(mouseY);
    if (mouse == xplm_MouseDown) {
        if (!editorWindow.isCovering && !ZoneAt(x, y)) return 0;
        MouseDown(x, y);
    } else if (mouse == xplm_MouseDrag) {
        MouseDrag(x, y);
    } else {
        MouseUp(x, y);
    }
    return 1;
}

// A text that is being edited is stored first, wherever the click is; while it is refused nothing else can be
// clicked.
void MouseDown(int x, int y) {
    const click_zone_class *hit = ZoneAt(x, y);
    const click_zone_class zone = hit ? *hit : click_zone_class();
    if (isEditWidgetOpen() && !EditWidgetStore()) return;
    const double now = static_cast<double>(XPLMGetElapsedTime());
    const bool isDouble =
        zone.isSame(editorWindow.pressed) && now - editorWindow.pressedTime <= DoubleClickSec;
    editorWindow.pressed = zone;
    editorWindow.pressedTime = isDouble ? -10.0 : now;
    editorWindow.pressedY = y;
    editorWindow.pressedRow = zone.list >= 0 ? scroll[zone.list] : 0;
    if (zone.action == ActionScroll)
        DragScrollBar(y);
    else if (hit)
        ClickZone(zone, isDouble);
    CoverScreen(isEditorShown);
}

// Lists follow the mouse, and so do scroll bars.
void MouseDrag(int, int y) {
    if (editorWindow.pressed.action == ActionScroll)
        DragScrollBar(y);
    else if (editorWindow.pressed.action == ActionEdit && editorWindow.pressed.list >= 0)
        SetScroll(editorWindow.pressed.list,
                  editorWindow.pressedRow + (y - editorWindow.pressedY) / RowHeight);
}

// Zones act on the press, so that dragging can begin there.
void MouseUp(int, int) {
    editorWindow.pressedRow = 0;
}

void ResetEditor() {
    MakeFresh(editorWindow, zonesState, panelsState, usageState, undoState);
    areFramesTraced = false;
    ResetEditorState();
    ForgetKeptPlaces();
}
