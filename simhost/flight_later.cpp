// The calls that need widgets or the figure. Their names exist, so that a flight written for a later version
// says what it lacks.
#include "simhost/flight_state.h"

#include "simhost/flight_arguments.h"

namespace simhost {

namespace {

int ComesLater(Call &call) {
    call.Fail("this comes with a later version of fennic-sim");
}

} // namespace

void AddLaterCalls(lua_State *lua) {
    for (const char *name : {"widgets", "push"}) {
        const CallEntry entry[] = {{name, Bridge<ComesLater>}};
        AddCalls(lua, entry);
    }
}

} // namespace simhost
