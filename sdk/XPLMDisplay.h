/* Drawing phases, windows, keyboard and mouse. Coordinates are boxels, y up. */
#ifndef FENNIC_SDK_XPLMDISPLAY_H
#define FENNIC_SDK_XPLMDISPLAY_H

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef int XPLMDrawingPhase;
typedef int (*XPLMDrawCallback_f)(XPLMDrawingPhase inPhase, int inIsBefore, void *inRefcon);
typedef void *XPLMWindowID;
typedef void (*XPLMDrawWindow_f)(XPLMWindowID inWindowID, void *inRefcon);
typedef void (*XPLMHandleKey_f)(XPLMWindowID inWindowID, char inKey, XPLMKeyFlags inFlags, char inVirtualKey,
                                void *inRefcon, int losingFocus);
typedef int XPLMMouseStatus;
typedef int (*XPLMHandleMouseClick_f)(XPLMWindowID inWindowID, int x, int y, XPLMMouseStatus inMouse,
                                      void *inRefcon);
typedef int XPLMCursorStatus;
typedef XPLMCursorStatus (*XPLMHandleCursor_f)(XPLMWindowID inWindowID, int x, int y, void *inRefcon);
typedef int (*XPLMHandleMouseWheel_f)(XPLMWindowID inWindowID, int x, int y, int wheel, int clicks,
                                      void *inRefcon);
typedef int XPLMWindowLayer;
typedef int XPLMWindowDecoration;
typedef int XPLMWindowPositioningMode;
typedef int (*XPLMKeySniffer_f)(char inChar, XPLMKeyFlags inFlags, char inVirtualKey, void *inRefcon);

/* Drawing phases. */
enum {
    xplm_Phase_Modern3D = 31,
    xplm_Phase_FirstCockpit = 35,
    xplm_Phase_Panel = 40,
    xplm_Phase_Gauges = 45,
    xplm_Phase_Window = 50,
    xplm_Phase_LastCockpit = 55,
};
/* Mouse status. */
enum {
    xplm_MouseDown = 1,
    xplm_MouseDrag = 2,
    xplm_MouseUp = 3,
};
/* Cursor status. */
enum {
    xplm_CursorDefault = 0,
    xplm_CursorHidden = 1,
    xplm_CursorArrow = 2,
    xplm_CursorCustom = 3,
};
/* Window layers, lowest first. */
enum {
    xplm_WindowLayerFlightOverlay = 0,
    xplm_WindowLayerFloatingWindows = 1,
    xplm_WindowLayerModal = 2,
    xplm_WindowLayerGrowlNotifications = 3,
};
/* Window decorations. */
enum {
    xplm_WindowDecorationNone = 0,
    xplm_WindowDecorationRoundRectangle = 1,
    xplm_WindowDecorationSelfDecorated = 2,
    xplm_WindowDecorationSelfDecoratedResizable = 3,
};
/* Window positioning modes. */
enum {
    xplm_WindowPositionFree = 0,
    xplm_WindowCenterOnMonitor = 1,
    xplm_WindowFullScreenOnMonitor = 2,
    xplm_WindowFullScreenOnAllMonitors = 3,
    xplm_WindowPopOut = 4,
    xplm_WindowVR = 5,
};

/* What XPLMCreateWindowEx is given. structSize is the size that the caller compiled: the
   simulator takes fields past it as absent. */
typedef struct {
    int structSize;
    int left;
    int top;
    int right;
    int bottom;
    int visible;
    XPLMDrawWindow_f drawWindowFunc;
    XPLMHandleMouseClick_f handleMouseClickFunc;
    XPLMHandleKey_f handleKeyFunc;
    XPLMHandleCursor_f handleCursorFunc;
    XPLMHandleMouseWheel_f handleMouseWheelFunc;
    void *refcon;
    XPLMWindowDecoration decorateAsFloatingWindow;
    XPLMWindowLayer layer;
    XPLMHandleMouseClick_f handleRightClickFunc;
} XPLMCreateWindow_t;

