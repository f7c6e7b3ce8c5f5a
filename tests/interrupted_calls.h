// Lets a test make the system calls that files are written with fail, one after the other. Linux alone: the
// linker puts these in front of the C library's for the whole test program.
#pragma once

enum class Interruption {
    None,     // only count
    FailOnce, // the chosen call fails; a write is half done
    Die,      // nothing that it and all later calls would do reaches the disk, as if the process had ended
    ReadOnly, // nothing can be opened for writing
};

// From now on, and how many calls there have been since. Calls are counted from 1.
void InterruptCalls(Interruption how, int call);

// Whether the disk knows hard links. At first it does.
void HaveSecondNames(bool have);
int CallsSoFar();
