// The calls on widgets: widgets, push.
#include "simhost/widgets/widgets.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/flights/arguments.h"
#include "simhost/flights/state.h"
#include "simhost/flights/transcript.h"
#include "simhost/interface/plugins.h"
#include "simhost/windows/windows.h"

namespace simhost {

namespace {

constexpr const char *ClassNames[] = {"custom",  "main_window",      "sub_window",
                                      "button",  "text_field",       "scroll_bar",
                                      "caption", "general_graphics", "progress"};

int Property(const WidgetView &widget, XPWidgetPropertyID property) {
    return static_cast<int>(XPGetWidgetProperty(widget.id, property, nullptr));
}

void AddStateFields(lua_State *lua, const WidgetView &widget) {
    constexpr const char *behaviors[] = {"push", "check", "radio"};
    switch (widget.widgetClass) {
    case xpWidgetClass_Button: {
        const int behavior = Property(widget, xpProperty_ButtonBehavior);
        if (behavior >= 0 && behavior <= 2) SetField(lua, "behavior", std::string(behaviors[behavior]));
        SetField(lua, "state", Property(widget, xpProperty_ButtonState) != 0);
        break;
    }
    case xpWidgetClass_TextField:
        SetField(lua, "text", widget.caption);
        SetField(lua, "selection_start", Property(widget, xpProperty_EditFieldSelStart));
        SetField(lua, "selection_end", Property(widget, xpProperty_EditFieldSelEnd));
        break;
    case xpWidgetClass_ScrollBar:
        SetField(lua, "position", Property(widget, xpProperty_ScrollBarSliderPosition));
        break;
    case xpWidgetClass_Progress:
        SetField(lua, "position", Property(widget, xpProperty_ProgressPosition));
        break;
    default: break;
    }
}

int ListWidgets(Call &call) {
    const std::vector<WidgetView> widgets = AllWidgets();
    lua_createtable(call.lua, static_cast<int>(widgets.size()), 0);
    lua_Integer place = 0;
    for (const WidgetView &widget : widgets) {
        lua_newtable(call.lua);
        SetField(call.lua, "class", std::string(ClassNames[widget.widgetClass]));
        SetField(call.lua, "caption", widget.caption);
        SetField(call.lua, "plugin", PluginName(widget.owner));
        SetPlaceFields(call.lua, widget);
        SetField(call.lua, "root", widget.isRoot);
        SetField(call.lua, "enabled", widget.isEnabled);
        if (widget.parent >= 0) SetField(call.lua, "parent", widget.parent + 1);
        AddStateFields(call.lua, widget);
        lua_rawseti(call.lua, -2, ++place);
    }
    return 1;
}

// The frontmost one of that caption. The click is a real one, so it can end on what covers the button.
int Push(Call &call) {
    const std::string caption = call.Text(1, "caption");
    if (isMouseHeld()) call.Fail("a mouse button is held already; call sim.mouse_up before");
    std::string others;
    for (const WidgetView &widget : AllWidgets()) {
        if (widget.widgetClass != xpWidgetClass_Button || !widget.isVisible) continue;
        if (widget.caption != caption) {
            others += (others.empty() ? "\"" : ", \"") + widget.caption + "\"";
            continue;
        }
        if (!widget.isEnabled) call.Fail("the button \"" + caption + "\" is disabled");
        TranscribeAct("pushes \"" + caption + "\"");
        bool isTaken = false;
        {
            SimulatorCall inside;
            isTaken = ClickWidget(widget.id);
        }
        if (!isTaken) call.Fail("the press on \"" + caption + "\" went to something that covers it");
        return 0;
    }
    call.Fail("there is no visible button \"" + caption + "\"; there is "
              + (others.empty() ? "none at all" : others));
}

} // namespace

void AddWidgetCalls(lua_State *lua) {
    AddCalls(lua, {{"widgets", Bridge<ListWidgets>}, {"push", Bridge<Push>}});
}

} // namespace simhost
