// The items are added in one order and found again by their places in it. What they show is compared before
// it is set, so that a frame in which nothing changes costs no memory.
#include "figure/position_creator_tools.h"

#include <cmath>
#include <string_view>
#include <vector>

#include "figure/channels.h"
#include "figure/hand_views.h"
#include "figure/position_creator_state.h"
#include "figure/positions.h"
#include "gfx/drawing.h"
#include "gfx/fonts.h"
#include "gfx/textures.h"
#include "util/files.h"
#include "util/make_fresh.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

CreatorToolsState creatorTools;

namespace {

// ---- Places, in the panel's coordinates ----

const int ColumnX = 384, PadTop = 256, BesidePad = 128; // the right quarter; what is left of the pad
const int PanelSize = 512;
const int NumberTop = 20, NumberPitch = 34, NumberX = 404, NumberWidth = 54, NumberHeight = 20;
const int BarLeft = 436, BarRight = 474, BarBelow = 27; // of a number's limits; below the number's top
const int MostInNumber = 9;
const double LargestNumber = 100000; // where there are no limits
const int PresetColumns = 2, PresetRows = 4, PresetsShown = PresetColumns * PresetRows;
const int PresetX = 388, PresetTop = 357, PresetWidth = 59, PresetHeight = 37, PresetPitchX = 61,
          PresetPitchY = 38;
const int MessageLines = 6, MessageTop = 426, MessagePitch = 14, MessageWidth = 122;

// ---- Items ----

enum Plate {
    Save,
    Undo,
    Redo,
    ScopeJoint,
    ScopeLimb,
    ScopeAll,
    Reset,
    Mirror,
    Copy,
    LessX, // less and more for each axis
    PointOfHand = LessX + 2 * AxisCount,
    LeftPresets,
    RightPresets,
    MorePresets,
    FirstPreset,
    PlateCount = FirstPreset + PresetsShown
};

struct PlatePlace {
    int x, y, width, height;
    const char *caption;
};
const PlatePlace PlatePlaces[] = {
    {76, 277, 44, 16, "Save"},  {2, 370, 58, 18, "Undo"},    {62, 370, 58, 18, "Redo"},
    {2, 394, 38, 18, "Joint"},  {42, 394, 38, 18, "Limb"},   {82, 394, 38, 18, "All"},
    {2, 415, 38, 18, "Reset"},  {42, 415, 38, 18, "Mirror"}, {82, 415, 38, 18, "Copy"},
    {462, 40, 22, 20, "-"},     {486, 40, 22, 20, "+"},      {462, 74, 22, 20, "-"},
    {486, 74, 22, 20, "+"},     {462, 108, 22, 20, "-"},     {486, 108, 22, 20, "+"},
    {462, 142, 46, 14, "Palm"}, {440, 356, 32, 14, "Left"},  {474, 356, 34, 14, "Right"},
    {388, 356, 50, 14, "More"}};

// Among the panel's texts.
enum Label {
    Heading,
    AxisNames,
    LowLimits = AxisNames + AxisCount,
    HighLimits = LowLimits + AxisCount,
    HandHeading = HighLimits + AxisCount,
    PresetHeading,
    Part,
    Messages,
    LabelCount = Messages + MessageLines
};

struct Items {
    int font = 0;       // the small one
    int firstPlate = 0; // among the panel's buttons
    int firstBox = 0;   // of the numbers
    int firstLabel = 0; // among its texts
};
Items items; // of the panel that is built; nothing without one

VR_btn_struct &PlateAt(int plate) {
    return EditorPanel.buttons[static_cast<size_t>(items.firstPlate + plate)];
}

VR_box_struct &NumberAt(int axis) {
    return EditorPanel.boxes[static_cast<size_t>(items.firstBox + axis)];
}

VR_text_struct &LabelAt(int label) {
    return EditorPanel.texts[static_cast<size_t>(items.firstLabel + label)];
}

void SetText(std::string &shown, std::string_view text) {
    if (shown != text) shown = text;
}

void AddLabel(int x, int y, int font, int colour, const char *text = "") {
    EditorPanel.texts.push_back({x, y, text, font, colour});
}

// ---- The chosen channel ----

bool isChosen() {
    return anim_selected >= 0 && static_cast<size_t>(anim_selected) < anim.size();
}

structAnim &ChosenChannel() {
    return anim[static_cast<size_t>(anim_selected)];
}

bool isOffset() {
    return ChosenChannel().name == FigureOffsetName;
}

// False for what has none, or none that is known.
bool FindLimits(int axis, double &low, double &high) {
    if (!isChosen() || isOffset() || !isFigureOfRig()) return false;
    const rig::Joint &joint = BodyInUse().At(anim_selected);
    low = joint.low[axis];
    high = joint.high[axis];
    return true;
}

// A tenth of a degree, or a millimetre.
std::string NumberText(float value, bool isMetres) {
    if (!std::isfinite(value)) return "none";
    const double unit = isMetres ? 1000 : 10;
    const double rounded = std::round(static_cast<double>(value) * unit) / unit;
    return ShortDecimal(rounded + 0.0); // no negative zero
}

const char *const AxisLetters[AxisCount] = {"x", "y", "z"};

std::string LimitsText(int axis, double low, double high) {
    return std::string(AxisLetters[axis]) + " goes from " + ShortDecimal(low) + " to " + ShortDecimal(high);
}

// What is typed by hand, with a point or a comma. Empty, or why it cannot be taken.
std::string ReadTyped(const std::string &text, int axis, double &value) {
    if (text.empty()) return "No number was typed";
    if (!ParseDouble(ReplaceString(text, ",", "."), value)) return "No number: " + text;
    if (std::abs(value) > LargestNumber) return "Too large: " + text;
    double low = 0, high = 0;
    const bool isOutside = FindLimits(axis, low, high) && (value < low || value > high);
    return isOutside ? LimitsText(axis, low, high) : "";
}

void ChangeNumber(int axis, double value) {
    RememberPose();
    SetChannelValue(anim_selected, axis, static_cast<float>(value));
    ForgetUnchangedPose();
    TellInCreator("");
}

void Step(int axis, int steps) {
    const float value = ChosenChannel().Shown(axis);
    double wanted = static_cast<double>(value) + steps * (isOffset() ? 0.01 : 1.0), low = 0, high = 0;
    wanted = std::round(wanted * 1000) / 1000;
    const bool isLimited = FindLimits(axis, low, high);
    const bool isBeyond = isLimited && (steps > 0 ? wanted > high : wanted < low);
    ChangeNumber(axis, isBeyond ? (steps > 0 ? high : low) : wanted);
    if (isBeyond) TellInCreator(LimitsText(axis, low, high), true);
}

// ---- Presets ----

const std::string_view PresetExtension = ".txt"; // the folder's list holds what else lies there, too

bool isOfHand(std::string_view file, bool isRight) {
    return file.ends_with(PresetExtension) && file.starts_with("l_") != isRight;
}

// As the list shows it: without side and extension.
std::string_view PresetName(std::string_view file) {
    if (file.starts_with("l_") || file.starts_with("r_")) file.remove_prefix(2);
    if (file.ends_with(PresetExtension)) file.remove_suffix(PresetExtension.size());
    return file;
}

std::string PictureName(std::string_view preset) {
    return "preset_" + std::string(preset);
}

// The n-th of the hand whose presets are shown, nullptr behind the last.
const std::string *PresetOfHand(int n) {
    for (const std::string &file : presetList)
        if (isOfHand(file, creatorTools.isRightHand) && n-- == 0) return &file;
    return nullptr;
}

int PresetPages() {
    int count = 0;
    while (PresetOfHand(count)) count++;
    return std::max(1, (count + PresetsShown - 1) / PresetsShown);
}

void LoadPresetPictures() {
    for (const std::string &file : presetList) {
        const std::string name = PictureName(PresetName(file));
        if (!texturesMap.contains(name) && isFileExistString(WhatPluginPath() + "data/png/" + name + ".png"))
            LoadTexture(name, PanelPictureDetail);
    }
}

void ApplyPreset(int plate) {
    const std::string *file = PresetOfHand(creatorTools.presetPage * PresetsShown + plate);
    if (!file) return;
    RememberPose();
    LoadPresetFromFile(*file);
    TellInCreator(std::string(creatorTools.isRightHand ? "Right hand: " : "Left hand: ")
                  + std::string(PresetName(*file)));
}

void ShowPresets() {
    const int pages = PresetPages();
    creatorTools.presetPage %= pages;
    PlateAt(LeftPresets).selected = !creatorTools.isRightHand;
    PlateAt(RightPresets).selected = creatorTools.isRightHand;
    PlateAt(MorePresets).visible = pages > 1;
    SetText(LabelAt(PresetHeading).text, pages > 1 ? "" : "Presets");
    for (int i = 0; i < PresetsShown; i++) {
        VR_btn_struct &plate = PlateAt(FirstPreset + i);
        const std::string *file = PresetOfHand(creatorTools.presetPage * PresetsShown + i);
        plate.visible = file != nullptr;
        plate.isPictureMirrored = !creatorTools.isRightHand;
        if (!file || plate.caption == PresetName(*file)) continue;
        plate.caption = PresetName(*file);
        const auto picture = texturesMap.find(PictureName(plate.caption));
        plate.picture = picture == texturesMap.end() ? -1 : picture->second;
    }
}

// ---- Words ----

// As many words as fit into the line, taken from the text; a longer word alone.
std::string_view TakeLine(std::string_view &text) {
    size_t end = 0;
    for (size_t next = 0; next != std::string_view::npos && end < text.size();) {
        next = text.find(' ', end + 1);
        const size_t wordEnd = std::min(next, text.size());
        if (end > 0 && LenFontIdS(items.font, text.substr(0, wordEnd)) > MessageWidth) break;
        end = wordEnd;
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(text.size(), end + 1));
    return line;
}

void ShowMessage() {
    const bool isMessage = !creatorTools.message.empty();
    std::string_view text = creatorTools.message;
    if (!isMessage)
        text = isChosen() ? "Click the pad and move the mouse, or type a number."
                          : "Click a joint, or drag a hand in the views on the right.";
    for (int i = 0; i < MessageLines; i++) {
        VR_text_struct &line = LabelAt(Messages + i);
        SetText(line.text, TakeLine(text));
        line.colour = isMessage ? creatorTools.messageColour : ColourLightGrey;
    }
}

// ---- What changes ----

void Change(void (*change)(PoseScope scope, int channel)) {
    RememberPose();
    change(creatorTools.scope, anim_selected);
    ForgetUnchangedPose();
    TellInCreator("");
}

void ShowNumbers() {
    const bool isOne = isChosen();
    SetText(LabelAt(Heading).text, !isOne ? "Values" : isOffset() ? "Metres" : "Degrees");
    for (int axis = 0; axis < AxisCount; axis++) {
        VR_box_struct &box = NumberAt(axis);
        box.enabled = isOne;
        PlateAt(LessX + 2 * axis).enabled = PlateAt(LessX + 2 * axis + 1).enabled = isOne;
        if (!isOne || !box.focused) {
            const std::string text = isOne ? NumberText(ChosenChannel().Shown(axis), isOffset()) : "";
            if (box.text != text) EditorPanel.SetBoxText(items.firstBox + axis, text);
            if (creatorTools.typedIn == axis) creatorTools.typedIn = -1;
        } else if (creatorTools.typedIn != axis) {
            creatorTools.typedIn = axis;
            creatorTools.typedOver = box.text;
        }
        double low = 0, high = 0;
        const bool isLimited = FindLimits(axis, low, high);
        SetText(LabelAt(LowLimits + axis).text, isLimited ? ShortDecimal(low) : "");
        VR_text_struct &highest = LabelAt(HighLimits + axis);
        SetText(highest.text, isLimited ? ShortDecimal(high) : "");
        highest.x = PanelSize - 4 - LenFontIdS(items.font, highest.text);
    }
}

// The value between its limits; one beyond is shown at its end, in another colour.
void DrawLimitBars() {
    for (int axis = 0; axis < AxisCount; axis++) {
        double low = 0, high = 0;
        if (!FindLimits(axis, low, high)) continue;
        const double y = PanelSize - (NumberTop + axis * NumberPitch + BarBelow);
        const double value = ChosenChannel().Shown(axis);
        const double share = std::clamp((value - low) / (high - low), 0.0, 1.0);
        const bool isAtEnd = value <= low || value >= high;
        const double x = BarLeft + share * (BarRight - BarLeft);
        FillCapsuleRGBT({BarLeft, y, 1.2, BarRight, y, 1.2}, 0.35, 0.42, 0.50, 1.0);
        FillCapsuleRGBT({x, y, 3, x, y, 3}, isAtEnd ? 1.0 : 0.84, isAtEnd ? 0.6 : 0.70, 0.37, 1.0);
    }
}

void FollowChosenChannel() {
    if (creatorTools.shownFor == anim_selected) return;
    creatorTools.shownFor = anim_selected;
    LabelAt(Part).text = isChosen() && isFigureOfRig() ? PartName(anim_selected) : "";
    if (OtherSide(anim_selected) != anim_selected)
        creatorTools.isRightHand = OtherSide(anim_selected) < anim_selected;
}

} // namespace

