// The position creator. It moves channels past the running animation, which leaves axes without a speed
// alone; while the panel is open the main loop does not run the idle motion.
#include "figure/position_creator.h"

#include <cstdlib>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "figure/channels.h"
#include "figure/hand_views.h"
#include "figure/pose_edits.h"
#include "figure/position_creator_tools.h"
#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "gfx/textures.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/screen.h"

widgetVR_class EditorPanel;
PositionCreatorState positionCreator;

namespace {

const int PanelSide = 512;
const int StripWidth = 1020, StripHeight = 260, StripPlace = 50;
const int PadX = 256, PadY = 390, PadReach = 128; // panel coordinates
const int LongestName = 32;
const float PerPixel = 1.0F, PerPixelOfOffset = 0.01F; // the figure's offset is in metres
const int CursorTextAway = 5;
const PanelPlace BoxPlace = {0, 300}, BoxLabelPlace = {2, 278}, ChannelLabelPlace = {2, 330};
const int BoxWidth = 120, BoxHeight = 20;
enum { BoxLabel, ChannelLabel }; // among the panel's texts

enum { AxisX, AxisY, AxisZ };

bool isChannel(int index) {
    return index >= 0 && static_cast<size_t>(index) < anim.size();
}

float UnitsPerPixel(const structAnim &channel) {
    return channel.name == FigureOffsetName ? PerPixelOfOffset : PerPixel;
}

void SetAxis(structAnim &channel, int axis, float value) {
    channel.current[axis] = value;
    channel.Show(axis, value);
}

// The screen's mouse reaches beyond the panel; what points into a headset or another window does not move it.
void ReadMousePlace(int &x, int &y) {
    x = EditorPanel.mouseX;
    y = EditorPanel.mouseY;
    if (!EditorPanel.isOnMonitor()) return;
    XPLMGetMouseLocationGlobal(&x, &y);
    x = PlaceOnScreen(x);
    y = PlaceOnScreen(y);
}

void StartDrag() {
    const structAnim &channel = anim[static_cast<size_t>(anim_selected)];
    RememberPose();
    isSelectedAnimStart = anim_selected;
    ReadMousePlace(MouseInitX, MouseInitY);
    AnimInitXdrfValue = channel.Shown(AxisX);
    AnimInitYdrfValue = channel.Shown(AxisY);
    AnimInitZdrfValue = channel.Shown(AxisZ);
}

void EndDrag() {
    if (isSelectedAnimStart < 0) return;
    isSelectedAnimStart = -1;
    ForgetUnchangedPose();
}

// A click beside all buttons: one on the pad starts a drag, the next one, wherever it is, ends it.
void ClickPad(int x, int y) {
    const bool isOnPad = std::abs(x - PadX) <= PadReach && std::abs(y - PadY) <= PadReach;
    positionCreator.wasDragEnded = isSelectedAnimStart >= 0;
    if (positionCreator.wasDragEnded)
        EndDrag();
    else if (isOnPad && isChannel(anim_selected))
        StartDrag();
}

// A press on a hand in one of the views, unless it was what ended the drag on the pad.
int Press(double x, double y) {
    if (positionCreator.wasDragEnded || !TakeHand(x, y, anim_selected)) return 0;
    RememberPose();
    return 1;
}

void Drop() {
    if (!handViews.isDragging) return;
    DropHand();
    ForgetUnchangedPose();
}

int TurnWheel(int clicks) {
    if (handViews.isDragging) {
        MoveHandAway(clicks);
        return 1;
    }
    if (!isChannel(isSelectedAnimStart)) return 0;
    structAnim &channel = anim[static_cast<size_t>(isSelectedAnimStart)];
    AnimInitYdrfValue += static_cast<float>(clicks) * UnitsPerPixel(channel);
    SetAxis(channel, AxisY, AnimInitYdrfValue);
    return 1;
}

void DrawCursorPlace() {
    if (isChannel(isSelectedAnimStart) || handViews.isDragging) return;
    std::string text = int2string(CursorXnow - EditorPanel.Place().left);
    float white[] = {1.0F, 1.0F, 1.0F};
    XPLMDrawString(white, CursorXnow + CursorTextAway, CursorYnow + CursorTextAway, text.data(), nullptr,
                   xplmFont_Basic);
}

void DrawBelow() {
    DrawBelowCreatorTools();
    EditorPanel_ExternalDraw();
}

void BuildPanel() {
    EditorPanel.Create("Velmora Fennic Position Creator", PanelSide, PanelSide);
    EditorPanel.AddTexture(LeftHandPlace.x, LeftHandPlace.y, png_btn_hand_l, 1, 1.0F, 0);
    EditorPanel.AddTexture(BodyPlace.x, BodyPlace.y, png_btn_body, 1, 1.0F, 0);
    EditorPanel.AddTexture(RightHandPlace.x, RightHandPlace.y, png_btn_hand_r, 1, 1.0F, 0);
    EditorPanel.SetDrawFunction(DrawBelow);
    EditorPanel.SetOverlayFunction(DrawCursorPlace);
    EditorPanel.SetMouseHandlerFunction(EditorPanel_ExternalMouseHandler);
    EditorPanel.SetPadFunction(ClickPad);
    EditorPanel.SetWheelFunction(TurnWheel);
    EditorPanel.SetDragFunctions(Press, DragHand, Drop);
    EditorPanel.SetBoxFunction(EndTypingInCreator);
    for (int channel = 0; channel < ButtonCount; channel++)
        b[channel] = EditorPanel.AddButton(0, ButtonPlaces[channel].x, ButtonPlaces[channel].y, png_btn_8px,
                                           png_btn_8px, 1, 1, 0, 1.0F, 0, 0);
    box_PositionName = EditorPanel.AddBox(BoxPlace.x, BoxPlace.y, BoxWidth, BoxHeight, "new", fnt_Main,
                                          ColourWhite, ColourBlack, LongestName, 0);
    EditorPanel.texts.push_back({BoxLabelPlace.x, BoxLabelPlace.y, "Name", fnt_Main, ColourWhite});
    EditorPanel.texts.push_back({ChannelLabelPlace.x, ChannelLabelPlace.y, "", fnt_Main, ColourYellow});
    AddCreatorTools();
    RefreshCreatorTools();
}

// The channel's name tells the user more than a dot among 47.
void ShowSelectedName() {
    if (EditorPanel.texts.empty()) return;
    EditorPanel.texts[ChannelLabel].text =
        isChannel(anim_selected) ? anim[static_cast<size_t>(anim_selected)].name : "";
}

void Drag() {
    structAnim &channel = anim[static_cast<size_t>(isSelectedAnimStart)];
    const float k = UnitsPerPixel(channel);
    SetAxis(channel, AxisZ, static_cast<float>(MouseInitX - CursorXnow) * k + AnimInitZdrfValue);
    SetAxis(channel, AxisX, static_cast<float>(MouseInitY - CursorYnow) * k + AnimInitXdrfValue);
}

} // namespace

