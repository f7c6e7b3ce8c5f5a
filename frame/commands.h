// The five simulator commands that pilots bind to buttons. Their handlers only set flags for the frame.
#pragma once

extern int ShowWidget; // the text overlay is shown

void CustCommInit(); // creates the commands and registers their handlers
void CustCommExit();

// Everything as when the program starts.
void ResetCommands();
