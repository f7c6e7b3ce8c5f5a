// Who controls the camera, and where it is. The pictures of sim.show have views of their own.
#include "XPLMCamera.h"

#include <cmath>
#include <string>

#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct Control {
    XPLMCameraControl_f callback = nullptr; // null: the simulator has the camera
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
    XPLMCameraControlDuration duration = xplm_ControlCameraForever;
    double view = 0;        // in which it was taken
    bool hasPlaced = false; // position is the owner's
    XPLMCameraPosition_t position = {};
};
constinit Control control;

constexpr double Degree = 3.14159265358979323846 / 180;

double View() {
    return GetNumber("sim/graphics/view/view_type");
}

// In the pilot's head, which looks along the aircraft as long as it is not turned.
XPLMCameraPosition_t PilotsHead() {
    const auto of = [](const char *name) { return GetNumber(std::string("sim/") + name); };
    const double psi = of("flightmodel/position/psi"), theta = of("flightmodel/position/theta"),
                 phi = of("flightmodel/position/phi");
    const double right = of("graphics/view/pilots_head_x"), up = of("graphics/view/pilots_head_y"),
                 aft = of("graphics/view/pilots_head_z");
    const auto turn = [](double &a, double &b, double degrees) { // a towards -b
        const double c = std::cos(degrees * Degree), s = std::sin(degrees * Degree), before = a;
        a = before * c + b * s;
        b = b * c - before * s;
    };
    double x = right, y = up, z = aft;
    turn(x, y, phi);
    turn(z, y, theta);
    turn(z, x, psi);
    XPLMCameraPosition_t position = {};
    position.x = static_cast<float>(of("flightmodel/position/local_x") + x);
    position.y = static_cast<float>(of("flightmodel/position/local_y") + y);
    position.z = static_cast<float>(of("flightmodel/position/local_z") + z);
    position.pitch = static_cast<float>(theta + of("graphics/view/pilots_head_the"));
    position.heading = static_cast<float>(psi + of("graphics/view/pilots_head_psi"));
    position.roll = static_cast<float>(phi + of("graphics/view/pilots_head_phi"));
    position.zoom = 1;
    return position;
}

// Tells the owner that the camera is taken away.
void TakeAway() {
    const Control lost = control;
    control = {};
    if (!lost.callback || !isPluginEnabled(lost.owner)) return;
    RunningScope scope(lost.owner, "camera control");
    lost.callback(nullptr, 1, lost.refcon);
}

} // namespace

void RunCamera() {
    if (!control.callback || !isPluginEnabled(control.owner)) return;
    if (control.duration == xplm_ControlCameraUntilViewChanges && View() != control.view) {
        TakeAway();
        return;
    }
    const Control asked = control;
    XPLMCameraPosition_t position = {};
    XPLMReadCameraPosition(&position);
    RunningScope scope(asked.owner, "camera control");
    const bool isKept = asked.callback(&position, 0, asked.refcon) != 0;
    if (control.callback != asked.callback || control.refcon != asked.refcon) return; // changed meanwhile
    if (!isKept) {
        control = {};
        return;
    }
    control.position = position;
    control.hasPlaced = true;
}

void DropCameraControl(XPLMPluginID plugin) {
    if (control.owner == plugin) control = {};
}

void ResetCamera() {
    control = {};
}

} // namespace simhost

using namespace simhost;

void XPLMControlCamera(XPLMCameraControlDuration inHowLong, XPLMCameraControl_f inControlFunc,
                       void *inRefcon) {
    if (!inControlFunc) {
        ReportMisuse("XPLMControlCamera without a function");
        return;
    }
    TakeAway();
    control = {inControlFunc, inRefcon, currentRunning.plugin, inHowLong, View()};
}

void XPLMDontControlCamera(void) {
    control = {};
}

int XPLMIsCameraBeingControlled(XPLMCameraControlDuration *outCameraControlDuration) {
    if (control.callback && outCameraControlDuration) *outCameraControlDuration = control.duration;
    return control.callback ? 1 : 0;
}

void XPLMReadCameraPosition(XPLMCameraPosition_t *outCameraPosition) {
    if (outCameraPosition) *outCameraPosition = control.hasPlaced ? control.position : PilotsHead();
}
