// The figure in the aircraft's files.
#pragma once

// 1 when the aircraft's .acf names the figure's object: type 767 is set up.
int isSetupCompleted_767();

// Asks the pilot for the setup of the figure. Until the dialogs are there: says so in the log.
void OpenSetupPrompt();
