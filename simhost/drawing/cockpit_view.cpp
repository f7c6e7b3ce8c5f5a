// The scene: objects that the aircraft file attaches, in the aircraft's coordinates, or those that only lie
// in its folder, around the right-hand seat. The seat is where the figure's object is attached, and the eyes
// are placed from there, since all aircraft have their seats somewhere else.
#include "simhost/drawing/cockpit_view.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "simhost/drawing/attached_objects.h"
#include "simhost/drawing/cockpit_background.h"
#include "simhost/drawing/gl_context.h"
#include "simhost/drawing/graphics_state.h"
#include "simhost/drawing/object_drawing.h"
#include "simhost/drawing/screen.h"
#include "simhost/flights/watchdog.h"

namespace simhost {

const char *const CockpitViews = "\"cockpit\", \"front\", \"side\", \"face\", \"hand\" or \"none\"";

namespace {

constexpr const char *FigureFile = "kvfennic.obj";
constexpr const char *SeatFile = "seats.obj";

// In metres from the top of the right-hand seat's cushion.
struct Viewpoint {
    std::string_view name;
    Camera camera;
};
constexpr Viewpoint Viewpoints[] = {
    {"cockpit", {{-0.98F, 0.80F, -0.12F}, {0, 0.34F, -0.18F}, 62}}, // the pilot's eyes
    {"front", {{-0.50F, 0.66F, -1.15F}, {-0.22F, 0.37F, 0}, 50}},   // from over the glareshield
    {"side", {{-1.85F, 0.35F, -0.20F}, {0, 0.22F, -0.20F}, 45}},
    {"face", {{-0.62F, 0.80F, -0.62F}, {0, 0.74F, 0.06F}, 24}},
    {"hand", {{0.16F, 0.80F, -0.95F}, {0.30F, 0.77F, -0.10F}, 20}}}; // the right one, raised

struct Scene {
    Camera camera = {};
    std::vector<DrawnObject> objects; // empty: nothing is shown
};

// Never destroyed, so that the order at the program's end does not matter.
Scene &TheScene() {
    static Scene &scene = *new Scene;
    return scene;
}

void ClearScene() {
    for (DrawnObject &object : TheScene().objects) UnloadObject(object);
    TheScene().objects.clear();
}

void AddToScene(DrawnObject object, const Matrix &place) {
    object.place = place;
    BindDatarefs(object);
    TheScene().objects.push_back(std::move(object));
}

// False when nothing of it can be seen.
bool AddFile(const std::string &path, const Matrix &place) {
    DrawnObject object;
    ReadObjectFile(path, object.file);
    for (const std::string &problem : object.file.problems)
        std::fprintf(stderr, "fennic-sim: %s\n", problem.c_str());
    if (object.file.indices.empty()) return false;
    AddToScene(std::move(object), place);
    return true;
}

bool Exists(const std::string &path) {
    std::error_code failed;
    return std::filesystem::is_regular_file(path, failed);
}

bool isNamed(const std::string &file, const char *name) {
    return std::filesystem::path(file).filename() == name;
}

// Does the seat lie between an object's outermost points?
bool Surrounds(const DrawnObject &object, const Matrix &seat) {
    bool isBelow[3] = {}, isAbove[3] = {};
    for (const ObjectVertex &vertex : object.file.vertices) {
        const auto point = Transformed(object.place, vertex.position);
        for (std::size_t i = 0; i < 3; i++) {
            isBelow[i] = isBelow[i] || point[i] <= seat[12 + i];
            isAbove[i] = isAbove[i] || point[i] >= seat[12 + i];
        }
    }
    const auto isTrue = [](bool is) { return is; };
    return std::all_of(isBelow, isBelow + 3, isTrue) && std::all_of(isAbove, isAbove + 3, isTrue);
}

Camera Placed(const Camera &camera, const Matrix &seat) {
    Camera placed = camera;
    const auto eye = Transformed(seat, camera.eye), target = Transformed(seat, camera.target);
    std::copy(eye.begin(), eye.end(), placed.eye);
    std::copy(target.begin(), target.end(), placed.target);
    return placed;
}

void MakeScene(const Viewpoint &viewpoint, const std::string &objects, const std::string &aircraftFile,
               const std::string &otherFigure, std::vector<std::string> &notes) {
    const std::vector<AttachedObject> allAttached = ReadAttachedObjects(aircraftFile);
    Matrix seat = UnitMatrix;
    for (const AttachedObject &attached : allAttached)
        if (isNamed(attached.file, FigureFile)) seat = attached.place;
    bool hasFigure = false, hasSeat = false, hasRoom = false, isSeatAttached = false;
    for (const AttachedObject &attached : allAttached) {
        isSeatAttached = isSeatAttached || isNamed(attached.file, SeatFile);
        if (!Exists(objects + attached.file)) {
            notes.emplace_back("The aircraft attaches " + attached.file + ", which is not in its objects.");
            continue;
        }
        if (!AddFile(objects + attached.file, attached.place)) continue;
        if (isNamed(attached.file, FigureFile))
            hasFigure = true;
        else if (!Surrounds(TheScene().objects.back(), seat))
            continue;
        else if (isNamed(attached.file, SeatFile))
            hasSeat = true;
        else
            hasRoom = true;
    }
    if (!isSeatAttached && Exists(objects + SeatFile)) hasSeat = AddFile(objects + SeatFile, seat);
    if (!hasRoom) AddToScene(MakeCockpitRoom(), seat);
    if (!hasRoom && !hasSeat) AddToScene(MakeSeat(), seat);
    if (!hasFigure && Exists(objects + FigureFile)) hasFigure = AddFile(objects + FigureFile, seat);
    if (!hasFigure && Exists(otherFigure)) {
        hasFigure = AddFile(otherFigure, seat);
        notes.emplace_back("The figure is not in the aircraft's objects; the plug-in's own files are shown.");
    }
    if (!hasFigure) notes.emplace_back("There is no figure to be shown; the seat is empty.");
    TheScene().camera = Placed(viewpoint.camera, seat);
}

} // namespace

bool ShowCockpit(std::string_view view, const std::string &aircraftFolder, const std::string &aircraftFile,
                 const std::string &otherFigure, std::vector<std::string> &notes) {
    if (view == "none") {
        ClearScene();
        return true;
    }
    for (const Viewpoint &viewpoint : Viewpoints) {
        if (viewpoint.name != view) continue;
        ClearScene();
        MakeScene(viewpoint, aircraftFolder + "objects/", aircraftFolder + aircraftFile, otherFigure, notes);
        return true;
    }
    return false;
}

bool isCockpitShown() {
    return !TheScene().objects.empty();
}

void DrawCockpit() {
    RestoreGraphicsState();
    if (!BeginScene()) return;
    Scene &scene = TheScene();
    for (DrawnObject &object : scene.objects) ReadDatarefs(object);
    UnwatchedWork drawing;
    glDepthMask(GL_TRUE);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawSky(HorizonHeight(scene.camera), ScreenWidth(), ScreenHeight());
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE); // the picture is opaque
    DrawObjects(scene.objects, scene.camera, ScreenWidth(), ScreenHeight());
    EndScene();
    RestoreGraphicsState();
}

void ResetCockpitView() {
    ClearScene();
}

} // namespace simhost
