// The order of the steps is what keeps an aircraft from harm: a backup first, then what it is a backup of.
// A step that fails is logged and leaves its file alone; the others go on.
#include "figure/installation.h"

#include <string>

#include "figure/acf_file.h"
#include "frame/aircraft.h"
#include "util/files.h"
#include "util/log.h"
#include "util/paths.h"

namespace {

// Beside the files that they are of. An existing backup is never written: it holds the aircraft's own file.
std::string BackupOf(const std::string &path) {
    return path + ".backup";
}

// Makes the backup of a file, unless there is one. False when the file would be lost by replacing it.
bool BackUp(const std::string &path) {
    const Presence backup = WhatIsAt(BackupOf(path));
    if (backup == Presence::Present) return true;
    if (backup == Presence::Absent && copyFile(path, BackupOf(path))) return true;
    if (backup == Presence::Absent && WhatIsAt(path) == Presence::Absent) return true; // nothing to lose
    LogFile("No backup, so this file is not replaced: ", path);
    return false;
}

// Both relative: to the plug-in's data/obj/ and to the aircraft's objects/.
bool CopyObject(const std::string &shipped, const std::string &target) {
    return copyFile(WhatPluginPath() + "data/obj/" + shipped, WhatThisAircraftPath() + "objects/" + target);
}

bool BackUpAndCopyObject(const std::string &shipped, const std::string &target) {
    return BackUp(WhatThisAircraftPath() + "objects/" + target) && CopyObject(shipped, target);
}

bool CopyTextures() {
    const bool hasColours = CopyObject("kvfennic.png", "kvfennic.png");
    const bool hasNormals = CopyObject("kvfennic_nml.png", "kvfennic_nml.png");
    return hasColours && hasNormals;
}

bool CopyFigure() {
    const bool hasObject = CopyObject("kvfennic.obj", "kvfennic.obj");
    const bool hasTextures = CopyTextures();
    return hasObject && hasTextures;
}

// Said last, so that whoever looks at the end of the log finds it.
void LogSteps(bool areComplete, const char *what) {
    if (!areComplete)
        string2debugString(what, " was not complete - the lines above say which files failed", 1);
}

bool RestoreBackup(const std::string &path) {
    const Presence backup = WhatIsAt(BackupOf(path));
    return backup == Presence::Absent || copyFile(BackupOf(path), path);
}

// The .acf of the 767: checked, backed up, written. True when it names the figure afterwards.
bool AttachFigure() {
    const std::string acf = WhatThisAircraftAcfPath();
    const std::string propertiesFile = WhatPluginPath() + "/data/obj/acf.txt";
    RemoveUnfinished(acf);
    const AircraftFileFacts facts = ExamineAircraftFile(acf);
    if (facts.figureLines > 0) {
        for (int i = 0; i < facts.figureLines; i++)
            string2debugString(".acf file was not changed - it already contain kvfennic.obj", "", 1);
        return true;
    }
    const std::vector<FileLine> properties = ReadFileLines(propertiesFile);
    std::string object, reason = facts.reason;
    const bool isSound = reason.empty() && NumberObject(properties, facts.objects, object, reason);
    // A file that is refused gets no backup, which would come back over a sound one some day.
    if (isSound && !BackUp(acf)) return false;
    if (!facts.hasLines || properties.empty()) {
        string2debugString("Setup was not complete - file not found: ", acf + " OR " + propertiesFile, 1);
        return false;
    }
    if (!isSound) {
        string2debugString("Setup was not complete - .acf file was not changed: " + acf + ": ", reason, 1);
        return false;
    }
    return AttachObject(acf, facts, object);
}

} // namespace

void SetupAcf() {
    bool areComplete = true;
    if (acfType == 319 || acfType == 321) {
        areComplete &= BackUpAndCopyObject("kvfennic.obj", "kvfennic.obj");
        areComplete &= CopyTextures();
        areComplete &= BackUpAndCopyObject("seats.obj", "seats.obj");
        areComplete &= BackUpAndCopyObject("seats.obj", "seats_Std.obj");
    } else if (acfType == 737 || acfType == 739) {
        areComplete = CopyFigure();
    }
    LogSteps(areComplete, "Setup");
}

void Setup_767() {
    const bool hasFigure = CopyFigure();
    const bool isAttached = AttachFigure();
    LogSteps(hasFigure && isAttached, "Setup");
}

void SetUpThisAircraft() {
    if (acfType == 767)
        Setup_767();
    else
        SetupAcf();
}

void UninstallFromAcf() {
    const std::string objects = WhatThisAircraftPath() + "objects/";
    bool areComplete = true;
    if (acfType == 319 || acfType == 321) {
        for (const char *name : {"kvfennic.obj", "seats.obj", "seats_Std.obj"})
            areComplete &= RestoreBackup(objects + name);
    } else if (acfType == 737 || acfType == 739) {
        for (const char *name : {"kvfennic.obj", "kvfennic.png"})
            areComplete &= CopyObject(std::string("original/") + name, name);
    } else if (acfType == 767) {
        areComplete = RestoreBackup(WhatThisAircraftAcfPath());
    }
    LogSteps(areComplete, "Uninstall");
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
