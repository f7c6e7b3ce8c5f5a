// The order of the steps is what keeps an aircraft from harm: a backup first, then what it is a backup of.
// A step that fails is logged, noted for the pilot, and leaves its file alone; the others go on.
#include "figure/installation.h"

#include <string>

#include "figure/acf_file.h"
#include "figure/own_figure.h"
#include "frame/aircraft.h"
#include "util/files.h"
#include "util/log.h"
#include "util/make_fresh.h"
#include "util/paths.h"

std::vector<FailedStep> failedSteps;

namespace {

const char *const MakeRoom = "Make room on the disk, and see that the aircraft's folder may be written.";
const char *const StartAgain =
    "Make room on the disk, see that the aircraft's folder may be read, and start the simulator again.";
const char *const UnzipAgain = "Unzip the plug-in again: a part of it is missing.";
const char *const RepairAcf = "Put the .acf file right, or install it again.";

// False, for the caller to return.
bool Fail(const std::string &what, const char *remedy) {
    failedSteps.push_back({what, remedy});
    return false;
}

// Beside the files that they are of. An existing backup is never written: it holds the aircraft's own file.
std::string BackupOf(const std::string &path) {
    return path + ".backup";
}

// Makes the backup of a file, unless there is one. False when the file would be lost by replacing it.
bool BackUp(const std::string &path, const std::string &name) {
    const Presence backup = WhatIsAt(BackupOf(path));
    if (backup == Presence::Present) return true;
    if (backup == Presence::Absent && copyFile(path, BackupOf(path))) return true;
    if (backup == Presence::Absent && WhatIsAt(path) == Presence::Absent) return true; // nothing to lose
    LogFileProblem("No backup, so this file is not replaced: ", path);
    return Fail(name + " was not replaced: it has no backup", MakeRoom);
}

// Both relative: to the plug-in's data/obj/ and to the aircraft's objects/.
bool CopyObject(const std::string &shipped, const std::string &target) {
    const std::string from = WhatPluginPath() + "data/obj/" + shipped;
    if (copyFile(from, WhatThisAircraftPath() + "objects/" + target)) return true;
    if (!isFileExistString(from)) return Fail("data/obj/" + shipped + " cannot be read", UnzipAgain);
    return Fail("objects/" + target + " could not be replaced", MakeRoom);
}

void BackUpAndCopyObject(const std::string &shipped, const std::string &target) {
    if (BackUp(WhatThisAircraftPath() + "objects/" + target, "objects/" + target))
        CopyObject(shipped, target);
}

bool KeepFigure() {
    if (KeepOwnFigure()) return true;
    LogProblem("No copy of the aircraft's own figure, so it is not replaced", "");
    return Fail("objects/kvfennic.obj was not replaced: it could not be kept", StartAgain);
}

void CopyTextures() {
    CopyObject("kvfennic.png", "kvfennic.png");
    CopyObject("kvfennic_nml.png", "kvfennic_nml.png");
}

void CopyFigure() {
    CopyObject("kvfennic.obj", "kvfennic.obj");
    CopyTextures();
}

// Said last, so that whoever looks at the end of the log finds it.
void LogSteps(const char *what) {
    if (!failedSteps.empty()) LogProblem(what, " was not complete - the lines above say which files failed");
}

void RestoreBackup(const std::string &path, const std::string &name) {
    const Presence backup = WhatIsAt(BackupOf(path));
    if (backup != Presence::Absent && !copyFile(BackupOf(path), path))
        Fail(name + " could not be brought back", MakeRoom);
}

// The aircraft's own file, or its stand-in.
void RestoreOriginal(const std::string &name) {
    if (PutInPlaceOfStandIn(name))
        CopyObject("original/" + name, name);
    else
        Fail("objects/" + name + " could not be brought back", MakeRoom);
}

std::string AcfName() {
    const std::string acf = WhatThisAircraftAcfPath();
    return acf.substr(acf.rfind('/') + 1);
}

// The .acf of the 767: checked, backed up, written.
void AttachFigure() {
    const std::string acf = WhatThisAircraftAcfPath();
    const std::string propertiesFile = WhatPluginPath() + "/data/obj/acf.txt";
    RemoveUnfinished(acf);
    const AircraftFileFacts facts = ExamineAircraftFile(acf);
    if (facts.figureLines > 0) {
        for (int i = 0; i < facts.figureLines; i++)
            string2debugString(".acf file was not changed - it already contain kvfennic.obj", "", 1);
        return;
    }
    std::vector<FileLine> properties = ReadFileLines(propertiesFile);
    if (ThisAircraft().seat && !properties.empty())
        properties = PlaceObject(properties, *ThisAircraft().seat);
    std::string object, reason = facts.reason;
    const bool isSound = reason.empty() && NumberObject(properties, facts.objects, object, reason);
    // A file that is refused gets no backup, which would come back over a sound one some day.
    if (isSound && !BackUp(acf, AcfName())) return;
    if (!facts.hasLines || properties.empty()) {
        LogProblem("Setup was not complete - file not found: ", acf + " OR " + propertiesFile);
        if (properties.empty()) Fail("data/obj/acf.txt cannot be read", UnzipAgain);
        if (!facts.hasLines) Fail(AcfName() + " cannot be read", RepairAcf);
        return;
    }
    if (!isSound) {
        LogFileProblem("Setup was not complete - .acf file was not changed: ", acf, reason);
        Fail(AcfName() + " was not changed: " + reason, RepairAcf);
        return;
    }
    if (!AttachObject(acf, facts, object)) Fail(AcfName() + " could not be replaced", MakeRoom);
}

} // namespace

