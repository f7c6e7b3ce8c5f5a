// The figure in the aircraft's files: putting it in, and taking it out again. Every file is replaced whole or
// not at all, and one that has a backup is replaced only once the backup is there: after a failure at any
// point each file is the old one or the new one, and setting up again completes the work.
//
// The aircraft must be reloaded before the simulator sees a change. What the setup has come to is
// InstallationState, in frame/settings.h; the dialogs change it.
#pragma once

#include <string>
#include <vector>

// A step that failed.
struct FailedStep {
    std::string what;   // as the pilot reads it, with the file's name
    std::string remedy; // what he can do about it
};

// Those of the last setup or removal, in their order; empty when all was done.
extern std::vector<FailedStep> failedSteps;

// Puts the figure into an aircraft: its object and textures and, where its setup is Seats, the seats that
// make room for her. Nothing where it is None or Attached.
void SetupAcf();

// The same where it is Attached, as in the 767: the aircraft's file (.acf) must name the figure, too.
void Setup_767();

// The one of the two that the loaded aircraft needs.
void SetUpThisAircraft();

// Brings back what the setup found: from its backups, and from what own_figure.h keeps or, where it is
// Replaced and the aircraft's own figure was never seen, has for it. Backups and what is kept stay.
void UninstallFromAcf();

// 1 when the aircraft's .acf names the figure's object: the 767 is set up; -1 when it cannot be read. Only
// the .acf decides, not the files that it names.
int isSetupCompleted_767();

// The same, telling the log. For developers.
bool isAcfSetupDone();

// Everything as when the program starts.
void ResetInstallation();
