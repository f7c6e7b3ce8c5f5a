// A small panel toolkit: one floating window that works alike on the monitor and in VR. The panel has a
// logical
// ("reference") size, whatever size the user gave its window. It is rendered into an offscreen buffer with as
// many pixels as the window has on the screen, so that it is sharp, and the window shows that. Panel
// coordinates: origin at the upper left, x right, y down, in reference units; an item at (x, y) of size w × h
// covers x < px < x + w and y - h < py < y.
//
// The simulator holds a panel's address from Create to Delete: a panel must not move.
#pragma once

#include <string>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMUtilities.h"
#include "gfx/offscreen.h"

struct VR_texture_struct {
    int x = 0, y = 0;
    float alpha = 1.0F;
    int width = 0, height = 0; // the picture's
    int texture = 0;           // id (gfx/textures.h)
    int visible = 1;
    int owner = 0; // the owner's
};

struct VR_btn_struct {
    int style = 0; // 1: a picture of its own for the selected state; else a tint and a frame show it
    int x = 0, y = 0;
    float alpha = 1.0F;
    int width = 0, height = 0;
    int normalTexture = 0, selectedTexture = 0;
    int visible = 1, enabled = 1; // others take no clicks; an invisible one is not drawn
    int selected = 0;
    int c = 0, d = 0; // the owner's
    // A plate: a button without pictures for its states. It has a caption, and above it perhaps a picture.
    bool isPlate = false;
    std::string caption;
    int font = 0;
    int picture = -1; // texture id
    bool isPictureMirrored = false;
};

const int BoxTextMargin = 4; // at both ends of a box

struct VR_box_struct {
    int x = 0, y = 0;
    std::string text;
    int font = 0;
    int maxLength = 0; // characters that can be typed
    int width = 0, height = 0;
    int focused = 0; // 1: has the keyboard
    int page = 0;
    int cursor = 0;                     // place before which the next character goes
    int scroll = 0;                     // first character shown
    int background = 0, textColour = 0; // palette colours
    int enabled = 1;                    // another takes no clicks, and is grey
    bool isReplacedAtOnce = false; // taking the keyboard chooses all of the text: the first key replaces it
    bool isAllChosen = false;
};

// What ends the typing into a box: return and tab take it, escape does not, and a click elsewhere, or the
// simulator, takes the keyboard away.
enum class BoxEnd { Taken, Dropped, Left };

struct VR_text_struct {
    int x = 0, y = 0;
    std::string text;
    int font = 0;
    int colour = 0; // palette colour
};

// A black frame that darkens what is below it.
struct VR_rectangle_struct {
    int x = 0, y = 0, width = 0, height = 0;
};

// Where a window is drawn and takes its clicks, boxels: of the screen, or in VR of the window itself.
struct WindowPlace {
    int left = 0, top = 0, right = 0, bottom = 0;
};

class widgetVR_class {
public:
    XPLMWindowID window = nullptr;
    int offsetX = 50, offsetY = 50; // of the window's lower left corner, from the screen's
    int left = 0, right = 0, top = 0, bottom = 0;
    int referenceWidth = 0, referenceHeight = 0;
    int currentWidth = 0, currentHeight = 0; // on the monitor, boxels
    int vrWidth = 0, vrHeight = 0;
    float minimumScale = 0.5F, maximumScale = 3.0F; // of the window's width, times the reference width
    int isVr = 0;
    int mouseX = 0, mouseY = 0; // where the window was last told that the mouse is, in its own boxels
    XPLMDataRef vrDataref = nullptr;
    std::vector<VR_text_struct> texts;
    std::vector<VR_box_struct> boxes;
    std::vector<VR_rectangle_struct> rectangles;
    std::vector<VR_btn_struct> buttons;
    std::vector<VR_texture_struct> textures;
    int clickedButton = -1; // the one that the last click hit
    FBO_class buffer;
    int redraw = 0;
    int page = 0;                             // whose boxes are shown
    XPLMCommandRef showHideCommand = nullptr; // its end closes the window; to be set before Create

    // Opens the window, width × height being the reference size. Not twice without a Delete in between. The
    // buffer follows with the next drawing.
    void Create(const std::string &title, int width, int height);

    // Takes everything back from the simulator; the panel is as new, and empty. Does nothing to a panel that
    // was not created.
    void Delete();

    // 1 when the window exists and is visible.
    int isShow() const;

    // On the monitor, among the simulator's windows: there the screen's mouse is the window's. In VR and in a
    // window of the system only mouseX and mouseY tell where it is.
    bool isOnMonitor() const;

    WindowPlace Place() const;

