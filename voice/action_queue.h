// The queue of actions that running scripts append and the executer performs, one a frame, and the answer
// timers that they start.
#pragma once

#include <string>
#include <vector>

// Types of queued actions. Their order is that of the names that the executer logs.
enum {
    ActionSay = 0,            // text to say
    ActionSayWait = 1,        // text to say, alternatives separated by "#"; waits for the end of speech
    ActionPosition = 2,       // position name; an animated move
    ActionPositionFast = 3,   // position name; at once
    ActionPause = 4,          // seconds, decimal
    ActionBreak = 5,          // drops the rest of the queue
    ActionCommandOnce = 6,    // command name
    ActionCommandBegin = 7,   // command name
    ActionCommandEnd = 8,     // command name
    ActionDataref = 9,        // dataref name, optionally with [index], "=", value
    ActionCommandEndNow = 10, // nothing to do here: the systems cycle ends such commands itself
    ActionAnswer = 11,        // text beginning with seconds: starts an answer timer
};

struct doStruct {
    int type = ActionSay;
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
