// The helpers over the widget calls.
#include "XPWidgetUtils.h"

#include <vector>

#include "XPWidgets.h"
#include "simhost/modules.h"
#include "simhost/widgets/state.h"

using namespace simhost;

// Each may lie in one made before it, in the given parent or in none.
void XPUCreateWidgets(const XPWidgetCreate_t *inWidgetDefs, int inCount, XPWidgetID inParamParent,
                      XPWidgetID *ioWidgets) {
    if (!inWidgetDefs || !ioWidgets) {
        ReportMisuse("XPUCreateWidgets without descriptions or without room for the widgets");
        return;
    }
    for (int i = 0; i < inCount; i++) {
        const XPWidgetCreate_t &made = inWidgetDefs[i];
        XPWidgetID container = nullptr;
        if (made.containerIndex == PARAM_PARENT)
            container = inParamParent;
        else if (made.containerIndex >= 0 && made.containerIndex < i)
            container = ioWidgets[made.containerIndex];
        else if (made.containerIndex != NO_PARENT)
            ReportMisuse("XPUCreateWidgets with a widget in one that is not made before it");
        ioWidgets[i] = XPCreateWidget(made.left, made.top, made.right, made.bottom, made.visible,
                                      made.descriptor, made.isRoot, container, made.widgetClass);
    }
}

void XPUMoveWidgetBy(XPWidgetID inWidget, int inDeltaX, int inDeltaY) {
    const Rectangle before = PlaceOf(inWidget);
    const std::int64_t right = inDeltaX, up = inDeltaY;
    const Rectangle place =
        LimitedPlace(before.left + right, before.top + up, before.right + right, before.bottom + up);
    XPSetWidgetGeometry(inWidget, place.left, place.top, place.right, place.bottom);
}

// Moves what lies in the widget along with its lower left corner, and takes the message: the widget's class,
// which may do the same, is not asked any more.
int XPUFixedLayout(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1, intptr_t inParam2) {
    const Widget *widget = FindWidget(inWidget);
    if (inMessage != xpMsg_Reshape || inParam1 != AsParameter(inWidget) || inParam2 == 0 || !widget) return 0;
    const XPWidgetGeometryChange_t change = *reinterpret_cast<const XPWidgetGeometryChange_t *>(inParam2);
    const std::vector<XPWidgetID> children = widget->children;
    for (XPWidgetID child : children) XPUMoveWidgetBy(child, change.dx, change.dy);
    return 1;
}
