// Between the simulator and what it calls: an exception that went on into the simulator would end it.
// Whatever is thrown stays here, is told in the log once for each place, and the simulator gets a harmless
// answer.
//
// A call costs what it cost before: the compiler makes one function of both.
#pragma once

#include <algorithm>
#include <cstddef>

// Tells the log what is being thrown, the first time at this place. Only within a catch block; needs no
// memory. place must stay what it is, as a text in the program does.
void LogException(const char *place) noexcept;

// Tells it again, each place once. For the plug-in's start.
void ResetGuards();

// Runs a step; false when it threw.
template <typename Step> bool RunGuarded(const char *place, Step &&step) noexcept {
    try {
        step();
        return true;
    } catch (...) {
        LogException(place);
        return false;
    }
}

// A text as an argument of a template.
template <size_t Size> struct PlaceName {
    char text[Size] = {};
    consteval PlaceName(const char (&name)[Size]) { std::copy_n(name, Size, text); } // NOLINT: from a literal
};

template <PlaceName Place, auto Function, int HarmlessAnswer> struct Guard;

template <PlaceName Place, typename Answer, typename... Arguments, Answer (*Function)(Arguments...),
          int HarmlessAnswer>
struct Guard<Place, Function, HarmlessAnswer> {
    static constexpr PlaceName Name = Place;
    static Answer Call(Arguments... arguments) noexcept {
        try {
            return Function(arguments...);
        } catch (...) {
            LogException(Name.text);
            return static_cast<Answer>(HarmlessAnswer);
        }
    }
};

// A callback of the simulator's for one of ours: Guarded<"main loop", Main, -1>. The same pointer each time,
// so it can be unregistered.
template <PlaceName Place, auto Function, int HarmlessAnswer = 0>
inline constexpr auto Guarded = &Guard<Place, Function, HarmlessAnswer>::Call;