void AddCreatorTools() {
    widgetVR_class &panel = EditorPanel;
    items.font = ProvidePanelFonts();
    LoadPresetPictures();
    items.firstPlate = static_cast<int>(panel.buttons.size());
    for (const PlatePlace &place : PlatePlaces)
        panel.AddPlate(place.x, place.y, place.width, place.height, place.caption, items.font);
    for (int i = 0; i < PresetsShown; i++)
        panel.AddPlate(PresetX + i % PresetColumns * PresetPitchX,
                       PresetTop + PresetHeight + i / PresetColumns * PresetPitchY, PresetWidth, PresetHeight,
                       "", items.font);
    items.firstBox = static_cast<int>(panel.boxes.size());
    for (int axis = 0; axis < AxisCount; axis++) {
        const int box = panel.AddBox(NumberX, NumberTop + axis * NumberPitch + NumberHeight, NumberWidth,
                                     NumberHeight, "", fnt_Main, ColourWhite, ColourBlack, MostInNumber, 0);
        panel.boxes[static_cast<size_t>(box)].isReplacedAtOnce = true;
    }
    items.firstLabel = static_cast<int>(panel.texts.size());
    AddLabel(388, 16, items.font, ColourLightGrey);
    for (int axis = 0; axis < AxisCount; axis++)
        AddLabel(390, NumberTop + axis * NumberPitch + 19, fnt_Main, ColourWhite, AxisLetters[axis]);
    for (int end = 0; end < 2; end++)
        for (int axis = 0; axis < AxisCount; axis++)
            AddLabel(NumberX, NumberTop + axis * NumberPitch + 34, items.font, ColourLightGrey);
    AddLabel(388, 142, items.font, ColourLightGrey, "Drag a hand");
    AddLabel(388, 356, items.font, ColourLightGrey);
    AddLabel(2, 346, items.font, ColourWhite);
    for (int line = 0; line < MessageLines; line++)
        AddLabel(2, MessageTop + (line + 1) * MessagePitch, items.font, ColourWhite);
}

