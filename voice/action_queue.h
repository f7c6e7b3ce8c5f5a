// The queue of actions that running scripts append and the executer performs, one a frame; the answer timers
// that they start, and the commands that they hold down.
#pragma once

#include <string>
#include <vector>

#include "XPLMUtilities.h"

struct doStruct {
    int type = 0; // queueType of an action kind (systems/action_kinds.h); one of none does nothing
    std::string text;
    bool isOfCalled = false; // of a sequence that the pilot has called (systems/checklists.h)
};

struct answertimer_struct {
    std::string name;
    double time = 0.0; // FlightTimeSEC at which it runs out
};

struct ActionQueueState {
    std::vector<doStruct> flow; // the first entry is the next action
    std::string actual;         // text of the action at the head of the queue
    int isPrevCompleted = 1;    // 0 while a figure move that an action started is running
    float waitUntil = 0.0F;     // FlightTimeSEC before which no action may start
    int isNeedStep = 0;         // step mode: each action waits for the step command
    int lockStep = 0;           // 1 while step mode waits
    std::vector<answertimer_struct> answerTimers;
    std::vector<XPLMCommandRef> begunCommands; // by actions and not ended, in this order
    bool wasOverflowLogged = false;
};
extern ActionQueueState actionQueue;
inline std::vector<doStruct> &executeFlow = actionQueue.flow;
inline std::string &executeFlowActual = actionQueue.actual;
inline int &isPrevExecuteCompleted = actionQueue.isPrevCompleted;
inline float &waitUntil = actionQueue.waitUntil;
inline int &isNeedStep = actionQueue.isNeedStep;
inline int &lockStep = actionQueue.lockStep;
inline std::vector<answertimer_struct> &answerstimer = actionQueue.answerTimers;

// Everything as when the program starts.
void ResetActionQueue();

// Appends an action. A queue that a runaway script has filled takes no more, and says so once.
void QueueAction(int type, const std::string &text, bool isOfCalled = false);
