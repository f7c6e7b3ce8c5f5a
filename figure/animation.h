// The figure's motion, frame by frame: moves to positions, idle motion, wandering eyes, blinking and lips.
// All of it runs on flight time, so a paused simulator freezes the figure; idle motion, eyes and face also
// rest for the first 5 seconds of a flight.
#pragma once

// Of flight time: a flight begins with the pose as loaded.
inline constexpr double StillSeconds = 5;

struct FigureMotionState {
    int eyesOpen = 1, lipsOpen = 0; // 0 or 1
    int face = 0;                   // 0 eyes open, 1 lips open, 2 both open, 3 both closed
    // Deadlines in seconds of flight time; -1: none.
    float eyesOpenTime = -1.0F, eyesCloseTime = -1.0F;
    float lipsOpenTime = -1.0F, lipsCloseTime = -1.0F;
    float lipsAnimTime = -1.0F; // the lips move until then; set by whoever lets the first officer speak
    float restPositionTime = 0.0F, eyePositionTime = 0.0F;
    float eyeAddX = 0.0F, eyeAddY = 0.0F; // where the eyes wander, added to the head's share
    // A checklist or procedure runs: no rest poses, small head movements.
    bool isLiveBlocked = false;
};
extern FigureMotionState figureMotion;
inline int &eyesOpen = figureMotion.eyesOpen, &lipsOpen = figureMotion.lipsOpen;
inline int &faceAnim = figureMotion.face;
inline float &Next_eyesOpenTime = figureMotion.eyesOpenTime, &Next_eyesCloseTime = figureMotion.eyesCloseTime;
inline float &Next_lipsOpenTime = figureMotion.lipsOpenTime, &Next_lipsCloseTime = figureMotion.lipsCloseTime;
inline float &Next_lipsAnimTime = figureMotion.lipsAnimTime;
inline float &NextRestPositionTime = figureMotion.restPositionTime;
inline float &NextEyePositionTime = figureMotion.eyePositionTime;
inline float &newEyePositionAddX = figureMotion.eyeAddX, &newEyePositionAddY = figureMotion.eyeAddY;
inline bool &isLiveAnimationBlocked = figureMotion.isLiveBlocked;

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
