// The start of the plug-in in a library that may have run before.
#pragma once

// Makes the state of every module what it is when the library is loaded for the first time. First thing at
// start; a module that keeps any state has its line there.
void ResetEverything();