XPLM_API int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                      int inWantsBefore, void *inRefcon);
XPLM_API int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                        int inWantsBefore, void *inRefcon);
XPLM_API XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t *inParams);
XPLM_API XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                                       XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                                       XPLMHandleMouseClick_f inMouseCallback, void *inRefcon);
XPLM_API void XPLMDestroyWindow(XPLMWindowID inWindowID);
XPLM_API void XPLMGetScreenSize(int *outWidth, int *outHeight);
XPLM_API void XPLMGetScreenBoundsGlobal(int *outLeft, int *outTop, int *outRight, int *outBottom);
XPLM_API void XPLMGetMouseLocation(int *outX, int *outY);
XPLM_API void XPLMGetMouseLocationGlobal(int *outX, int *outY);
XPLM_API void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int *outLeft, int *outTop, int *outRight,
                                    int *outBottom);
XPLM_API void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight,
                                    int inBottom);
XPLM_API void XPLMGetWindowGeometryOS(XPLMWindowID inWindowID, int *outLeft, int *outTop, int *outRight,
                                      int *outBottom);
XPLM_API void XPLMSetWindowGeometryOS(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight,
                                      int inBottom);
XPLM_API void XPLMGetWindowGeometryVR(XPLMWindowID inWindowID, int *outWidthBoxels, int *outHeightBoxels);
XPLM_API void XPLMSetWindowGeometryVR(XPLMWindowID inWindowID, int widthBoxels, int heightBoxels);
XPLM_API int XPLMGetWindowIsVisible(XPLMWindowID inWindowID);
XPLM_API void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible);
XPLM_API int XPLMWindowIsPoppedOut(XPLMWindowID inWindowID);
XPLM_API int XPLMWindowIsInVR(XPLMWindowID inWindowID);
XPLM_API void XPLMSetWindowGravity(XPLMWindowID inWindowID, float inLeftGravity, float inTopGravity,
                                   float inRightGravity, float inBottomGravity);
XPLM_API void XPLMSetWindowResizingLimits(XPLMWindowID inWindowID, int inMinWidthBoxels,
                                          int inMinHeightBoxels, int inMaxWidthBoxels, int inMaxHeightBoxels);
XPLM_API void XPLMSetWindowPositioningMode(XPLMWindowID inWindowID,
                                           XPLMWindowPositioningMode inPositioningMode, int inMonitorIndex);
XPLM_API void XPLMSetWindowTitle(XPLMWindowID inWindowID, const char *inWindowTitle);
XPLM_API void *XPLMGetWindowRefCon(XPLMWindowID inWindowID);
XPLM_API void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void *inRefcon);
XPLM_API void XPLMTakeKeyboardFocus(XPLMWindowID inWindow);
XPLM_API int XPLMHasKeyboardFocus(XPLMWindowID inWindow);
XPLM_API void XPLMBringWindowToFront(XPLMWindowID inWindow);
XPLM_API int XPLMIsWindowInFront(XPLMWindowID inWindow);
XPLM_API int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void *inRefcon);
XPLM_API int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void *inRefcon);

typedef void (*XPLMReceiveMonitorBoundsGlobal_f)(int inMonitorIndex, int inLeftBx, int inTopBx, int inRightBx,
                                                 int inBottomBx, void *inRefcon);
typedef void (*XPLMReceiveMonitorBoundsOS_f)(int inMonitorIndex, int inLeftPx, int inTopPx, int inRightPx,
                                             int inBottomPx, void *inRefcon);
typedef void (*XPLMHotKey_f)(void *inRefcon);
typedef void *XPLMHotKeyID;

XPLM_API void XPLMGetAllMonitorBoundsGlobal(XPLMReceiveMonitorBoundsGlobal_f inMonitorBoundsCallback,
                                            void *inRefcon);
XPLM_API void XPLMGetAllMonitorBoundsOS(XPLMReceiveMonitorBoundsOS_f inMonitorBoundsCallback, void *inRefcon);
XPLM_API XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char *inDescription,
                                         XPLMHotKey_f inCallback, void *inRefcon);
XPLM_API void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey);
XPLM_API int XPLMCountHotKeys(void);
XPLM_API XPLMHotKeyID XPLMGetNthHotKey(int inIndex);
XPLM_API void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char *outVirtualKey, XPLMKeyFlags *outFlags,
                                char *outDescription, XPLMPluginID *outPlugin);
XPLM_API void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags);

#ifdef __cplusplus
}
#endif

#endif
