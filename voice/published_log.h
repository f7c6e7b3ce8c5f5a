// What she begins to do and what goes wrong, for programs that watch her: the dataref "kv/diagnost/log" holds
// what the log told last in a form that needs no knowledge of its words.
//
// That is a kind, a subject and words, with tabs between them. The kinds:
//     error     the subject is the file, the words are the log's, without what stands at the start of a line
//     answers   the words are the answers that are expected now, with tabs between them
//     speech, position, command, dataref, other
//               an action begins; the subject is what it names, the words say what she does
#pragma once

#include <string>
#include <vector>

#include "voice/action_queue.h"

// Publishes the dataref, unless there is one, and keeps it up to date with the log's records.
void PublishLog();
void UnpublishLog();

// An action begins: in the log "EXECUTE RUN: <name> <text>".
void LogAction(const doStruct &action);

// Other answers are expected than before: in the log "Expected answers: <list>". At most 100 are listed.
void LogAnswers(const std::vector<std::string> &answers, bool isAnyAnswerExpected);

// Everything as when the program starts.
void ResetPublishedLog();