void EditorPanel_Create() {
    if (!EditorPanel.window) {
        EditorPanel.Delete();
        BuildPanel();
    } else if (!EditorPanel.isShow()) {
        XPLMSetWindowIsVisible(EditorPanel.window, 1);
        EditorPanel.redraw = 1;
    }
}

void EditorPanel_ExternalDraw() {
    const double lineWidth = 1.0, opaque = 1.0;
    DrawLineCT(128, 128, 384, 128, ColourGreen, lineWidth, opaque);
    DrawLineCT(256, 0, 256, 256, ColourGreen, lineWidth, opaque);
    DrawRestangleCT(128, 0, 384, 256, ColourGreen, lineWidth, opaque);
    DrawRestangleCT(192, 64, 320, 192, ColourGreen, lineWidth, opaque);
}

void EditorPanel_ExternalMouseHandler() {
    if (EditorPanel.clickedButton < 0) return;
    EditorPanel.redraw = 1;
    if (isSelectedAnimStart >= 0 && EditorPanel.clickedButton > b[btn_XYZ]) {
        EndDrag(); // as a click anywhere beside the channels does
        return;
    }
    if (ClickCreatorTool(EditorPanel.clickedButton)) {
        RefreshCreatorTools();
        return;
    }
    EditorPanel.UnselectButtons();
    for (int channel = 0; channel < ButtonCount; channel++) {
        if (b[channel] != EditorPanel.clickedButton) continue;
        EditorPanel.buttons[static_cast<size_t>(b[channel])].selected = 1;
        anim_selected = channel;
        ShowSelectedName();
        TellInCreator("");
        break;
    }
    RefreshCreatorTools();
}

void EditorPanel_Reposition() {
    widgetVR_class &panel = EditorPanel;
    if (!panel.window) return;
    panel.ChangeOrigSize(StripWidth, StripHeight);
    XPLMSetWindowPositioningMode(panel.window, panel.isVr ? xplm_WindowVR : xplm_WindowPositionFree, -1);
    if (!panel.isVr)
        XPLMSetWindowGeometry(panel.window, StripPlace, StripPlace + panel.currentHeight,
                              StripPlace + panel.currentWidth, StripPlace);
    panel.ChangeOrigSize(StripWidth, StripHeight);
    panel.redraw = 1;
}

void DrawPositionCreator() {
    if (!EditorPanel.isShow()) {
        EndDrag(); // closed in the middle of a drag: the mouse is free again
        Drop();
        return;
    }
    const bool isOnMonitor = EditorPanel.isOnMonitor();
    if (isOnMonitor != positionCreator.wasOnMonitor) { // places mean something else now
        EndDrag();
        Drop();
    }
    positionCreator.wasOnMonitor = isOnMonitor;
    ReadMousePlace(CursorXnow, CursorYnow);
    if (handViews.isDragging) {
        FollowHand();
        TellInCreator(HandReport());
    }
    if (isChannel(isSelectedAnimStart))
        Drag();
    else if (isOnMonitor)
        DrawCursorPlace();
    RefreshCreatorTools();
}

void ReInitPositionCreator() {
    anim_selected = -1;
    isSelectedAnimStart = -1;
    handViews.isDragging = false;
    MouseInitX = MouseInitY = 0;
    CursorXnow = CursorYnow = 0;
    AnimInitXdrfValue = AnimInitYdrfValue = AnimInitZdrfValue = 0.0F;
    EditorPanel.UnselectButtons();
    ShowSelectedName();
}

void RememberPoseInCreator() {
    if (EditorPanel.isShow()) RememberPose();
}

void ResetPositionCreator() {
    EditorPanel.Delete();
    ResetCreatorTools();
    ResetHandViews();
    ResetPoseEdits();
    MakeFresh(positionCreator);
}
