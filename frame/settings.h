// The user's choices, kept in one text file of key=value lines in the plug-in's folder. Read first thing at
// start, written at stop and after the dialogs; menus and dialogs change the values in between.
#pragma once

#include <string>

extern std::string globalGender;                     // "w" or "m"; empty: not chosen
extern std::string globalPosFolder;                  // "positions-w/" or "positions-m/", with the gender
extern std::string globalIBMVoiceW, globalIBMVoiceM; // second speech engine; kept and written back
extern std::string globalAPLVoiceW, globalAPLVoiceM; // the system's speech engine
extern std::string globalVoiceW, globalVoiceM;       // the voice in use for each gender
extern int globalVolume;                             // percent, 10 to 100
extern int globalRate;                               // percent, 10 to 100
extern std::string globalNameW, globalNameM;         // the first officer's name for each gender
extern std::string globalName;                       // the one in use; "[NAME]" in spoken text
extern std::string globalSizeW, globalSizeM;         // figure size; kept and written back
extern std::string globalSir;                        // how she addresses the pilot; "[SIR]"
extern std::string globalUser;                       // the pilot's name; "[USER]"
extern std::string globalCheckDrfName; // dataref that must exist before the main loop works; empty: none
extern int widgetOffsetY;              // height of the text overlay, boxels

// What the setup of the figure in this aircraft has come to.
enum {
    InstallationRemoved = -1,   // taken out again: no callbacks, no prompt
    InstallationMissing = 0,    // not set up: the prompt opens at start
    InstallationPutOff = 1,     // "Later": no callbacks, no prompt
    InstallationReady = 2,      // set up
    InstallationNotNeeded = 11, // an aircraft that carries the figure itself
};
extern int InstallationState;

// Reads "data/settings_mac.txt", or "custom/settings_mac.txt" when the data folder lacks it. Either counts
// only with a "settings_win.txt" beside it; without a pair every default stays.
void ReadSettings();

// Writes "data/settings_mac.txt" whole. One that was not read since it has no partner is copied to
// "data/settings_mac.txt.kept" before, unless that is there.
void SaveSettings();

// Everything as when the program starts.
void ResetSettings();
