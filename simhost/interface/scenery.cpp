// The ground, which is as high everywhere as below the aircraft, so that no probe misses it; and 3D objects,
// which are read and counted. Magnetic north is true north here.
#include "XPLMScenery.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "XPLMGraphics.h"
#include "simhost/drawing/object_file.h"
#include "simhost/modules.h"
#include "simhost/simulator.h"

namespace simhost {

namespace {

struct Object {
    std::string path;
    int references = 0;
};

struct Loading {
    std::string path;
    XPLMObjectLoaded_f callback = nullptr;
    void *refcon = nullptr;
    XPLMPluginID owner = XPLM_PLUGIN_XPLANE;
};

struct Scenery {
    std::map<std::string, std::unique_ptr<Object>> objects; // by path
    std::vector<Loading> loading;
    std::map<XPLMProbeRef, XPLMPluginID> probes; // and who has made each
    std::uintptr_t lastProbe = 0;
};

Scenery &SceneryState() {
    static auto &state = *new Scenery;
    return state;
}

Object *FindObject(const void *reference) {
    for (const auto &[path, object] : SceneryState().objects)
        if (object.get() == reference) return object.get();
    return nullptr;
}

Object *Load(const std::string &path) {
    std::unique_ptr<Object> &object = SceneryState().objects[path];
    if (!object) {
        ObjectFile file;
        const bool isRead = ReadObjectFile(path, file);
        for (const std::string &problem : file.problems) WriteLog(problem);
        if (isRead) object = std::make_unique<Object>(Object{path, 0});
    }
    if (!object) {
        SceneryState().objects.erase(path);
        return nullptr;
    }
    object->references++;
    return object.get();
}

// Metres above sea level.
double GroundHeight() {
    return GetNumber("sim/flightmodel/position/elevation") - GetNumber("sim/flightmodel/position/y_agl");
}

} // namespace

void FinishLoadingObjects() {
    std::vector<Loading> ready;
    ready.swap(SceneryState().loading);
    for (const Loading &one : ready) {
        if (!isPluginEnabled(one.owner)) {
            SceneryState().loading.push_back(one);
            continue;
        }
        RunningScope scope(one.owner, "object's loader");
        one.callback(Load(one.path), one.refcon);
    }
}

bool isLoadedObject(const void *object) {
    return FindObject(object) != nullptr;
}

void HoldObject(void *object) {
    if (Object *held = FindObject(object)) held->references++;
}

void LetGoOfObject(void *object) {
    Object *held = FindObject(object);
    if (held && --held->references <= 0) SceneryState().objects.erase(std::string(held->path));
}

void DropScenery(XPLMPluginID plugin, LeftBehind &leftBehind) {
    std::erase_if(SceneryState().loading, [&](const Loading &one) { return one.owner == plugin; });
    const auto probes =
        std::erase_if(SceneryState().probes, [&](const auto &probe) { return probe.second == plugin; });
    if (probes > 0) leftBehind.notes.push_back(std::to_string(probes) + (probes == 1 ? " probe" : " probes"));
}

void ResetScenery() {
    SceneryState() = {};
}

} // namespace simhost

using namespace simhost;

XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType) {
    if (inProbeType != xplm_ProbeY) {
        ReportMisuse("XPLMCreateProbe of a type that does not exist");
        return nullptr;
    }
    const auto probe = reinterpret_cast<XPLMProbeRef>(++SceneryState().lastProbe);
    SceneryState().probes[probe] = currentRunning.plugin;
    return probe;
}

void XPLMDestroyProbe(XPLMProbeRef inProbe) {
    SceneryState().probes.erase(inProbe);
}

XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe, float inX, float inY, float inZ,
                                    XPLMProbeInfo_t *outInfo) {
    if (!SceneryState().probes.contains(inProbe) || !outInfo) return xplm_ProbeError;
    double latitude = 0, longitude = 0, height = 0;
    XPLMLocalToWorld(inX, inY, inZ, &latitude, &longitude, &height);
    const double ground = GroundHeight();
    XPLMProbeInfo_t info = {};
    double place[3], above[3];
    XPLMWorldToLocal(latitude, longitude, ground, &place[0], &place[1], &place[2]);
    XPLMWorldToLocal(latitude, longitude, ground + 1, &above[0], &above[1], &above[2]);
    info.locationX = static_cast<float>(place[0]);
    info.locationY = static_cast<float>(place[1]);
    info.locationZ = static_cast<float>(place[2]);
    info.normalX = static_cast<float>(above[0] - place[0]);
    info.normalY = static_cast<float>(above[1] - place[1]);
    info.normalZ = static_cast<float>(above[2] - place[2]);
    CopyOut(info, outInfo);
    return xplm_ProbeHitTerrain;
}

float XPLMGetMagneticVariation(double, double) {
    return 0;
}

float XPLMDegTrueToDegMagnetic(float headingDegreesTrue) {
    return headingDegreesTrue;
}

float XPLMDegMagneticToDegTrue(float headingDegreesMagnetic) {
    return headingDegreesMagnetic;
}

XPLMObjectRef XPLMLoadObject(const char *inPath) {
    return inPath ? Load(PathFromPlugin(inPath)) : nullptr;
}

void XPLMLoadObjectAsync(const char *inPath, XPLMObjectLoaded_f inCallback, void *inRefcon) {
    if (!inPath || !inCallback) {
        ReportMisuse("XPLMLoadObjectAsync without a path, or without a callback");
        return;
    }
    SceneryState().loading.push_back({PathFromPlugin(inPath), inCallback, inRefcon, currentRunning.plugin});
}

void XPLMUnloadObject(XPLMObjectRef inObject) {
    LetGoOfObject(inObject);
}

// There is no library of scenery.
int XPLMLookupObjects(const char *, float, float, XPLMLibraryEnumerator_f, void *) {
    return 0;
}