    // Each returns the item's index. visible and enabled are 0 or 1, alpha 0 to 1, owner, c and d the
    // owner's own.
    int AddTexture(int x, int y, int textureId, int visible, float alpha, int owner);
    int AddButton(int style, int x, int y, int normalTexture, int selectedTexture, int visible, int enabled,
                  int selected, float alpha, int c, int d);
    int AddBox(int x, int y, int width, int height, const std::string &text, int font, int background,
               int textColour, int maxLength, int page);

    int AddPlate(int x, int y, int width, int height, const std::string &caption, int font);

    // Replaces a box's text; the cursor goes behind it. Nothing for an index without a box.
    void SetBoxText(int index, const std::string &text);

    // Called first whenever the panel is rendered: one unit per pixel, y up, (0, 0) in the middle of the
    // lower left pixel, which is right for lines.
    void SetDrawFunction(void (*function)());
    // Called by the window's drawing, over the panel, in the boxels of Place(), while it is not on the
    // monitor.
    void SetOverlayFunction(void (*function)());
    // Called after each click, with clickedButton set.
    void SetMouseHandlerFunction(void (*function)());
    // Called with a click that hit no button, in panel coordinates, before the mouse handler.
    void SetPadFunction(void (*function)(int x, int y));
    // Asked with a press that hit neither button nor box, after the pad; where it returns 1, the drag is
    // called with the mouse's places until it is let go, and then the drop. Places between whole ones count,
    // too.
    void SetDragFunctions(int (*press)(double x, double y), void (*drag)(double x, double y), void (*drop)());
    // Called when the typing into a box ends; returns 0 for a text that cannot be taken: then the box keeps
    // the keyboard where return or tab was pressed.
    void SetBoxFunction(int (*function)(int box, BoxEnd end));
    // The box that has the keyboard, -1 for none.
    int FocusedBoxIndex() const;
    // Asked first when the wheel turns; returns 1 when it took the clicks, so that the panel keeps its size.
    void SetWheelFunction(int (*function)(int clicks));
    void UnselectButtons();

    // A new reference size; the window keeps its width and takes the new shape.
    void ChangeOrigSize(int width, int height);

private:
    bool isCreated = false;
    int bufferTexture = -1;                // id
    int bufferWidth = 0, bufferHeight = 0; // wanted at the next drawing, pixels
    int triedWidth = 0, triedHeight = 0;   // of the buffer that was made, or could not be
    bool isDragging = false;
    void (*drawFunction)() = nullptr;
    void (*overlayFunction)() = nullptr;
    void (*mouseHandler)() = nullptr;
    void (*padFunction)(int x, int y) = nullptr;
    int (*wheelFunction)(int clicks) = nullptr;
    int (*pressFunction)(double x, double y) = nullptr;
    void (*dragFunction)(double x, double y) = nullptr;
    void (*dropFunction)() = nullptr;
    int (*boxFunction)(int box, BoxEnd end) = nullptr;

    void get_default_window_pos();
    void OpenWindow();
    void SetResizingLimits();
    void SetPositioningMode();
    void ReadVrWidth();
    int WidthWithinLimits(float width) const;
    int HeightOfWidth(int width) const;
    void FollowVr();
    void ResizeOnMonitor(bool keepsMiddle);
    void ResizeInVr();
    void Scale(int clicks);
    void FollowMouse(int x, int y);
    void Click(int x, int y);
    void Focus(VR_box_struct &box);
    void FocusBoxAt(int x, int y);
    void FocusNextBox();
    VR_box_struct *FocusedBox();
    bool EndTyping(BoxEnd end);
    void LoseFocus();
    void PressKeyInBox(VR_box_struct &box, char key);
    void WantBuffer(int width, int height);
    bool ProvideBuffer();
    void RenderIntoBuffer();
    void DrawBox(const VR_box_struct &box) const;
    void DrawButtons() const;
    void DrawPlate(const VR_btn_struct &plate) const;

    static void Draw(XPLMWindowID window, void *panel);
    static int MouseL_handler(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void *panel);
    static int MouseR_handler(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void *panel);
    static int MouseW_handler(XPLMWindowID window, int x, int y, int wheel, int clicks, void *panel);
    static void Keyboard_handler(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey,
                                 void *panel, int isLosingFocus);
    static XPLMCursorStatus CursorStatus_handler(XPLMWindowID window, int x, int y, void *panel);
    static int DrawFBO(XPLMDrawingPhase phase, int isBefore, void *panel);
    static int CommandShowHideHandler(XPLMCommandRef command, XPLMCommandPhase phase, void *panel);
};
