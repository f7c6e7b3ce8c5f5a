// Performs the queued actions: speaks, moves the figure, fires commands, writes datarefs, waits.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMUtilities.h"

extern const float OneLetterPauseSec; // speaking time allowed per character
extern const float SaySystemPauseSec; // extra time for every said text

// Beside the queue, which action_queue.h has.
struct ExecuterState {
    std::vector<std::string> said;          // what she has said, newest first; the oldest are forgotten
    float abortRepeatsUntil = 0.0F;         // FlightTimeSEC before which an abort repeats the last one
    std::set<std::string> reportedIndices;  // texts whose index cannot be written
    XPLMDataRef isAnnounceNeeded = nullptr; // "kv/fennic/comments", the aircraft's; sought while missing
};
extern ExecuterState executerState;
inline std::vector<std::string> &fennicsay = executerState.said;
inline XPLMDataRef &DRFi_isAnnounceNeed = executerState.isAnnounceNeeded;

// One step, once a frame: at most one action starts.
void Executer();

// Empties the queue, says so aloud and puts the tablet away.
void AbortExecution();

// What every abort does: lets go of the commands that are held, and says so. One that comes within half a
// second of another is its repetition, and not said again: a recogniser may write it in every frame.
void SayAborted();

// Ends every command that an action began and none has ended, each once.
void EndBegunCommands();

// Flight time went back: nothing is waited for, and no command is held.
void ReInitExecuter();

// Speaks; the next action may start half a second later, while the lips go on for the estimated time.
void ExecuteSay(const std::string &text);

// Speaks one of the alternatives between "#"; the next action waits for the estimated end of speech.
void ExecuteWaitSay(const std::string &text);

// Writes a dataref: "name = value" or "name[index] = value", index 0 to 15. Errors are logged, nothing is
// written.
void ExecuteDrf(const std::string &text);

// mode is "Once", "Begin" or "End"; an unknown command or mode does nothing. A command that is held already
// is not begun again, so that one end lets it go.
void ExecuteCommand(const std::string &name, const std::string &mode);

// Replaces the placeholders of a spoken text: "[NAME]", "[USER]", "[SIR]", the runways "[TORW]" and
// "[LDRW]", "[LAST]", and links to parameters, "<SYS.DEV.OUT>" as a number or "<&SYS.DEV.OUT>" spelled digit
// by digit. A text about a runway that is not known becomes empty; a link that does not resolve becomes
// "UNKNOWN".
std::string VarToString(std::string text);

// Everything as when the program starts, the queue too.
void ResetExecuter();
