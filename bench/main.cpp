// Runs every benchmark and prints one table. Where OpenGL draws by software it does so on a thread of its
// own, as a graphics card would: the CPU column is the simulator's thread, with the driver's part in it but
// without the pixels; those show in the Time column.
#include <benchmark/benchmark.h>

#include <cstdlib>

int main(int argc, char **argv) {
    setenv("LP_NUM_THREADS", "1", 0);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
