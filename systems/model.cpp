#include "systems/model.h"

ModelState modelState;

ParameterAddress AddressOf(const device_struct &device) {
    for (ParameterAddress place{0, 0}; SystemAt(place); place.sys++) {
        const std::vector<device_struct> &devices = SystemAt(place)->devices;
        const bool isHere = !devices.empty() && &device >= &devices.front() && &device <= &devices.back();
        if (isHere) return {place.sys, static_cast<int>(&device - devices.data())};
    }
    return {};
}
