// The end of the model, and of all that was read, written and begun for it.
#pragma once

// Saves the values flagged for it, and forgets the model.
void DeleteSystems();

// Takes the model's datarefs back and makes all that was kept of it new: what reading, writing and links
// keep, and what its scripts wait for, have heard and have queued. Saves nothing.
void ForgetModel();
