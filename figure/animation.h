// The figure's motion, frame by frame: moves to positions, idle motion, wandering eyes, blinking and lips.
// All of it runs on flight time, so a paused simulator freezes the figure; idle motion, eyes and face also
// rest for the first 5 seconds of a flight.
#pragma once

extern int eyesOpen, lipsOpen; // 0 or 1
extern int faceAnim;           // 0 eyes open, 1 lips open, 2 both open, 3 both closed

// Deadlines in seconds of flight time; -1: none.
extern float Next_eyesOpenTime, Next_eyesCloseTime;
extern float Next_lipsOpenTime, Next_lipsCloseTime;
extern float Next_lipsAnimTime; // the lips move until then; set by whoever lets the first officer speak
extern float NextRestPositionTime, NextEyePositionTime;
extern float newEyePositionAddX, newEyePositionAddY; // where the eyes wander, added to the head's share

// Set while a checklist or procedure runs: no rest poses, small head movements.
extern bool isLiveAnimationBlocked;

// One frame of the running move; sets every moving axis to its target and ends the move when its time has
// passed.
void Animation();

// One frame of idle motion; every 3 to 12 seconds starts a move to a random rest pose. Not to be called
// while a move runs.
void LiveAnimation();

// One frame of the eyes, which counter-rotate against the head.
void EyesAnimation();

// One frame of blinking and lips; publishes the face.
void FaceAnimation();

// The state above, and the running move, as at load; called when flight time falls back.
void ReInitFigureVariables();

// Everything as when the program starts.
void ResetAnimation();
