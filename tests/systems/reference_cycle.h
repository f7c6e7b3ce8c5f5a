// The systems cycle written out plainly over the records, as the description of the files reads, without
// the compiled program. Slow and obvious: what the program must agree with, frame by frame.
#pragma once

// One frame. The model's values are those of the records, so the program must not have been compiled since
// the last ModelChanges.
void ReferenceCycle();
