// The refcon of each dataref is its entry of the state, which is never moved.
#include "figure/shown.h"

#include <algorithm>
#include <string>

#include "frame/datarefs.h"
#include "util/make_fresh.h"

ShownState shown;

namespace {

float ReadShown(void *refcon) {
    const ShownAxis &axis = *static_cast<const ShownAxis *>(refcon);
    return (axis.published ? *axis.published : 0.0F) + axis.living;
}

void Publish(const std::string &name, ShownAxis &axis, const float *published) {
    axis.published = published;
    CreateDrf_Computed("kv/fo/shown/" + name, ReadShown, &axis);
}

} // namespace

void PublishShown() {
    const char *const axisNames[AxisCount] = {"_x", "_y", "_z"};
    for (size_t i = 0; i < std::min<size_t>(ShownChannels, anim.size()); i++)
        for (int axis = 0; axis < AxisCount; axis++)
            Publish(anim[i].name + axisNames[axis], shown.channels[i][axis], anim[i].published[axis]);
    Publish("eyes_x", shown.eyes[0], figureChannels.publishedEyes[0]);
    Publish("eyes_y", shown.eyes[1], figureChannels.publishedEyes[1]);
}

void ResetShown() {
    MakeFresh(shown);
}
