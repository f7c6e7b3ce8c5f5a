// Sequences: serial devices, whose parameters are steps that are done one after the other, each waiting until
// the actions of the one before are done.
#pragma once

#include "systems/evaluation.h"

// True when the sequence must be looked at in the next frame, too, whatever changes.
template <bool isMarking> bool RunSequence(const ProgramArrays &arrays, const ProgramRun &run);
