// Editing at random, as an author would who tries everything.
#pragma once

#include "tests/systems/random_model.h"

// One operation on the model, in one place or in none, now and then undone. The same for the same random
// numbers and model.
void EditAtRandom(RandomModel &random);
