// The whole vocabulary of the loaded scripts, for the simulator's log.
#pragma once

// Writes one line for every phrase that a script can say, take as an input or wait for as an answer, with
// the parameter it belongs to. Nothing at all without systems.
void LogAllPhrases();
