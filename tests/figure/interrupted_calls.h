// Lets a test make the system calls that files are written with fail, one after the other, or end the process
// there. Linux alone: the linker puts these in front of the C library's for the whole test program.
#pragma once

enum class Interruption {
    None,     // only count
    FailOnce, // the chosen call fails
    FailOn,   // it and all that follow fail, as on a full or broken disk
    ReadOnly, // nothing can be opened for writing
    Kill,     // the process ends in place of the call; a write is half done
};

// From now on, and how many calls there have been since.
void InterruptCalls(Interruption how, int call);
int CallsSoFar();
