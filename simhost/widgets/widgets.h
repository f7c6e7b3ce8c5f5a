// The plug-ins' widgets, as the flight and the simulator's other modules see them.
#pragma once

#include <string>
#include <vector>

#include "XPWidgetDefs.h"
#include "simhost/interface/plugins.h"

namespace simhost {

struct WidgetView {
    XPWidgetID id = nullptr;
    XPWidgetClass widgetClass = 0; // 0 where the plug-in draws and feeds it alone
    std::string caption;           // of a text field: its text
    int left = 0, top = 0, right = 0, bottom = 0;
    bool isVisible = false; // with all it lies in
    bool isRoot = false;
    bool isEnabled = true;
    bool hasFocus = false;
    int parent = -1; // its place in the list; -1 for a root and for one that lies nowhere
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};
// The roots from front to back, each followed by what lies in it, then those that lie in no root.
std::vector<WidgetView> AllWidgets();

// Clicks with the mouse in the middle of what can be seen of a widget. False if something else took the
// press.
bool ClickWidget(XPWidgetID widget);

// ---- For the simulator's other modules ----

void DropWidgets(XPLMPluginID plugin, LeftBehind &leftBehind); // without telling them
void ResetWidgets();

} // namespace simhost