void SetupAcf() {
    failedSteps.clear();
    switch (ThisAircraft().setup) {
    case FigureSetup::Seats:
        if (KeepFigure()) {
            BackUpAndCopyObject("kvfennic.obj", "kvfennic.obj");
            CopyTextures();
        }
        BackUpAndCopyObject("seats.obj", "seats.obj");
        BackUpAndCopyObject("seats.obj", "seats_Std.obj");
        break;
    case FigureSetup::Replaced:
        if (KeepFigure()) CopyFigure();
        for (const char *name : {"kvfennic.obj", "kvfennic.png"})
            if (!PutInPlaceOfStandIn(name))
                Fail(std::string("data/obj/original/") + name + " could not be replaced", MakeRoom);
        break;
    default: break;
    }
    LogSteps("Setup");
}

void Setup_767() {
    failedSteps.clear();
    if (KeepFigure()) CopyFigure();
    AttachFigure();
    LogSteps("Setup");
}

void SetUpThisAircraft() {
    if (ThisAircraft().setup == FigureSetup::Attached)
        Setup_767();
    else
        SetupAcf();
}

void UninstallFromAcf() {
    failedSteps.clear();
    const std::string objects = WhatThisAircraftPath() + "objects/";
    switch (ThisAircraft().setup) {
    case FigureSetup::Seats:
        for (const char *name : {"kvfennic.obj", "seats.obj", "seats_Std.obj"})
            RestoreBackup(objects + name, std::string("objects/") + name);
        for (const char *name : {"kvfennic.png", "kvfennic_nml.png"})
            if (isOwnFileKept(name)) CopyObject(KeptPath(name), name);
        break;
    case FigureSetup::Replaced:
        for (const char *name : {"kvfennic.obj", "kvfennic.png"}) RestoreOriginal(name);
        break;
    case FigureSetup::Attached: RestoreBackup(WhatThisAircraftAcfPath(), AcfName()); break;
    case FigureSetup::None: break;
    }
    LogSteps("Uninstall");
}

int isSetupCompleted_767() {
    const AircraftFileFacts facts = ExamineAircraftFile(WhatThisAircraftAcfPath());
    if (facts.reading == Reading::Failed) return -1;
    return facts.figureLines > 0 ? 1 : 0;
}

bool isAcfSetupDone() {
    string2debugString("Checked file ", WhatThisAircraftAcfPath(), 1);
    const bool isDone = isSetupCompleted_767() == 1;
    if (isDone)
        string2debugString("kvfennic.obj file included, Fennic setup already done", "", 1);
    else
        string2debugString("kvfennic.obj file NOT included, Fennic setup NOT complete", "", 1);
    return isDone;
}

void ResetInstallation() {
    MakeFresh(failedSteps);
}