void DrawBelowCreatorTools() {
    const double r = 0.106, g = 0.129, b = 0.161; // of the pictures' cards
    FillRestangleRGBT(ColumnX, 0, PanelSize, PanelSize, r, g, b, 1.0);
    FillRestangleRGBT(0, 0, BesidePad, PanelSize - PadTop, r, g, b, 1.0);
    DrawLimitBars();
    DrawHandViews(PanelSize, anim_selected);
}

bool ClickCreatorTool(int button) {
    const int plate = button - items.firstPlate;
    if (plate < 0 || plate >= PlateCount) return false;
    if (plate >= FirstPreset) {
        ApplyPreset(plate - FirstPreset);
        return true;
    }
    if (plate >= LessX && plate < PointOfHand) {
        if (isChosen()) Step((plate - LessX) / 2, (plate - LessX) % 2 == 0 ? -1 : 1);
        return true;
    }
    switch (plate) {
    case Save: SavePositionToFile(); break;
    case Undo: TellInCreator(UndoPose() ? "" : "Nothing to undo"); break;
    case Redo: TellInCreator(RedoPose() ? "" : "Nothing to redo"); break;
    case ScopeJoint: creatorTools.scope = PoseScope::Joint; break;
    case ScopeLimb: creatorTools.scope = PoseScope::Limb; break;
    case ScopeAll: creatorTools.scope = PoseScope::All; break;
    case Reset: Change(ResetPose); break;
    case Mirror: Change(MirrorPose); break;
    case Copy: Change(CopyPoseToOtherSide); break;
    case PointOfHand:
        handViews.point =
            handViews.point == rig::HandPoint::Grip ? rig::HandPoint::Fingertip : rig::HandPoint::Grip;
        break;
    case LeftPresets:
    case RightPresets:
        creatorTools.isRightHand = plate == RightPresets;
        creatorTools.presetPage = 0;
        break;
    default: creatorTools.presetPage++; break;
    }
    return true;
}

