// The checker on a folder of a hundred thousand lines.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "authoring/check/check.h"
#include "bench/made_model.h"
#include "systems/model.h"
#include "systems/model_end.h"

namespace {

// What is printed meanwhile is no part of the table.
class Silence {
public:
    Silence() : shown(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Silence() {
        std::fflush(stdout);
        dup2(shown, STDOUT_FILENO);
        close(shown);
    }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

private:
    const int shown;
};

void BM_CheckFolder(benchmark::State &state) {
    const int64_t devices = state.range(0) / 41;
    std::string text = "sys=A\n";
    for (int64_t device = 0; device < devices; device++) {
        const std::string name = "D" + std::to_string(device);
        text += "dev=" + name + "\n";
        for (int parameter = 0; parameter < 10; parameter++)
            text += "out=P" + std::to_string(parameter) + ",int,,0,0,10,,,,,,0\nlogic:\n[A." + name
                    + ".P0]>[3]\ncalc=[A.D0.P" + std::to_string(parameter) + "]\n";
    }
    BenchFolder folder;
    folder.Write("sys.txt", text);
    for (auto _ : state) {
        const Silence silence;
        if (simhost::CheckFolder({folder.plugin, ""}) == 2) state.SkipWithError("the folder was not read");
        state.PauseTiming();
        DeleteSystems();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_CheckFolder)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
