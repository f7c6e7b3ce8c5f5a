// The queue of actions that running scripts append and the executer performs, one a frame, and the answer
// timers that they start.
#pragma once

#include <string>
#include <vector>

struct doStruct {
    int type = 0; // queueType of an action kind (systems/action_kinds.h); one of none does nothing
    std::string text;
};

struct answertimer_struct {
    std::string name;
    double time = 0.0; // FlightTimeSEC at which it runs out
};

extern std::vector<doStruct> executeFlow; // the first entry is the next action
extern std::string executeFlowActual;     // text of the action at the head of the queue
extern int isPrevExecuteCompleted;        // 0 while a figure move that an action started is running
extern float waitUntil;                   // FlightTimeSEC before which no action may start
extern int isNeedStep;                    // step mode: each action waits for the step command
extern int lockStep;                      // 1 while step mode waits
extern std::vector<answertimer_struct> answerstimer;

// Appends an action. A queue that a runaway script has filled takes no more, and says so once.
void QueueAction(int type, const std::string &text);
