// Random numbers: the same ones on every system, and after every start of the plug-in.
#pragma once

#include <cstddef>

// From 0 to count - 1, each about as likely; count is at least 1.
size_t RandomBelow(size_t count);

// Begins anew.
void ResetRandom();
