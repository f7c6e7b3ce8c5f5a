// The calls that need drawing, menus, windows, widgets, the mouse or the keyboard. Their names exist, so
// that a flight written for a later version says what it lacks.
#include "simhost/flight_state.h"

#include "simhost/flight_arguments.h"

namespace simhost {

namespace {

int ComesLater(Call &call) {
    call.Fail("this comes with a later version of fennic-sim");
}

} // namespace

void AddLaterCalls(lua_State *lua) {
    for (const char *name : {"menu", "choose", "mouse", "mouse_down", "mouse_drag", "mouse_up", "click",
                             "double_click", "wheel", "key", "type", "windows", "widgets", "push", "show"}) {
        const CallEntry entry[] = {{name, Bridge<ComesLater>}};
        AddCalls(lua, entry);
    }
}

} // namespace simhost
