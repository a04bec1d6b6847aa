// The benchmarks' entry; each of them stands in a file of its own beside this one.
#include <benchmark/benchmark.h>

BENCHMARK_MAIN();
