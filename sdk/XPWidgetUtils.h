/* Helpers over the widget calls. */
#ifndef FENNIC_SDK_XPWIDGET_UTILS_H
#define FENNIC_SDK_XPWIDGET_UTILS_H

#include "XPWidgetDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

WIDGET_API void XPUCreateWidgets(const XPWidgetCreate_t *inWidgetDefs, int inCount, XPWidgetID inParamParent,
                                 XPWidgetID *ioWidgets);
WIDGET_API void XPUMoveWidgetBy(XPWidgetID inWidget, int inDeltaX, int inDeltaY);
WIDGET_API int XPUFixedLayout(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1,
                              intptr_t inParam2);

#ifdef __cplusplus
}
#endif

#endif
