// The user's choices, kept in one text file of key=value lines in the plug-in's folder. Read first thing at
// start, written at stop and after the dialogs; menus and dialogs change the values in between.
#pragma once

#include <span>
#include <string>

// What the setup of the figure in this aircraft has come to.
enum {
    InstallationRemoved = -1,   // taken out again: no callbacks, no prompt
    InstallationMissing = 0,    // not set up: the prompt opens at start
    InstallationPutOff = 1,     // "Later": no callbacks, no prompt
    InstallationReady = 2,      // set up
    InstallationNotNeeded = 11, // an aircraft that carries the figure itself
};

struct SettingsState {
    std::string gender;               // "w" or "m"; empty: not chosen
    std::string posFolder;            // "positions-w/" or "positions-m/", with the gender
    std::string voiceIBMw, voiceIBMm; // second speech engine; kept and written back
    std::string voiceAPLw, voiceAPLm; // the system's speech engine
    std::string voiceW, voiceM;       // the voice in use for each gender
    int volume = 100;                 // percent, 10 to 100
    int rate = 50;                    // percent, 10 to 100
    std::string nameW, nameM;         // the first officer's name for each gender
    std::string name;                 // the one in use; "[NAME]" in spoken text
    std::string sizeW, sizeM;         // figure size; kept and written back
    std::string lookW, lookM;         // how each figure looks, "1" to "3"; empty: not chosen, the first
    std::string lively;               // "0": neither breath nor glances nor reaching; else with them
    std::string sir;                  // how she addresses the pilot; "[SIR]"
    std::string user;                 // the pilot's name; "[USER]"
    std::string checkDataref;         // dataref that must exist before the main loop works; empty: none
    int offsetY = 10;                 // height of the text overlay, boxels
    int installation = InstallationMissing;
    bool isFileOurs = false; // what the file holds was read, or written here, so that it may be replaced
};
extern SettingsState settings;
inline std::string &globalGender = settings.gender, &globalPosFolder = settings.posFolder;
inline std::string &globalIBMVoiceW = settings.voiceIBMw, &globalIBMVoiceM = settings.voiceIBMm;
inline std::string &globalAPLVoiceW = settings.voiceAPLw, &globalAPLVoiceM = settings.voiceAPLm;
inline std::string &globalVoiceW = settings.voiceW, &globalVoiceM = settings.voiceM;
inline int &globalVolume = settings.volume, &globalRate = settings.rate;
inline std::string &globalNameW = settings.nameW, &globalNameM = settings.nameM;
inline std::string &globalName = settings.name;
inline std::string &globalSizeW = settings.sizeW, &globalSizeM = settings.sizeM;
inline std::string &globalSir = settings.sir, &globalUser = settings.user;
inline std::string &globalCheckDrfName = settings.checkDataref;
inline int &widgetOffsetY = settings.offsetY;
inline int &InstallationState = settings.installation;

// One setting as it stands in the file.
struct SettingsKey {
    const char *text;              // with "="
    int place;                     // in the file that is written, from 1
    std::string *string = nullptr; // where it is kept: here,
    int *number = nullptr;         // or here
    bool isLeftOut = false;        // of the file that is written, while the string is empty
    // When there is more to do than to keep the value, which is the line without the key.
    void (*take)(const std::string &value, const std::string &behindKey) = nullptr;
    // Why a value is not meant, when not every one is; null when it is.
    const char *(*whyNot)(const std::string &value) = nullptr;
};

// In the order in which they are looked for in a line.
std::span<const SettingsKey> SettingsKeys();

// Reads "data/settings_mac.txt", or "custom/settings_mac.txt" when the data folder lacks it. Either counts
// only with a "settings_win.txt" beside it; without a pair every default stays.
void ReadSettings();

// Writes "data/settings_mac.txt" whole. One that was not read since it has no partner is copied to
// "data/settings_mac.txt.kept" before, unless that is there.
void SaveSettings();

// The woman ("w") or the man ("m") from now on, with the name and the positions of the one.
void ChooseGender(const std::string &gender);

// Everything as when the program starts.
void ResetSettings();
