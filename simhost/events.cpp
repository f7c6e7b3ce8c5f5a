// The one listener to what happens in the simulator. Whether there is one is kept apart in a plain flag,
// which is right even while the program's globals are still being initialised.
#include "simhost/events.h"

#include <utility>

namespace simhost {

static constinit bool hasListener = false;

static std::function<void(const Event &)> &Listener() {
    static std::function<void(const Event &)> listener;
    return listener;
}

void SetEventListener(std::function<void(const Event &)> listener) {
    hasListener = static_cast<bool>(listener);
    Listener() = std::move(listener);
}

void ReportEvent(const Event &event) {
    if (hasListener) Listener()(event);
}

bool hasEventListener() {
    return hasListener;
}

} // namespace simhost
