// The systems cycle: evaluates the parameters once per frame and drives checklists and procedures.
#pragma once

// What a frame evaluates: what is marked (systems/program.h), everything, or the one of the two that costs
// less. Results are the same; tests and benchmarks compare them.
enum class FrameEvaluation { AsItPays, OfMarked, OfAll };
extern FrameEvaluation frameEvaluation;

// Flight-loop callback; returns -1.0: next frame.
float CalculateSystemsCycle(float sinceLastCall, float sinceLastLoop, int counter, void *refcon);
