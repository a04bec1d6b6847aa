// The benchmarks' entry; each of them stands in a file of its own beside this one.
#include <benchmark/benchmark.h>

#include "StartProbe.h"

int main(int argc, char** argv) {
    RunStartProbeIfAsked(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
