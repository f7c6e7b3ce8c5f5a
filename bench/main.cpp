// Runs every benchmark and prints one table.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