int EndTypingInCreator(int box, BoxEnd end) {
    const int axis = box - items.firstBox;
    if (axis < 0 || axis >= AxisCount) return 1;
    const std::string text = NumberAt(axis).text;
    const bool isChanged = creatorTools.typedIn == axis ? text != creatorTools.typedOver : true;
    if (end == BoxEnd::Dropped) TellInCreator("");
    if (end == BoxEnd::Dropped || !isChosen() || !isChanged) return 1;
    double value = 0;
    const std::string refused = ReadTyped(text, axis, value);
    if (!refused.empty()) {
        TellInCreator(refused, true);
        return 0;
    }
    ChangeNumber(axis, value);
    return 1;
}

void RefreshCreatorTools() {
    if (EditorPanel.buttons.empty()) return;
    FollowChosenChannel();
    ShowNumbers();
    ShowPresets();
    ShowMessage();
    const bool isAll = creatorTools.scope == PoseScope::All;
    PlateAt(Undo).enabled = !poseEdits.done.empty();
    PlateAt(Redo).enabled = !poseEdits.undone.empty();
    for (int scope = 0; scope < 3; scope++)
        PlateAt(ScopeJoint + scope).selected = static_cast<int>(creatorTools.scope) == scope;
    PlateAt(Reset).enabled = PlateAt(Mirror).enabled = isAll || isChosen();
    PlateAt(Copy).enabled = isChosen() && OtherSide(anim_selected) != anim_selected;
    SetText(PlateAt(PointOfHand).caption, handViews.point == rig::HandPoint::Grip ? "Palm" : "Finger");
}

std::string GetCurrentPositionName() {
    if (box_PositionName < 0 || static_cast<size_t>(box_PositionName) >= EditorPanel.boxes.size())
        return "new";
    return EditorPanel.boxes[static_cast<size_t>(box_PositionName)].text;
}

void SetCurrentPositionName(const std::string &name) {
    EditorPanel.SetBoxText(box_PositionName, ReplaceString(name, ".txt", ""));
    EditorPanel.redraw = 1;
}

void SavePositionToFile() {
    const std::string name = GetCurrentPositionName();
    if (SavePosition(name))
        TellInCreator("Saved: " + name);
    else
        TellInCreator(
            isSafeFileName(name) ? "Not saved: see the log" : "Not saved: this is no name for a file", true);
}

void TellInCreator(const std::string &message, bool isTrouble) {
    creatorTools.message = message;
    creatorTools.messageColour = isTrouble ? ColourOrange : ColourWhite;
}

void ResetCreatorTools() {
    MakeFresh(creatorTools, items);
}
