#include "simhost/flights/window_frontend.h"

namespace simhost {

bool OpenFrontend(int, int, std::string &error) {
    error = "the simulator has none on Windows";
    return false;
}

bool ShowFrontend(double) {
    return false;
}

void CloseFrontend() {}

} // namespace simhost
