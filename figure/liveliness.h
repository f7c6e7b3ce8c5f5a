// What is alive in her beside positions and idle motion: she breathes, looks at what she names and at the
// captain whom she asks, her hand goes to what she switches, and her mouth says the words. It comes from what
// she says and does alone, delays nothing, and moves no channel: it is seen on top of them (shown.h).
//
// Where a script or the menu has put her hands they stay, until she takes a rest pose; and while such a move
// runs, or she is told where to look, her head stays with it, too. It rests in the first 5 seconds of a
// flight, like idle motion.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "figure/mouth.h"
#include "figure/shown.h"

// A position as far as it is seen on top of the channels.
struct LivingPose {
    bool isNamed[ShownChannels] = {};
    float values[ShownChannels][AxisCount] = {};
    bool isLook = false; // its hands are at rest: the head alone goes there
};

// Flight time, seconds.
struct LivingTurn {
    const LivingPose *pose = nullptr;
    double from = 0.0, until = 0.0;
};

struct LivingMotion {
    float place = 0.0F, speed = 0.0F; // degrees on top of a channel, and a second
};

struct LivelinessState {
    std::map<std::string, LivingPose> poses; // those that were wanted so far
    LivingTurn reach;                        // the head looks there before the hands set out
    LivingTurn glances[2];
    LivingMotion motions[ShownChannels][AxisCount];
    bool isMoving = false;   // one of them is not at 0
    double breath = 0.0;     // of one, 0 to 1
    double breathSize = 0.0; // 0 to 1: how much of it is seen
    std::vector<MouthPhase> mouth;
    size_t mouthPhase = 0;
    double mouthFrom = 0.0; // flight time
};
extern LivelinessState liveliness;

// Whether the pilot wants it: a setting.
bool isLively();

// Reads where things are (switch_places.h), and forgets the positions as they were. Behind
// ReadPositionFolder.
void ReadLiveliness();

// One frame. isPosed: the position creator is open, and what is saved must be what is seen.
void LiveOnTop(bool isPosed);

// She begins to say this: her mouth does, she looks at what it names, and at the captain when it is a
// question.
void LiveWhileSaying(std::string_view text);

// At this flight time a command or dataref of this name is used: her hand is to be where that is by then, if
// there is time, and stays a moment. Nothing when no table of places has it, or her hands are held elsewhere.
void ReachFor(std::string_view name, double at);

// Head and hands go back.
void DropGestures();

// As at load; called when flight time falls back.
void ReInitLiveliness();

// Everything as when the program starts.
void ResetLiveliness();
