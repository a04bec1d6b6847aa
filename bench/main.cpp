// The benchmarks' entry; each of them stands in a file of its own beside this one.
#include <benchmark/benchmark.h>
#include <ext/stdio_filebuf.h>
#include <fcntl.h>
#include <unistd.h>

#include <iostream>

#include "StartProbe.h"

namespace {

/// Standard output is the report's alone, so that a program can read it: what the code under test prints
/// there goes to standard error.
class ReportOutput_cls {
public:
    ReportOutput_cls() : mBuffer(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3), std::ios::out) {
        if (mBuffer.is_open() && dup2(STDERR_FILENO, STDOUT_FILENO) >= 0) mpOld = std::cout.rdbuf(&mBuffer);
    }
    ~ReportOutput_cls() {
        std::cout.flush();
        if (mpOld) std::cout.rdbuf(mpOld);
    }
    ReportOutput_cls(const ReportOutput_cls&) = delete;
    ReportOutput_cls& operator=(const ReportOutput_cls&) = delete;

private:
    __gnu_cxx::stdio_filebuf<char> mBuffer; // of what was standard output
    std::streambuf* mpOld = nullptr;
};

} // namespace

int main(int argc, char** argv) {
    RunStartProbeIfAsked(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    const ReportOutput_cls report;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
