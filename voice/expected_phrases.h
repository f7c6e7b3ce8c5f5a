// The phrases that are expected now, published for the speech server: those that the pilot reads in the list
// on the screen. A recogniser that knows them understands them better.
#pragma once

// Publishes "kv/speech/expected", empty.
void CreateExpectedPhrases();

// The answers or the inputs are others than before.
void ExpectedPhrasesChange();

// Brings it up to date: answers, "any" where any answer will do, the items of the unfolded group, one a line.
// Once a frame, behind the systems; costs nothing while nothing has changed.
void PublishExpectedPhrases();

// Everything as when the program starts.
void ResetExpectedPhrases();
