// Start of the program: to its window without data, and to the first picture of 1,000,000 particles.
// Needs a display. Limits: 0.7 s and 1.5 s; `ratio` is the time over its limit.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr double kLimitEmpty = 700.0;
constexpr double kLimitData = 1500.0;
constexpr int kParticles = 1000000;

/// Milliseconds of one probe, 0 when it failed.
double RunProbe(const std::string& project) {
    char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0) return 0.0;
    self[length] = '\0';
    std::FILE* pipe = popen((std::string(self) + " --start-probe " + project + " 2>/dev/null").c_str(), "r");
    if (!pipe) return 0.0;
    char line[512];
    double shown = 0.0;
    double painted = 0.0;
    while (std::fgets(line, sizeof line, pipe))
        if (std::strncmp(line, "start-probe", 11) == 0) std::sscanf(line + 11, "%lf %lf", &shown, &painted);
    pclose(pipe);
    return painted;
}

/// The median of a few.
double RunProbes(const std::string& project) {
    std::vector<double> times;
    for (int k = 0; k < 5; ++k)
        times.push_back(RunProbe(project));
    std::sort(times.begin(), times.end());
    return times.front() > 0.0 ? times[2] : 0.0;
}

/// A snapshot of the default grammar and a project that opens it, in a folder of its own.
std::string MakeProject(const std::string& dir) {
    std::vector<float> record(10, 0.0f);
    std::FILE* data = std::fopen((dir + "/snap0000.bin").c_str(), "wb");
    const float time = 0.0f;
    const std::int32_t number = kParticles;
    std::fwrite(&time, 4, 1, data);
    std::fwrite(&number, 4, 1, data);
    unsigned seed = 1;
    for (int i = 0; i < kParticles; ++i) {
        for (int k = 0; k < 3; ++k) {
            seed = seed * 1664525u + 1013904223u;
            record[size_t(k)] = float(seed >> 8) / float(1 << 24) * 2.0f - 1.0f;
        }
        const std::int32_t ints[2] = {i, i % 4};
        std::memcpy(&record[7], ints, sizeof ints);
        std::fwrite(record.data(), 40, 1, data);
    }
    std::fclose(data);
    const std::string project = dir + "/start.mrp";
    std::FILE* file = std::fopen(project.c_str(), "w");
    std::fputs(
        "DataLoadDataType=0\nDataLoadGrammerHead=0 1\nDataLoadGrammerBody=0 1 5 6 7 8\nTimeMaxFrame=0\n"
        "DataSequence0=0\nsnap0000.bin\n",
        file);
    std::fclose(file);
    return project;
}

void Measure(benchmark::State& state, const std::string& project, double limit) {
    if (!std::getenv("DISPLAY")) {
        state.SkipWithError("no DISPLAY");
        return;
    }
    double sum = 0.0;
    int runs = 0;
    for (auto _ : state) {
        const double millis = RunProbes(project);
        if (millis <= 0.0) {
            state.SkipWithError("the program did not start");
            return;
        }
        sum += millis;
        ++runs;
    }
    state.counters["ms"] = sum / runs;
    state.counters["ratio"] = sum / runs / limit;
}

void StartEmpty(benchmark::State& state) { Measure(state, "", kLimitEmpty); }

void StartToFirstPicture(benchmark::State& state) {
    char dir[] = "/tmp/morentis_start_XXXXXX";
    if (!mkdtemp(dir)) {
        state.SkipWithError("no temporary folder");
        return;
    }
    const std::string project = MakeProject(dir);
    Measure(state, project, kLimitData);
    std::remove(project.c_str());
    std::remove((std::string(dir) + "/snap0000.bin").c_str());
    rmdir(dir);
}

BENCHMARK(StartEmpty)->Unit(benchmark::kMillisecond);
BENCHMARK(StartToFirstPicture)->Unit(benchmark::kMillisecond);

} // namespace
