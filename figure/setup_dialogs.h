// What the pilot is asked and told about the setup of the figure: four small windows, one at a time, in the
// middle of the screen, and a fifth below for what failed. Their buttons do the work, change
// InstallationState and save the settings.
#pragma once

// Asks whether to set the figure up, now or later.
void OpenSetupPrompt();

// Sets the figure up in the loaded aircraft, and says that the aircraft must be reloaded; where steps failed,
// also which, and what to do.
void SetUpAndTell();

// Asks whether to take the figure out.
void OpenUninstallPrompt();

// Closes what is open and gives the windows back, before the plug-in stops.
void CloseSetupDialogs();

// Everything as when the program starts.
void ResetSetupDialogs();
