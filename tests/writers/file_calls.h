// What happens to the system calls that files are read and written with. Linux alone: the linker puts these
// in front of the C library's for the whole test program.
#pragma once

enum class Harm {
    None,
    Kill,        // the process is killed, by SIGKILL, before the chosen call
    KillHalfWay, // the chosen write, counted alone, writes half; then the same
    Fail,        // the chosen call fails, a write half way; all others go through
};

struct Counts {
    int calls = 0, writes = 0, links = 0;
};

// From now on, in this process: harm comes to one call, counted from 1, which fails with an error of errno's.
// Without second names link fails, as on disks that have none.
void HarmCalls(Harm how, int call, int error, bool hasSecondNames);

// The calls since then, in memory that a forked process shares with its parent.
extern Counts *counts;
