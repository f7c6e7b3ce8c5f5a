/* Types, messages, properties and structures that all widgets share. */
#ifndef FENNIC_SDK_XPWIDGET_DEFS_H
#define FENNIC_SDK_XPWIDGET_DEFS_H

#include "XPLMDefs.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define WIDGET_API XPLM_API

typedef void *XPWidgetID;
typedef int XPWidgetPropertyID;
typedef int XPDispatchMode;
typedef int XPWidgetClass;
typedef int XPWidgetMessage;
typedef int (*XPWidgetFunc_t)(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                              intptr_t inParam2);

typedef struct {
    int x;
    int y;
    int button;
    int delta;
} XPMouseState_t;

typedef struct {
    char key;
    XPLMKeyFlags flags;
    char vkey;
} XPKeyState_t;

typedef struct {
    int dx;
    int dy;
    int dwidth;
    int dheight;
} XPWidgetGeometryChange_t;

#define NO_PARENT (-1)
#define PARAM_PARENT (-2)

typedef struct {
    int left;
    int top;
    int right;
    int bottom;
    int visible;
    const char *descriptor;
    int isRoot;
    int containerIndex;
    XPWidgetClass widgetClass;
} XPWidgetCreate_t;

/* Properties. */
enum {
    xpProperty_Refcon = 0,
    xpProperty_Dragging = 1,
    xpProperty_DragXOff = 2,
    xpProperty_DragYOff = 3,
    xpProperty_Hilited = 4,
    xpProperty_Object = 5,
    xpProperty_Clip = 6,
    xpProperty_Enabled = 7,
    xpProperty_UserStart = 10000,
};
/* Dispatch modes. */
enum {
    xpMode_Direct = 0,
    xpMode_UpChain = 1,
    xpMode_Recursive = 2,
    xpMode_DirectAllCallbacks = 3,
    xpMode_Once = 4,
};
/* Messages. */
enum {
    xpMsg_None = 0,
    xpMsg_Create = 1,
    xpMsg_Destroy = 2,
    xpMsg_Paint = 3,
    xpMsg_Draw = 4,
    xpMsg_KeyPress = 5,
    xpMsg_KeyTakeFocus = 6,
    xpMsg_KeyLoseFocus = 7,
    xpMsg_MouseDown = 8,
    xpMsg_MouseDrag = 9,
    xpMsg_MouseUp = 10,
    xpMsg_Reshape = 11,
    xpMsg_ExposedChanged = 12,
    xpMsg_AcceptChild = 13,
    xpMsg_LoseChild = 14,
    xpMsg_AcceptParent = 15,
    xpMsg_Shown = 16,
    xpMsg_Hidden = 17,
    xpMsg_DescriptorChanged = 18,
    xpMsg_PropertyChanged = 19,
    xpMsg_MouseWheel = 20,
    xpMsg_CursorAdjust = 21,
    xpMsg_UserStart = 10000,
};

#ifdef __cplusplus
}
#endif

#endif
